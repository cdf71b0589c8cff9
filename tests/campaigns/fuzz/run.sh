#!/usr/bin/env bash
# Runs a fuzz target on its corpus and, when it found nothing wrong, keeps the corpus minimised.
#
#   tests/campaigns/fuzz/run.sh TARGET [RUNS]    TARGET: archives, kernel, pictures or program;
#                                                RUNS: a million
#
# What the target dislikes is left as a file in build/fuzz/run/TARGET, and the exit code is not 0.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../../.." && pwd)
target=$1 runs=${2:-1000000}
build=${MVFREQ_FUZZ_BUILD:-$root/build/fuzz}
folder=$build/run/$target
fuzzer=$build/tests/campaigns/fuzz/fuzz_$target
packed=$root/tests/campaigns/fuzz/corpus/$target.corpus
corpus=$root/tests/campaigns/fuzz/corpus.py

if [[ -z ${MVFREQ_FUZZ_BUILD:-} ]]; then
    cmake -S "$root" --preset fuzz >/dev/null
    cmake --build "$build" --target "fuzz_$target"
fi

rm -rf "$folder"
mkdir -p "$folder/found" "$folder/least"
python3 -B "$corpus" seed "$target" "$folder/inputs"
[[ ! -e $packed ]] || python3 -B "$corpus" unpack "$packed" "$folder/inputs"

# Standard output is the program's own; the figures come on standard error.
limits=(-max_len=1024 -timeout=60 -rss_limit_mb=2048 -malloc_limit_mb=300 -entropic=0)
time nice "$fuzzer" "${limits[@]}" -runs="$runs" -close_fd_mask=1 -print_final_stats=1 \
    -artifact_prefix="$folder/" "$folder/found" "$folder/inputs" 2>"$folder/log" ||
    { tail -40 "$folder/log"; exit 1; }
grep -E 'DONE|stat::' "$folder/log"

"$fuzzer" "${limits[@]}" -merge=1 -close_fd_mask=1 "$folder/least" "$folder/inputs" "$folder/found" \
    2>"$folder/merge.log"
python3 -B "$corpus" pack "$folder/least" "$packed"
echo "$(find "$folder/least" -type f | wc -l) inputs, $(stat -c %s "$packed") bytes"
