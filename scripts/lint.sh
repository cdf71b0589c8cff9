#!/usr/bin/env bash
# Runs cppcheck and clang-tidy; fails when either has something to say. .cppcheck-suppressions and
# .clang-tidy list what they are not asked, each with its reason.
#
#     scripts/lint.sh                 all sources of the libraries and the program
#     scripts/lint.sh inverse         those whose path has this in it
#     scripts/lint.sh --since COMMIT  those that changed since a commit, ten at most
#     scripts/lint.sh --names [COMMIT]
#                                     only names and braces, but of the examples and Python, too: of
#                                     all, or of those that changed since a commit
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
folders='^(vsys|base|filt|suggest|tools)/'

all() { git ls-files '*.cpp' | grep -E "$folders"; }

# The source that stands for a file: for a header the one of its name, or the first that includes it,
# if need be through another header.
source_for() {
    local includes="#include (<$1>|\"(.*/)?$(basename "$1")\")" header
    if [[ $1 == *.cpp ]]; then
        echo "$1"
    elif [[ -f ${1%.h}.cpp ]]; then
        echo "${1%.h}.cpp"
    elif ! git grep -lE "$includes" -- '*.cpp' | grep -m1 -E "$folders"; then
        for header in $(git grep -lE "$includes" -- '*.h' | grep -E "$folders"); do
            source_for "$header" && return
        done
        return 1
    fi
}

changed() {
    local file
    git diff --name-only --diff-filter=d "$1" -- '*.h' '*.cpp' | grep -E "$folders" |
        while read -r file; do source_for "$file"; done | sort -u
}

tidy() {
    run-clang-tidy -quiet -p build/lint -j "$(nproc)" "$@" 2>/dev/null |
        sed 's/\x1b\[[0-9;]*m//g' | grep -E '^/.*(warning|error): ' | sort -u
}

scripts/install-dependencies.sh ci
# Without the tests each source is compiled, and so linted, once.
cmake --preset dev -B build/lint -DMVFREQ_BUILD_TESTS=OFF >/dev/null

case ${1:-} in
    --names)
        folders='^(vsys|base|filt|suggest|tools|python|examples)/'
        mapfile -t sources < <(if [[ ${2:-} ]]; then changed "$2"; else all; fi)
        ((${#sources[@]})) || exit 0
        ! tidy -checks='-*,readability-identifier-naming,readability-braces-around-statements' \
            "${sources[@]/#/$PWD/}"
        exit
        ;;
    --since)
        mapfile -t sources < <(changed "$2")
        if ((${#sources[@]} > 10)); then
            echo "not linted:" "${sources[@]:10}"
            sources=("${sources[@]:0:10}")
        fi
        ((${#sources[@]})) || exit 0
        ;;
    *) mapfile -t sources < <(all | grep -e "${1:-}") ;;
esac

failed=0
cppcheck --enable=warning,performance,portability,style --std=c++20 --language=c++ --quiet \
    --suppressions-list=.cppcheck-suppressions -I. -DMVFREQ_X86_PATHS=1 --error-exitcode=1 \
    "${sources[@]}" || failed=1
tidy "${sources[@]/#/$PWD/}" && failed=1
exit "$failed"
