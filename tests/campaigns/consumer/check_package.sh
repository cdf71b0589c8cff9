#!/usr/bin/env bash
# Installs the library and builds a program on it in the three ways that users have: CMake package,
# pkg-config, plain compiler. Then uninstalls it.
#   check_package.sh shared|static SOURCE BUILD GENERATOR CXX [FLAGS]
# "shared" installs BUILD. "static" configures only the libraries, as on a machine that has nothing
# but a compiler and CMake.
set -euo pipefail

kind=$1 source=$2 build=$3 generator=$4 cxx=$5 flags=${6:-}
project=$source/tests/campaigns/consumer/project
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix

configure() { cmake -G "$generator" -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_CXX_FLAGS="$flags" "$@"; }

# Runs a command and shows what it wrote only if it fails.
quietly() { "$@" >"$work/log" 2>&1 || { cat "$work/log"; exit 1; }; }

# What was installed from the folder before can still be uninstalled afterwards.
install_shared() {
    local manifest=$build/install_manifest.txt
    [[ ! -f $manifest ]] || mv "$manifest" "$work/former"
    quietly cmake --install "$build" --prefix "$prefix"
    mkdir "$work/build" && mv "$manifest" "$work/build"
    [[ ! -f $work/former ]] || mv "$work/former" "$manifest"
}

uninstall_shared() { cmake -DFOLDER="$work/build" -P "$source/cmake/uninstall.cmake"; }
uninstall_static() { cmake --build "$work/build" --target uninstall; }

# Not optimised, for the sake of time: only linking is tested here.
install_static() {
    local missing=()
    for package in GTest CLI11 PNG Python3; do
        missing+=("-DCMAKE_DISABLE_FIND_PACKAGE_$package=ON")
    done
    quietly configure -S "$source" -B "$work/build" -DBUILD_SHARED_LIBS=OFF \
        -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG= -DCMAKE_INSTALL_PREFIX="$prefix" \
        "${missing[@]}"
    for left_out in 'the command line program is not built' 'the examples are not built' \
        'the tests are not built'; do
        grep --quiet "$left_out" "$work/log" || { echo "no message that $left_out"; exit 1; }
    done
    # The digests, which need no package, are built by all other builds.
    quietly cmake --build "$work/build" --target mvbase mvfreq --parallel 2
    quietly cmake --install "$work/build"
}

# Runs the programs in the folder and takes them away.
run() {
    "$1/inspect" "$work/recipe.mva"
    "$1/restore" "$work/recipe.mva"
    rm "$1/inspect" "$1/restore" "$work/recipe.mva"
    if [[ -n $opencv ]]; then "$1/camera" && rm "$1/camera"; fi
}

with_cmake() {
    echo "-- find_package"
    quietly configure -S "$project" -B "$work/consumer" -DCMAKE_PREFIX_PATH="$prefix"
    quietly cmake --build "$work/consumer"
    run "$work/consumer"
}

# with_compiler OPTIONS: the options stand behind the source, as the linker needs its libraries.
with_compiler() {
    for program in inspect restore; do
        "$cxx" $flags -std=c++20 "$project/$program.cpp" -o "$work/$program" "$@"
    done
    if [[ -n $opencv ]]; then
        "$cxx" $flags -std=c++20 -isystem "$opencv" "$project/camera.cpp" -o "$work/camera" "$@" -lopencv_core
    fi
    run "$work"
}

"install_$kind"
libdir=$(dirname "$(find "$prefix" -name 'libmvfreq.*' -print -quit)")
rpath=-Wl,-rpath,$libdir

opencv=
if [[ -f /usr/include/opencv4/opencv2/core.hpp ]]; then
    opencv=/usr/include/opencv4
else
    echo "-- OpenCV: not on this machine"
fi

with_cmake

if command -v pkg-config >/dev/null; then
    echo "-- pkg-config"
    export PKG_CONFIG_PATH=$libdir/pkgconfig
    with_compiler $(pkg-config --cflags --libs mvfreq) "$rpath"
    if [[ $kind == static ]]; then
        echo "-- pkg-config --static, which names the compiler's own libraries as well"
        opencv='' with_compiler $(pkg-config --static --cflags --libs mvfreq) \
            -nodefaultlibs -lgcc_s -lgcc -lc
    fi
else
    echo "-- pkg-config: not on this machine"
fi

echo "-- only a compiler"
with_compiler -I "$prefix/include/mvfreq" -L "$libdir" -lmvfreq -lmvbase "$rpath"

echo "-- the example of README.md"
sed -n '/^```cpp$/,/^```$/{/^```/!p}' "$source/README.md" >"$work/readme.cpp"
grep --quiet mfFilterImage "$work/readme.cpp" || { echo "no example found"; exit 1; }
header=$(sed -n 's/^The header is `\(.*\.h\)`.*/\1/p' "$source/README.md")
"$cxx" $flags -std=c++20 -I "$prefix/include/mvfreq" -include "$header" -c "$work/readme.cpp" \
    -o "$work/readme.o"

echo "-- uninstall"
"uninstall_$kind" >"$work/removed" 2>&1 || { cat "$work/removed"; exit 1; }
for file in "$prefix/include/mvfreq/filt/freqfilt.h" "$libdir/cmake/mvfreq/mvfreqConfig.cmake"; do
    grep --quiet --line-regexp "Removed $file" "$work/removed" || { echo "not said: $file"; exit 1; }
done
if find "$prefix" -type f -o -type l -o -name mvfreq | grep .; then echo "left behind"; exit 1; fi
"uninstall_$kind" 2>&1 | grep --quiet "^Nothing has been installed from $work/build: " || { echo "no word that nothing is left"; exit 1; }
