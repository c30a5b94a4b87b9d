# Totals of test runs: sourced by scripts/test.

passed=0
failed=0
skipped=0

# add_totals REPORT LOG: adds those of a run of ctest, from what it printed and from its log (Testing/Temporary/LastTest.log).
# Most programs that it runs have many tests, each of which counts. Fails when there are no totals.
add_totals() {
    local counts bad all left_out more_passed more_failed more_skipped
    counts="$(sed -nE 's/^[0-9]+% tests passed, ([0-9]+) tests? failed out of ([0-9]+)$/\1 \2/p' "$1")"
    [ -n "$counts" ] || return 1
    read -r bad all <<<"$counts"
    # ctest counts them as passed, and names them in a list of its own
    left_out="$(grep -cE '^[[:space:]]+[0-9]+ - .* \(Skipped\)$' "$1" || true)"
    read -r more_passed more_failed more_skipped <<<"$(tests_inside "$2")"
    passed=$((passed + all - bad - left_out + more_passed))
    failed=$((failed + bad + more_failed))
    skipped=$((skipped + left_out + more_skipped))
}

# tests_inside LOG: how many more passed, failed and skipped than ctest knows, which counts a program as one test. A program
# that crashed has failed once, whatever passed before.
tests_inside() {
    awk '
        /^[0-9]+\/[0-9]+ Test: / { ok = bad = left_out = 0 }
        /^\[       OK \] .* \([0-9]+ ms\)$/ { ++ok }
        /^\[  FAILED  \] .* \([0-9]+ ms\)$/ { ++bad }
        /^\[  SKIPPED \] .* \([0-9]+ ms\)$/ { ++left_out }
        /^Test Passed\.$/ && ok + left_out > 0 { passed += ok - 1; skipped += left_out }
        /^Test Failed\.$/ { passed += ok; failed += bad > 0 ? bad - 1 : 0; skipped += left_out }
        END { print passed + 0, failed + 0, skipped + 0 }' "$1"
}
