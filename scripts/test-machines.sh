#!/usr/bin/env bash
# Builds the tests for Windows, with DLLs and with static libraries, and runs them under Wine; for 32 bits,
# where a long ends as on Windows and UBSan sees it overflow; those that need no program and no threads
# for WebAssembly, and runs them under node. Those that are skipped are
# listed with the reason. Optimised code is what scripts/digests.sh asks: here -O1 halves the time of the
# compilers.
#
#     scripts/test-machines.sh            all of them
#     scripts/test-machines.sh DLLs       those whose name has this in it
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/install-dependencies.sh checks

wanted=${1:-}
failed=0
mkdir -p build/machines
work=$(mktemp -d)
export WINEPREFIX=$work WINEDEBUG=-all WINEDLLOVERRIDES='mscoree=;mshtml=' LC_ALL=C.UTF-8
finish() {
    wineserver -k 2>/dev/null || true   # of this folder alone
    rm -rf "$work"
}
trap finish EXIT

# Test programs find Wine's folder made, and do not make it side by side.
prepare() { [[ $1 != windows* ]] || "$(command -v wine64 || echo /usr/lib/wine/wine64)" wineboot --init; }

# Those of GoogleTest that ran, one by one or all of a program at once.
countTests() {
    sed -n 's/^\[==========\] \([0-9]*\) tests* from .* ran\..*/\1/p' "$1/Testing/Temporary/LastTest.log" |
        awk '{ sum += $1 } END { print sum + 0 }'
}

# try <name> <preset> <arguments for cmake>
try() {
    local folder=build/machines/${1// /-} begin=$SECONDS verdict=passed
    if [[ $1 != *$wanted* ]]; then return; fi
    {
        prepare "$1" &&
            cmake --preset "$2" -B "$folder" -DMVFREQ_BUILD_TESTS=ON -DMVFREQ_BUILD_TOOLS=OFF \
                -DCMAKE_CXX_FLAGS_RELEASE=-O1 "${@:3}" &&
            cmake --build "$folder" &&
            ctest --test-dir "$folder" --output-on-failure --no-tests=error --parallel "$(nproc)" \
                --output-junit tests.xml
    } >"$folder.log" 2>&1 || verdict=FAILED
    printf '%-22s %-7s %5d tests %5d s\n' "$1" "$verdict" "$(countTests "$folder")" $((SECONDS - begin))
    if [[ $verdict == FAILED ]]; then
        tail -n 100 "$folder.log"
        failed=1
    else
        python3 -B scripts/skipped_tests.py "$folder/tests.xml"
    fi
}

try "windows DLLs" windows
try "windows static" windows -DBUILD_SHARED_LIBS=OFF
try i386 i386
# node takes seconds to begin with a program, so that each runs all its tests at once.
try wasm wasm -DMVFREQ_TEST_PROCESSES=1
exit "$failed"
