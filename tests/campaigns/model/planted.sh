#!/usr/bin/env bash
# Shows that the model finds bugs: each patch in planted/ is applied to a copy of the tree, and 2,000
# chains must show a difference.
#
#   tests/campaigns/model/planted.sh [PATCH...]
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../../.." && pwd)
copy=$(mktemp -d)
trap 'rm -rf "$copy"' EXIT
patches=("$@")
((${#patches[@]})) || patches=("$root"/tests/campaigns/model/planted/*.patch)

git -C "$root" ls-files -z | (cd "$root" && xargs -0 cp --parents --target-directory="$copy")
cmake -S "$copy" --preset dev >/dev/null
missed=0
for file in "${patches[@]}"; do
    name=$(basename "$file" .patch)
    patch --quiet --strip=1 --directory="$copy" <"$file"
    cmake --build "$copy/build/dev" --target model_chains >/dev/null
    if "$copy/build/dev/tests/campaigns/model/model_chains" 2000 >"$copy/log"; then
        echo "$name: NOT FOUND in 2,000 chains"
        missed=1
    else
        echo "$name: $(grep -m1 '^chain' "$copy/log")"
    fi
    patch --quiet --strip=1 --reverse --directory="$copy" <"$file"
done
exit "$missed"
