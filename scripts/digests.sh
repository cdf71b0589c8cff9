#!/usr/bin/env bash
# Builds the program of the digests with each compiler at each level of optimisation, and for AArch64
# under emulation, and compares what it prints with the digests of the tree.
#
#     scripts/digests.sh                    all of them
#     scripts/digests.sh aarch64            those whose name has this in it
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/install-dependencies.sh checks

wanted=${1:-}
mkdir -p build/digests
failed=0

# compare <name> <level> <arguments for cmake>
compare() {
    local name="$1 $2" folder="build/digests/$1$2" begin=$SECONDS verdict=equal
    if [[ $name != *$wanted* ]]; then return; fi
    {
        cmake -S . -B "$folder" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS_RELEASE="$2" \
            -DMVFREQ_BUILD_TOOLS=OFF "${@:3}" &&
            cmake --build "$folder" --target results_digest &&
            ctest --test-dir "$folder" -R '^Results\.' --output-on-failure --no-tests=error
    } >"$folder.log" 2>&1 || verdict=DIFFERENT
    printf '%-28s %-9s %4d s\n' "$name" "$verdict" $((SECONDS - begin))
    if [[ $verdict != equal ]]; then
        cat "$folder.log"
        failed=1
    fi
}

for level in -O0 -O1 -O2 -O3; do
    for compiler in g++ clang++; do compare "$compiler" "$level" -DCMAKE_CXX_COMPILER="$compiler"; done
    compare aarch64-linux-gnu-g++ "$level" -DCMAKE_TOOLCHAIN_FILE=cmake/toolchains/aarch64.cmake
done
exit "$failed"
