#!/usr/bin/env bash
# Shows that the fuzz targets find bugs: each patch in planted/ is applied to a copy of the tree, and
# the target it is named after must fail within a minute.
#
#   tests/campaigns/fuzz/planted.sh [PATCH...]
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../../.." && pwd)
copy=$(mktemp -d)
trap 'rm -rf "$copy"' EXIT
patches=("$@")
((${#patches[@]})) || patches=("$root"/tests/campaigns/fuzz/planted/*.patch)

git -C "$root" ls-files -z | (cd "$root" && xargs -0 cp --parents --target-directory="$copy")
cmake -S "$copy" --preset fuzz -DMVFREQ_WARNINGS_AS_ERRORS=OFF >/dev/null
missed=0
for file in "${patches[@]}"; do
    name=$(basename "$file" .patch)
    target=${name%%-*}
    patch --quiet --strip=1 --directory="$copy" <"$file"
    cmake --build "$copy/build/fuzz" --target "fuzz_$target" >/dev/null
    python3 -B "$copy/tests/campaigns/fuzz/corpus.py" seed "$target" "$copy/$name"
    begin=$SECONDS
    if "$copy/build/fuzz/tests/campaigns/fuzz/fuzz_$target" -max_len=1024 -malloc_limit_mb=300 -entropic=0 \
        -max_total_time=60 -close_fd_mask=1 -artifact_prefix="$copy/" "$copy/$name" 2>"$copy/log"; then
        echo "$name: NOT FOUND within a minute"
        missed=1
    else
        echo "$name: found in $((SECONDS - begin)) s, $(grep -m1 -oE 'Expected.*|ERROR: .*|runtime error: .*|.* differs$' "$copy/log" | cut -c1-80)"
    fi
    patch --quiet --strip=1 --reverse --directory="$copy" <"$file"
done
exit "$missed"
