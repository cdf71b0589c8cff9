#!/usr/bin/env bash
# Takes all figures of docs/performance.md anew and writes them, their tables and their plots:
#   bench/run.sh [--quick]
# It needs libfftw3-dev, libkissfft-dev, libopencv-core-dev, python3-matplotlib, and root or the
# right to real-time priority (without, it measures at common priority). FFTW with all instruction
# sets is built at first into MVFREQ_BENCH_FFTW_ROOT. A run takes about six minutes; --quick takes the square
# transforms and the 8-bit pipelines of 1024 x 1024, and prints only.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

cache=${XDG_CACHE_HOME:-$HOME/.cache}/mvfreq-bench
fftw=${MVFREQ_BENCH_FFTW_ROOT:-$cache/fftw}
build=${MVFREQ_BENCH_BUILD:-build/bench}
core=${MVFREQ_BENCH_CORE:-$(($(nproc) - 1))}
results=bench/results

[[ -e $fftw/lib/libfftw3f.so.3 ]] || bench/build-fftw.sh "$fftw"
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DMVFREQ_BUILD_BENCH=ON -DMVFREQ_BUILD_TESTS=OFF \
    -DMVFREQ_BUILD_TOOLS=OFF -DMVFREQ_BENCH_FFTW_ROOT="$fftw" >/dev/null
cmake --build "$build" --target mvfreq_bench --parallel "$(nproc)"

priority=()
if chrt -f 50 true 2>/dev/null; then priority=(--real-time); fi
bench() { "$build/bench/mvfreq_bench" --core "$core" "${priority[@]}" --wisdom "$build/wisdom" "$@"; }

if [[ ${1:-} == --quick ]]; then
    bench --group c2c --group real --seconds 2 $(printf -- '--size %sx%s ' 64 64 128 128 256 256 512 512 1024 1024 2048 2048)
    bench --group pipeline8 --size 1024x1024
    exit
fi

mkdir -p "$results"
rm -f "$results"/*.new
echo 'group,work,width,height,peer,samples,median_ns,p10_ns,p90_ns,error' >"$results/times.csv.new"
{
    bench --group machine
    echo "priority=${priority[*]:-common}"
    echo "date=$(date --utc +%F)"
    echo "source=$(git describe --always --dirty 2>/dev/null || echo unknown)"
} >"$results/machine.txt.new"
bench --group memory --group first --csv "$results/times.csv.new"
bench --group c2c --group real --seconds 1 --csv "$results/times.csv.new"
bench --group path --group band --group pipeline8 --group pipeline16 --seconds 1 --csv "$results/times.csv.new"
bench --group operation --seconds 0.5 --csv "$results/times.csv.new"
for file in times.csv machine.txt; do mv "$results/$file.new" "$results/$file"; done

python=python3
"$python" -c 'import matplotlib' 2>/dev/null || python=/usr/bin/python3
"$python" bench/report.py
