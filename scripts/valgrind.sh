#!/usr/bin/env bash
# Runs the tests of the libraries under valgrind: all under memcheck, threads under helgrind and DRD as
# well. What is suppressed stands with its reason in .valgrind-suppressions. Valgrind knows no AVX-512,
# so that of the kernel's paths three are seen.
#
#     scripts/valgrind.sh            all
#     scripts/valgrind.sh buffer     the programs whose name has this in it
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/install-dependencies.sh checks
cmake --preset dev
cmake --build --preset dev

wanted=${1:-}
folder=build/dev/tests
failed=0

# check <tool> <program> [options]
check() {
    local name=${2##*/} begin=$SECONDS verdict=silent
    local log=build/valgrind/$1-$name.log
    if [[ $name != *$wanted* ]]; then return; fi
    # The operators new and delete of tests that count or fail stay theirs.
    valgrind --quiet --tool="$1" --error-exitcode=99 --suppressions=.valgrind-suppressions \
        --soname-synonyms=somalloc=nouserintercepts "${@:3}" "$2" --gtest_brief=1 >"$log" 2>&1 || verdict=REPORTS
    printf '%-9s %-28s %-8s %4d s\n' "$1" "$name" "$verdict" $((SECONDS - begin))
    if [[ $verdict == REPORTS ]]; then
        cat "$log"
        failed=1
    fi
}

mkdir -p build/valgrind
while read -r program; do
    check memcheck "$program" --leak-check=full --errors-for-leak-kinds=definite,possible
done < <(find "$folder"/{vsys,base,internal,filt,campaigns} -name '*_test' -type f -executable |
    grep --invert-match -E 'accuracy_test|fuzz_|refused_|opencv_' | sort)
for tool in helgrind drd; do
    check "$tool" "$folder/campaigns/faults/threads_test"
done
exit "$failed"
