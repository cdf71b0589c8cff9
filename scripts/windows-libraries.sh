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

# The machine's own package sources, with those of source packages, in a state of their own.
mkdir -p apt/lists/partial
for file in /etc/apt/sources.list /etc/apt/sources.list.d/debian*; do
    if [[ ! -f $file ]]; then continue; fi
    sed 's/^Types: deb$/Types: deb-src/; s/^deb /deb-src /' "$file" >"apt/$(basename "$file")"
done
as_sources=(-qq -o Dir::Etc::sourcelist=/dev/null -o Dir::Etc::sourceparts="$prefix/apt"
    -o Dir::State::lists="$prefix/apt/lists" -o APT::Sandbox::User=root)
apt-get "${as_sources[@]}" update

# The newest version that can be had: not every mirror has all that its list names.
fetch() {
    local version
    mkdir -p "sources/$1"
    cd "sources/$1"
    for version in $(apt-cache "${as_sources[@]}" showsrc "$1" | sed -n 's/^Version: //p' | sort -urV); do
        if apt-get "${as_sources[@]}" source "$1=$version" >/dev/null; then return; fi
    done
    rm -rf "../$(basename "$PWD")"
    return 1
}

# build <source package> <arguments for cmake>
build() {
    local package=$1 folder
    if [[ ! -d sources/$package ]]; then (fetch "$package"); fi
    folder=$(find "sources/$package" -mindepth 1 -maxdepth 1 -type d)
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
