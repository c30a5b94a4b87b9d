# Totals of test runs: sourced by scripts/test.

passed=0
failed=0
skipped=0

# add_totals REPORT: adds those at the end of what ctest wrote. Fails when there are none.
add_totals() {
    local counts bad all left_out
    counts="$(sed -nE 's/^[0-9]+% tests passed, ([0-9]+) tests? failed out of ([0-9]+)$/\1 \2/p' "$1")"
    [ -n "$counts" ] || return 1
    read -r bad all <<<"$counts"
    # ctest counts them as passed, and names them in a list of its own
    left_out="$(grep -cE '^[[:space:]]+[0-9]+ - .* \(Skipped\)$' "$1" || true)"
    passed=$((passed + all - bad - left_out))
    failed=$((failed + bad))
    skipped=$((skipped + left_out))
}
