#!/usr/bin/env bash
# Runs the tests of the coverage preset and lists which lines and branches of the libraries they
# reached. Fails below 100 % of the lines of filt/ and 95 % of those of base/ and vsys/. On a processor
# without AVX-512 the lines that ask for it are missing.
#
#     scripts/coverage.sh             builds, runs and reports
#     scripts/coverage.sh --report    reports what the last run left
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
build=build/coverage

# Lines that no test can reach, and why.
excluded=(
    # Plain C++ is chosen on processors of other architectures, or by other compilers.
    '^    return mvi::kPlainPath;$'
)

if [[ ${1:-} != --report ]]; then
    scripts/install-dependencies.sh checks
    cmake --preset coverage
    cmake --build --preset coverage
    find "$build" -name '*.gcda' -delete
    # The packages are built without these options, and the sanitizers' runs repeat the rest.
    ctest --preset coverage --parallel "$(nproc)" --exclude-regex '^Package\.'
fi

pattern=$(IFS='|'; echo "${excluded[*]}")
# report <least percentage of lines> <folders> [options]
report() {
    gcovr --root . --object-directory "$build" "$build" --filter "$2" --fail-under-line "$1" \
        --exclude-lines-by-pattern "$pattern" --exclude-throw-branches --exclude-unreachable-branches "${@:3}"
}
failed=0
report 100 'filt/' || failed=1
report 95 '(base|vsys)/' || failed=1
report 0 '(filt|base|vsys)/' --branches
exit "$failed"
