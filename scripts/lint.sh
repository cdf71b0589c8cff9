#!/usr/bin/env bash
# Runs cppcheck and clang-tidy over the libraries and the program; fails when either has something to
# say. .cppcheck-suppressions and .clang-tidy hold what they are not asked, each with its reason.
#
#     scripts/lint.sh           all sources
#     scripts/lint.sh inverse   those whose path has this in it
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
part=${1:-}
scripts/install-dependencies.sh ci checks
cmake --preset dev >/dev/null

mapfile -t sources < <(git ls-files '*.cpp' | grep -E '^(base|vsys|filt|tools)/' | grep -e "$part")
failed=0
cppcheck --enable=warning,performance,portability,style --std=c++20 --language=c++ --quiet \
    --suppressions-list=.cppcheck-suppressions -I. -DMVFREQ_X86_PATHS=1 --error-exitcode=1 \
    "${sources[@]}" || failed=1
run-clang-tidy -quiet -p build/dev -j "$(nproc)" "${sources[@]/#/$PWD/}" 2>/dev/null |
    grep -E '(warning|error): ' | sort -u && failed=1
exit "$failed"
