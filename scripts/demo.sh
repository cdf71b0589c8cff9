#!/usr/bin/env bash
# Installs what is missing, builds the program and filters a shipped picture.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/install-dependencies.sh
cmake --preset release -DMVFREQ_BUILD_TESTS=OFF -DMVFREQ_WARNINGS_AS_ERRORS=OFF
cmake --build --preset release --target mvfreq_tool

picture=examples/pictures/woven.png
mkdir -p out
set -x
build/release/tools/mvfreq bandpass --frequency 0.03 --sigma 0.012 --dc-radius 1 --rescale \
    "$picture" out/woven-defects.png
{ set +x; } 2>/dev/null

echo
echo "Before: $PWD/$picture"
echo "After:  $PWD/out/woven-defects.png"
echo "The program is $PWD/build/release/tools/mvfreq; --help says what it does."
