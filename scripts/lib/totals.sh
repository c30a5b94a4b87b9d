# Totals of test runs: sourced by scripts/test.

passed=0
failed=0
skipped=0
unsteady=()

# run_tests BUILD REPORT CTEST...: has ctest run the tests of a build, and once more, one by one, what failed: a test that then
# passes is unsteady, which is told; a machine that stands still for seconds is no fault of what is tested. What a sanitizer
# found or what crashed has failed, and is not run again. What ctest printed is in REPORT, and adds to the totals. Fails when
# there are none.
run_tests() {
    local log="$1/Testing/Temporary/LastTest.log" report="$2"
    shift 2
    rm -f "$log" "$log.first" "$report.again"
    if ! "$@" >"$report" 2>&1 && ! found_worse "$report"; then
        mv "$log" "$log.first" 2>/dev/null || return 1
        "$@" --rerun-failed --parallel 1 >"$report.again" 2>&1 || true
    fi
    add_totals "$report" "$log"
}

# found_worse REPORT: true where it tells of more than an expectation that was not met in time.
found_worse() { grep -qE '(Address|Leak|Thread)Sanitizer|runtime error:|\*\*\*Exception|\((SEGFAULT|SIGABRT|ILLEGAL|BUS_ERROR|Subprocess aborted)' "$1"; }

# add_totals REPORT LOG
add_totals() {
    local all bad left_out inside name
    all="$(counted "$1" '\2')" && [ -n "$all" ] || return 1
    bad="$(counted "$1" '\1')"
    # ctest counts them as passed, and names them in a list of its own
    left_out="$(grep -cE '^[[:space:]]+[0-9]+ - .* \(Skipped\)$' "$1" || true)"
    if [ -e "$2.first" ]; then
        while read -r name; do unsteady+=("$name"); done < <(comm -23 <(names_of_failed "$1") <(names_of_failed "$1.again"))
        bad="$(counted "$1.again" '\1')" && [ -n "$bad" ] || return 1
    fi
    read -ra inside < <(cat "$2.first" "$2" 2>/dev/null | tests_inside)
    passed=$((passed + all - bad - left_out + inside[0]))
    failed=$((failed + bad + inside[1]))
    skipped=$((skipped + left_out + inside[2]))
}

# counted REPORT WHICH: \1 for how many failed, \2 for how many ran.
counted() { sed -nE "s/^[0-9]+% tests passed, ([0-9]+) tests? failed out of ([0-9]+)$/$2/p" "$1"; }

names_of_failed() {
    sed -nE '/^The following tests FAILED:/,/^Errors/ s/^[[:space:]]+[0-9]+ - (.*) \([^()]*\)$/\1/p' "$1" | sort
}

# tests_inside: how many more passed, failed and were skipped than ctest knows, to which a program is one test. Reads its log;
# what is told last of a program holds. One that crashed has failed once, whatever passed before.
tests_inside() {
    awk '
        /^[0-9]+\/[0-9]+ Test: / { name = $0; sub(/^[^:]*: /, "", name); ok[name] = bad[name] = left_out[name] = 0 }
        /^\[       OK \] .* \([0-9]+ ms\)$/ { ++ok[name] }
        /^\[  FAILED  \] .* \([0-9]+ ms\)$/ { ++bad[name] }
        /^\[  SKIPPED \] .* \([0-9]+ ms\)$/ { ++left_out[name] }
        /^Test (Passed|Failed)\.$/ { verdict[name] = $2 }
        END {
            for (name in verdict) {
                if (verdict[name] == "Failed.") {
                    failed += bad[name] > 0 ? bad[name] - 1 : 0
                    passed += ok[name]
                    skipped += left_out[name]
                } else if (ok[name] + left_out[name] > 0) {
                    passed += ok[name] - 1
                    skipped += left_out[name]
                }
            }
            print passed + 0, failed + 0, skipped + 0
        }'
}
