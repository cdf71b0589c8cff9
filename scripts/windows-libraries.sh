#!/usr/bin/env bash
# Builds for Windows what the program needs of other libraries, static, from Debian's sources: libpng,
# libjpeg-turbo, libtiff and CLI11; zlib is that of libz-mingw-w64-dev.
#
#     scripts/windows-libraries.sh FOLDER    outside the tree; its licences go to FOLDER/licences
set -euo pipefail
if (($# != 1)); then sed -n '2,5s/^# \{0,1\}//p' "$0"; exit 2; fi
tree=$(realpath "$(dirname "${BASH_SOURCE[0]}")/..")
mkdir -p "$1"
prefix=$(realpath "$1")
"$tree/scripts/install-dependencies.sh" windows
mkdir -p "$prefix/licences"
cd "$prefix"

# build <source package> <arguments for cmake>
build() {
    local package=$1 folder
    folder=$("$tree/scripts/fetch-source.sh" sources "$package")
    cmake -S "$folder" -B "build/$package" -G Ninja -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_TOOLCHAIN_FILE="$tree/cmake/toolchains/mingw64.cmake" -DMVFREQ_WINDOWS_LIBRARIES="$prefix" \
        -DCMAKE_INSTALL_PREFIX="$prefix" -DBUILD_SHARED_LIBS=OFF "${@:2}"
    cmake --build "build/$package" --target install
    cp "$folder/debian/copyright" "licences/$package.txt"
}

cp /usr/share/doc/libz-mingw-w64-dev/copyright licences/zlib.txt
build cli11 -DCLI11_BUILD_TESTS=OFF -DCLI11_BUILD_EXAMPLES=OFF -DCLI11_BUILD_DOCS=OFF
build libpng1.6 -DPNG_SHARED=OFF -DPNG_TESTS=OFF
build libjpeg-turbo -DENABLE_SHARED=OFF -DWITH_TURBOJPEG=OFF -DWITH_SIMD=OFF
build tiff -Dtiff-tools=OFF -Dtiff-tests=OFF -Dtiff-contrib=OFF -Dtiff-docs=OFF -Dcxx=OFF \
    -Dlzma=OFF -Dzstd=OFF -Dwebp=OFF -Djbig=OFF -Dlerc=OFF -Dlibdeflate=OFF
