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

"$build/tools/mvfreq" bandpass --force --frequency 0.03 --sigma 0.012 --dc-radius 1 --rescale \
    $pictures/woven.png $images/woven-defects.png
"$build/tools/mvfreq" bandreject --force --frequency 0.24 --sigma 0.02 --plateau 0.05 \
    $pictures/printed.png $images/printed-descreened.png

example() { local name=$1; shift; "$build/examples/$name" "$@" >/dev/null; }
results=$(mktemp -d)
trap 'rm -rf "$results"' EXIT
python=python3
"$python" -c 'import matplotlib' 2>/dev/null || python=/usr/bin/python3

example archive_recipe "$results/recipe.mva" $images/archive-recipe.png
example cancel_button $pictures/disturbed.png $images/cancel-button.png
example correlation_search $pictures/board.png $pictures/mark.png $images/correlation-search.png
example downscaling $pictures/zone.png $images/downscaling.png
example interference_removal $pictures/disturbed.png $images/interference-removal.png
example line_scan_web $pictures/web.png $images/line-scan-web.png
example many_threads $pictures/printed.png $images/many-threads.png
example orientation_map $pictures/brushed.png $images/orientation-map.png
example own_memory $pictures/woven.png $images/own-memory.png
example phase_images $pictures/fringes.png $images/phase.png $images/quadrants.png
example sharpening $pictures/blurred.png $images/sharpening.png

# What is large is shown smaller.
example signed_defects $pictures/woven.png "$results/signed.png"
"$python" docs/figures/reduce.py "$results/signed.png" $images/signed-defects.png 2 mean
"$python" scripts/make_photograph.py "$results/photo.png"
example photograph "$results/photo.png" "$results/defects.png"
"$python" docs/figures/reduce.py "$results/photo.png" $images/photograph.png 10 mean
"$python" docs/figures/reduce.py "$results/defects.png" $images/photograph-defects.png 10 max

# The figures of the guide: computed by the library, drawn by Debian's python3-matplotlib.
"$build/docs/figures" $pictures "$results"
"$python" docs/figures/draw.py "$results" $images
