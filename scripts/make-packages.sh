#!/usr/bin/env bash
# Builds the Debian packages from the tree. The same tree gives the same bytes, wherever it lies and
# whenever it is built.
#   make-packages.sh FOLDER
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
mkdir -p "${1:?usage: make-packages.sh FOLDER}"
out=$(cd "$1" && pwd)
build=$(mktemp -d)
trap 'rm -rf "$build"' EXIT

# The time of the last change, unless the caller has another.
export SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct)}
export LC_ALL=C.UTF-8 TZ=UTC
umask 022

# The distribution's flags; no path of this machine gets into what is built.
export DEB_BUILD_MAINT_OPTIONS='hardening=+all reproducible=-fixfilepath optimize=-lto'
flags="$(dpkg-buildflags --get CXXFLAGS) $(dpkg-buildflags --get CPPFLAGS)"
flags+=" -ffile-prefix-map=$PWD=/usr/src/mvfreq -ffile-prefix-map=$build=/usr/src/mvfreq/build"
linking=$(dpkg-buildflags --get LDFLAGS)

# The explorer takes a compiler of its own, which not every machine has.
explorer=OFF
if command -v em++ >/dev/null; then explorer=ON; fi

cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
    -DCMAKE_INSTALL_LIBDIR="lib/$(dpkg-architecture -qDEB_HOST_MULTIARCH)" \
    -DCMAKE_CXX_FLAGS="$flags" -DCMAKE_SHARED_LINKER_FLAGS="$linking" \
    -DCMAKE_MODULE_LINKER_FLAGS="$linking" -DCMAKE_EXE_LINKER_FLAGS="$linking" \
    -DCMAKE_BUILD_RPATH_USE_ORIGIN=ON -DMVFREQ_BUILD_TESTS=OFF -DMVFREQ_BUILD_EXAMPLES=OFF \
    -DMVFREQ_BUILD_EXPLORER="$explorer" -DMVFREQ_PACKAGES=ON
cmake --build "$build"
(cd "$build" && cpack)
rm -f "$out"/*mvfreq*.deb
cp "$build"/*.deb "$out"
