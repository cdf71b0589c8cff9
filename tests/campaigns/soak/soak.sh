#!/usr/bin/env bash
# The program and the Python module filter pictures for hours, on all processors, while they are
# stopped and killed, disks are full, and files vanish and change as they are read. Fails on a result
# that is neither whole nor what was there before, on memory that grows, on a file, a descriptor or a
# thread that is left over.
#
#     tests/campaigns/soak/soak.sh [MINUTES]    two hours if not given; build nothing else meanwhile
#
# Needs a disk that can be full, a small one in memory: root mounts it, others as root of a space of
# their own.
set -euo pipefail
if ((EUID != 0)); then exec unshare --map-root-user --mount "$0" "$@"; fi
minutes=${1:-120}
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$here/../../..
cd "$root"

scripts/install-dependencies.sh
cmake --preset release >/dev/null
cmake --build --preset release --target mvfreq_tool mvfreq_python
python=$(sed -n 's/^_Python3_EXECUTABLE:INTERNAL=//p' build/release/CMakeCache.txt)

work=$(mktemp -d)
mkdir "$work/small"
mount -t tmpfs -o size=4m tmpfs "$work/small"
# What the helpers of a stopped run still write must not keep the folder.
finish() {
    kill $(jobs -p) 2>/dev/null || true
    wait
    umount "$work/small"
    rm -rf "$work"
}
trap finish EXIT
trap 'exit 1' INT TERM

export PYTHONPATH=$root/build/release/python PYTHONDONTWRITEBYTECODE=1
jobs=()
for ((pair = 0; pair < ($(nproc) + 1) / 2; ++pair)); do
    "$python" "$here/program.py" build/release/tools/mvfreq "$work/small" "$minutes" "$pair" &
    jobs+=($!)
    "$python" "$here/module.py" "$work/small" "$minutes" "$pair" &
    jobs+=($!)
done
failed=0
for job in "${jobs[@]}"; do wait "$job" || failed=1; done
exit "$failed"
