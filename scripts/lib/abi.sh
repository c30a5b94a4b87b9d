# What a library promises to those who are built against it: sourced by scripts/abi-baseline and the tests.

abi_baseline="$project_root/tests/abi/libtradechartobject.abi"

# dump_abi LIBRARY FILE: writes what the exported symbols of LIBRARY promise. Its debug information tells it. The types of Qt
# and of the standard library are left out: they are not ours to keep.
dump_abi() {
    local ours
    ours="$(mktemp)"
    printf '[suppress_type]\n  source_location_not_regexp = .*/(tradechartobject|endpoint)/.*\n  drop = yes\n' >"$ours"
    abidw --suppr "$ours" --no-corpus-path --no-comp-dir-path --no-show-locs --no-parameter-names --type-id-style hash \
        --drop-undefined-syms --no-elf-needed --out-file "$2" "$1"
    rm -f "$ours"
}

# same_abi FILE FILE: fails and tells the differences when there are any, additions too.
same_abi() { abidiff --no-unreferenced-symbols "$@"; }
