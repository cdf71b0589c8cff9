#!/usr/bin/env bash
# Runs the tests of the libraries under MemorySanitizer, which reports each decision that hangs on memory
# that was never set. It must see all code of the process, so that the standard library and GoogleTest
# are built for it as well, from Debian's sources; who looks for handlers of exceptions is the one thing
# that is not, since it reads stacks as they are.
#
#     scripts/memory-sanitizer.sh            all
#     scripts/memory-sanitizer.sh kernel     the programs whose name matches this
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/install-dependencies.sh checks
folder=$PWD/build/memory-sanitizer
prefix=$folder/prefix
compilers=(-DCMAKE_C_COMPILER=clang-19 -DCMAKE_CXX_COMPILER=clang++-19)
flags="-fsanitize=memory -fsanitize-memory-track-origins -fno-omit-frame-pointer"
flags+=" -nostdinc++ -isystem $prefix/include/c++/v1"

buildStandardLibrary() {
    local sources
    sources=$(scripts/fetch-source.sh "$folder/sources" llvm-toolchain-19)
    cmake -S "$sources/runtimes" -B "$folder/libc++" -G Ninja -DCMAKE_BUILD_TYPE=Release "${compilers[@]}" \
        -DLLVM_ENABLE_RUNTIMES="libcxx;libcxxabi" -DLLVM_USE_SANITIZER=MemoryWithOrigins \
        -DLIBCXX_ENABLE_SHARED=OFF -DLIBCXXABI_ENABLE_SHARED=OFF -DLIBCXXABI_USE_LLVM_UNWINDER=OFF \
        -DLLVM_INCLUDE_TESTS=OFF -DLIBCXX_INCLUDE_TESTS=OFF -DLIBCXX_INCLUDE_BENCHMARKS=OFF \
        -DLIBCXXABI_INCLUDE_TESTS=OFF -DCMAKE_INSTALL_PREFIX="$prefix"
    cmake --build "$folder/libc++" --target install
}

# Tests replace the operators new and delete. With those of the sanitizer they would clash, so that it is
# the C compiler that links, which leaves these out; all memory comes from the sanitizer's malloc.
#
# configure <sources> <folder> <arguments for cmake>
configure() {
    cmake -S "$1" -B "$2" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS_RELEASE="-O1 -g1" \
        "${compilers[@]}" -DCMAKE_CXX_FLAGS="$flags" -DCMAKE_EXE_LINKER_FLAGS="-L$prefix/lib" \
        -DCMAKE_CXX_LINK_EXECUTABLE="clang-19 <FLAGS> <LINK_FLAGS> <OBJECTS> -o <TARGET> <LINK_LIBRARIES>" \
        -DCMAKE_CXX_STANDARD_LIBRARIES="-lc++ -lc++abi -lgcc_s -lm" "${@:3}"
}

buildGoogleTest() {
    configure /usr/src/googletest "$folder/googletest" -DBUILD_GMOCK=OFF -DCMAKE_INSTALL_PREFIX="$prefix"
    cmake --build "$folder/googletest" --target install
}

mkdir -p "$folder"
if [[ ! -f $prefix/lib/libc++.a ]]; then buildStandardLibrary; fi
if [[ ! -f $prefix/lib/libgtest.a ]]; then buildGoogleTest; fi
configure . "$folder/mvfreq" -DCMAKE_PREFIX_PATH="$prefix" -DBUILD_SHARED_LIBS=OFF -DMVFREQ_BUILD_TOOLS=OFF \
    -DMVFREQ_BUILD_PYTHON=OFF -DMVFREQ_BUILD_EXAMPLES=OFF -DMVFREQ_TEST_PROCESSES=8 \
    -DCMAKE_DISABLE_FIND_PACKAGE_OpenCV=ON
cmake --build "$folder/mvfreq"
# Tests ask for more memory than there is, and get none.
export MSAN_OPTIONS=allocator_may_return_null=1
ctest --test-dir "$folder/mvfreq" --output-on-failure --no-tests=error --parallel "$(nproc)" ${1:+-R "$1"}
