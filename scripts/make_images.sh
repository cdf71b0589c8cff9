#!/usr/bin/env bash
# Makes the pictures of README.md, docs/images, with the real program.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

mvfreq=${1:-build/release/tools/mvfreq}
pictures=examples/pictures
images=docs/images
mkdir -p $images

"$mvfreq" bandpass --frequency 0.03 --sigma 0.012 --dc-radius 1 --rescale \
    $pictures/woven.png $images/woven-defects.png
"$mvfreq" bandreject --frequency 0.24 --sigma 0.02 --plateau 0.05 \
    $pictures/printed.png $images/printed-descreened.png
