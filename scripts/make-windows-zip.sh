#!/usr/bin/env bash
# Makes the ZIP for Windows: programs, DLLs, import libraries, headers, CMake and pkg-config files,
# documents, and the licences of what is linked in.
#
#     scripts/make-windows-zip.sh FOLDER     leaves mvfreq-VERSION-windows-x86_64.zip there
set -euo pipefail
if (($# != 1)); then sed -n '2,5s/^# \{0,1\}//p' "$0"; exit 2; fi
mkdir -p "$1"
target=$(realpath "$1")
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/install-dependencies.sh windows
libraries=build/windows-libraries
if [[ ! -f $libraries/lib/libtiff.a ]]; then scripts/windows-libraries.sh "$libraries"; fi

cmake --preset windows
cmake --build --preset windows
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' build/windows/CMakeCache.txt)
name=mvfreq-$version-windows-x86_64
stage=$(mktemp -d)
trap 'rm -rf "$stage"' EXIT
cmake --install build/windows --prefix "$stage/$name" --strip

documents=$stage/$name/share/doc/mvfreq
mkdir -p "$documents/licences"
cp README.md CHANGELOG.md docs/windows.md "$documents"
cp cmake/debian/copyright "$documents/licences/mvfreq.txt"
cp "$libraries"/licences/* "$documents/licences"

# Whoever makes it from one commit gets one file.
rm -f "$target/$name.zip"
(cd "$stage" && cmake -E tar cf "$target/$name.zip" --format=zip \
    --mtime="$(date --utc --date="@$(git -C "$OLDPWD" log -1 --format=%ct)" '+%F %T UTC')" "$name")
echo "$target/$name.zip"
