#!/usr/bin/env bash
# Makes the pictures of README.md, docs/gallery.md and docs/guide.md, in docs/images, with the real
# programs.
#   make_images.sh [BUILD]
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

build=${1:-build/release}
pictures=examples/pictures
images=docs/images
mkdir -p $images

"$build/tools/mvfreq" bandpass --frequency 0.03 --sigma 0.012 --dc-radius 1 --rescale \
    $pictures/woven.png $images/woven-defects.png
"$build/tools/mvfreq" bandreject --frequency 0.24 --sigma 0.02 --plateau 0.05 \
    $pictures/printed.png $images/printed-descreened.png

example() { local name=$1; shift; "$build/examples/$name" "$@" >/dev/null; }
recipe=$(mktemp)
trap 'rm -f "$recipe"' EXIT

example archive_recipe "$recipe" $images/archive-recipe.png
example cancel_button $pictures/disturbed.png $images/cancel-button.png
example correlation_search $pictures/board.png $pictures/mark.png $images/correlation-search.png
example downscaling $pictures/zone.png $images/downscaling.png
example interference_removal $pictures/disturbed.png $images/interference-removal.png
example many_threads $pictures/printed.png $images/many-threads.png
example orientation_map $pictures/brushed.png $images/orientation-map.png
example own_memory $pictures/woven.png $images/own-memory.png
example phase_images $pictures/fringes.png $images/phase.png $images/quadrants.png
example sharpening $pictures/blurred.png $images/sharpening.png

# The figures of the guide: computed by the library, drawn by Debian's python3-matplotlib.
results=$(mktemp -d)
trap 'rm -rf "$recipe" "$results"' EXIT
"$build/docs/figures" $pictures "$results"
python=python3
"$python" -c 'import matplotlib' 2>/dev/null || python=/usr/bin/python3
"$python" docs/figures/draw.py "$results" $images
