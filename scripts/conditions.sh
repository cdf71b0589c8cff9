#!/usr/bin/env bash
# Runs the tests of the conditions preset and lists which conditions of the libraries' decisions they
# have not shown to matter (MC/DC). Fails when there is one that scripts/conditions.txt does not name.
# On a processor without AVX-512 those that ask for it are missing.
#
#     scripts/conditions.sh             builds, runs and reports
#     scripts/conditions.sh --report    reports what the last run left
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
build=build/conditions
# Where the tests of the libraries are, and random chains of operations; others repeat what these do.
folders=(base vsys internal filt campaigns/model)

if [[ ${1:-} != --report ]]; then
    scripts/install-dependencies.sh checks
fi
# Older ones do not measure conditions.
for program in clang++-19 llvm-profdata-19 llvm-cov-19; do
    command -v "$program" >/dev/null || { echo "$program is missing (Debian: clang-19, llvm-19)." >&2; exit 1; }
done

if [[ ${1:-} != --report ]]; then
    # One file for each program and library; all runs add to it. What is run while the tests are
    # configured and built does not count.
    export LLVM_PROFILE_FILE=$PWD/$build/profiles/%m.profraw
    targets=("${folders[@]/#/tests/}")
    cmake --preset conditions
    cmake --build --preset conditions --target "${targets[@]/%//all}"
    rm -rf "$build/profiles"
    for folder in "${folders[@]}"; do
        ctest --test-dir "$build/tests/$folder" --output-on-failure --parallel "$(nproc)"
    done
fi

llvm-profdata-19 merge --sparse -o "$build/conditions.profdata" "$build"/profiles/*.profraw
mapfile -t objects < <(find "$build" -type f \( -name '*_test' -o -name 'libmvbase.so.*' \) -printf '--object=%p\n')
cover() {
    # Inline functions that a program does not use have no counts there, of which llvm-cov warns.
    llvm-cov-19 "$1" --instr-profile="$build/conditions.profdata" "${objects[@]}" \
        --ignore-filename-regex='/tests/|^/usr/' "${@:2}" 2>/dev/null
}
cover export --format=text >"$build/conditions.json"
cover show --show-branches=count --show-mcdc >"$build/conditions.show"
python3 scripts/conditions.py "$build/conditions.json" "$build/conditions.show" scripts/conditions.txt
