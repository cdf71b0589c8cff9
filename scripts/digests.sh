#!/usr/bin/env bash
# Builds the program of the digests with each compiler at each level of optimisation and with flags
# that users add, for other processors under qemu, for Windows under Wine, and for WebAssembly under
# node. Compares what it prints with the digests of the tree, and looks through its machine code for
# products fused with sums. Other processors also load the golden archives.
#
#     scripts/digests.sh                    all of them
#     scripts/digests.sh s390x              those whose name has this in it
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/install-dependencies.sh checks

wanted=${1:-}
mkdir -p build/digests
failed=0

# What a processor of x86-64 must have to run what was built with these flags.
needed() {
    case $1 in
    *x86-64-v3*) echo fma ;;
    *x86-64-v4*) echo avx512vl ;;
    esac
}

hasInstructions() {
    local instructions
    instructions=$(needed "$1")
    [[ -z $instructions ]] || grep --quiet --word-regexp "$instructions" /proc/cpuinfo
}

# WebAssembly has no instruction that fuses products with sums; of some machines' instructions the
# checks say that they do not know them.
checkMachineCode() {
    local objdump program=$1/tests/campaigns/digests/results_digest
    if [[ $1 == */wasm* ]]; then return; fi
    if [[ -f $1/bin/results_digest.exe ]]; then program=$1/bin/results_digest.exe; fi
    objdump=$(sed -n 's/^CMAKE_OBJDUMP:FILEPATH=//p' "$1/CMakeCache.txt")
    tests/campaigns/interface/check_contraction.py "$program" "$objdump" || (($? == 77))
    # What is optimised as a whole has no machine code in its objects; what is not optimised calls one
    # function for all sums of a kind.
    if [[ $1 == *-flto || $1 == *-O0 ]]; then return; fi
    tests/campaigns/interface/check_vectors.py "$objdump" \
        "$1"/filt/CMakeFiles/mvfreq_objects.dir/fft/internal/kernel/paths/path_baseline.cpp.* || (($? == 77))
}

configure() {
    cmake -S . -B "$1" -G Ninja -DMVFREQ_WARNINGS_AS_ERRORS=ON -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_CXX_FLAGS_RELEASE="$2" -DMVFREQ_BUILD_TOOLS=OFF "${@:3}"
}

askDigests() {
    configure "$@" &&
        cmake --build "$1" --target results_digest &&
        checkMachineCode "$1" &&
        if hasInstructions "$2"; then
            ctest --test-dir "$1" -R '^Results.HaveTheDigestsOfTheTree$' \
                --output-on-failure --no-tests=error --timeout 7200
        else
            verdict="not run"
        fi
}

askArchives() {
    configure "$@" &&
        cmake --build "$1" --target archive_test &&
        ctest --test-dir "$1" -R 'Golden.*(MeetsItsFate|AreAllThere)' --output-on-failure \
            --no-tests=error --parallel "$(nproc)"
}

# One line, and all that was said when it fails.
#
# tell <name> <file of what is said> <command>
tell() {
    local begin=$SECONDS verdict=equal
    if [[ $1 != *$wanted* ]]; then return; fi
    "${@:3}" >"$2" 2>&1 || verdict=DIFFERENT
    printf '%-46s %-9s %4d s\n' "$1" "$verdict" $((SECONDS - begin))
    if [[ $verdict == DIFFERENT ]]; then
        cat "$2"
        failed=1
    fi
}

# compare <name> <flags> <arguments for cmake>
compare() {
    local folder="build/digests/$1${2// /}"
    tell "$1 $2" "$folder.log" askDigests "$folder" "${@:2}"
}

# Archives that were written once, loaded and stored again; likewise.
compareArchives() {
    local folder="build/digests/$1${2// /}"
    tell "$1 $2, archives" "$folder-archives.log" askArchives "$folder" "${@:2}"
}

levels=(-O0 -O1 -O2 -O3)
# What distributions harden their programs with.
hardened="-O2 -D_FORTIFY_SOURCE=2 -fstack-protector-strong -fstack-clash-protection -fcf-protection=full"
additions=("-O3 -march=x86-64-v2" "-O3 -march=x86-64-v3" "-O3 -march=x86-64-v4" "-O3 -march=native" "-O3 -funroll-loops"
    "-O2 -D_GLIBCXX_ASSERTIONS" "$hardened -ftrivial-auto-var-init=pattern" "-O3 -flto")
processors=("-O3 -march=armv8.3-a" "-O3 -march=armv9-a")

for compiler in g++ clang++; do
    for flags in "${levels[@]}" "${additions[@]}"; do
        compare "$compiler" "$flags" -DCMAKE_CXX_COMPILER="$compiler"
    done
done
# Other versions, where they are installed; the next language; the other library, of the newest clang++
# whose Debian package of it is there.
for compiler in g++-11 g++-12 clang++-14 clang++-16 clang++-19; do
    if command -v "$compiler" >/dev/null; then
        compare "$compiler" -O3 -DCMAKE_CXX_COMPILER="$compiler"
    fi
done
for compiler in g++ clang++-16; do
    if command -v "$compiler" >/dev/null; then
        compare "$compiler-c++23" -O3 -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_CXX_STANDARD=23
    fi
done
for version in 19 16 14; do
    if [[ -d /usr/lib/llvm-$version/include/c++/v1 ]]; then
        compare "clang++-$version-libc++" -O3 -DCMAKE_CXX_COMPILER="clang++-$version" \
            -DCMAKE_CXX_FLAGS=-stdlib=libc++
    fi
done
for machine in s390x riscv64 ppc64el armhf i386 mingw64; do
    compare "$machine" -O2 -DCMAKE_TOOLCHAIN_FILE=cmake/toolchains/$machine.cmake
done
# The others load them among their tests, in scripts/test-machines.sh.
for machine in s390x riscv64 ppc64el armhf aarch64; do
    compareArchives "$machine" -O2 -DCMAKE_TOOLCHAIN_FILE=cmake/toolchains/$machine.cmake
done
for flags in "${levels[@]}" "${processors[@]}"; do
    compare aarch64-linux-gnu-g++ "$flags" -DCMAKE_TOOLCHAIN_FILE=cmake/toolchains/aarch64.cmake
done
compare aarch64-clang++ "-O3 -march=armv9-a" -DCMAKE_TOOLCHAIN_FILE=cmake/toolchains/aarch64.cmake \
    -DCMAKE_CXX_COMPILER=clang++
for flags in "${levels[@]}"; do
    compare wasm "$flags" -DCMAKE_TOOLCHAIN_FILE=cmake/toolchains/wasm.cmake -DBUILD_SHARED_LIBS=OFF
done
exit "$failed"
