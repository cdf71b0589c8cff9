#!/usr/bin/env bash
# Takes all figures of docs/performance.md anew and writes them, their tables and their plots:
#   bench/run.sh
#   bench/run.sh --only GROUP...    these groups of `mvfreq_bench`; prints their tables
#   bench/run.sh --quick            square transforms and pictures of 1024 x 1024, likewise
#   bench/run.sh --plan             holds every contest for a moment, so that all plans are made
# It needs libfftw3-dev, libkissfft-dev, libopencv-core-dev, libavutil-dev and python3-matplotlib.
# FFTW with all instruction sets is built at first into MVFREQ_BENCH_FFTW_ROOT. FFTW looks for plans
# without a limit, which takes an hour or more at first; they are kept in MVFREQ_BENCH_WISDOM.
# MVFREQ_BENCH_BUILD and MVFREQ_BENCH_CORE choose the build folder and the core. With the right to
# real-time priority it measures so; MVFREQ_BENCH_PRIORITY=common leaves other users their turns.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

cache=${XDG_CACHE_HOME:-$HOME/.cache}/mvfreq-bench
fftw=${MVFREQ_BENCH_FFTW_ROOT:-$cache/fftw}
wisdom=${MVFREQ_BENCH_WISDOM:-$cache/wisdom}
build=${MVFREQ_BENCH_BUILD:-build/bench}
core=${MVFREQ_BENCH_CORE:-$(($(nproc) - 1))}
python=python3
"$python" -c 'import matplotlib' 2>/dev/null || python=/usr/bin/python3

[[ -e $fftw/lib/libfftw3f.so.3 ]] || bench/build-fftw.sh "$fftw"
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DMVFREQ_BUILD_BENCH=ON -DMVFREQ_BUILD_TESTS=OFF \
    -DMVFREQ_BUILD_TOOLS=OFF -DMVFREQ_BENCH_FFTW_ROOT="$fftw" >/dev/null
cmake --build "$build" --target mvfreq_bench --parallel "$(nproc)"

priority=()
if [[ ${MVFREQ_BENCH_PRIORITY:-} != common ]] && chrt -f 50 true 2>/dev/null; then
    priority=(--real-time)
fi

# Into the folder given: the machine's description, and times.csv for what measure() appends.
begin() {
    results=$1
    mkdir -p "$results"
    echo 'group,work,width,height,peer,samples,median_ns,p10_ns,p90_ns,error' >"$results/times.csv"
    {
        bench --group machine
        echo "priority=${priority[*]:-common}"
        echo "date=$(date --utc +%F)"
        echo "source=$(git describe --always --dirty 2>/dev/null || echo unknown)"
    } >"$results/machine.txt"
}
bench() { "$build/bench/mvfreq_bench" --core "$core" "${priority[@]}" --wisdom "$wisdom" "$@"; }
measure() { bench --csv "$results/times.csv" "$@"; }

case ${1:-} in
--only)
    begin "$build/results"
    shift
    for group in "$@"; do measure --group "$group"; done
    "$python" bench/report.py --print "$results"
    ;;
--quick)
    begin "$build/results"
    measure --group c2c --group real --seconds 1 --plan-seconds 1 \
        --size 64x64 --size 128x128 --size 256x256 --size 512x512 --size 1024x1024 --size 2048x2048
    measure --group pipeline8 --group everywhere --size 1024x1024 --seconds 1 --plan-seconds 1
    "$python" bench/report.py --print "$results"
    ;;
--plan)
    bench --seconds 0 --group c2c --group copy --group real --group path \
        --group pipeline8 --group everywhere --group pipeline16 --group tiles
    ;;
'')
    begin "$build/results"
    measure --group memory --group first
    measure --group c2c --group copy --group real --seconds 2
    measure --group path --group band --seconds 1
    measure --group pipeline8 --group everywhere --group pipeline16 --seconds 2
    measure --group tiles --group threads --seconds 5
    measure --group operation --seconds 0.5
    mkdir -p bench/results
    cp "$results"/{times.csv,machine.txt} bench/results
    "$python" bench/report.py
    ;;
*)
    sed -n '2,/^set/{/^#/s/^# \?//p}' "$0" >&2
    exit 2
    ;;
esac
