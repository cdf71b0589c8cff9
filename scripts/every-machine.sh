#!/usr/bin/env bash
# Asks every machine that this one can stand for, one line each: the digests of all compilers, levels
# and processors, the tests for Windows and for WebAssembly, the ZIP for Windows under Wine, the
# explorer in a browser, the packages in a new Debian. All of them take hours; one takes minutes. Fails
# when one of them does. What has been said is kept in build/every-machine, the lines in its file lines.
#
#     scripts/every-machine.sh            all of them; the packages ask for root
#     scripts/every-machine.sh wasm       those whose name has this in it
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

wanted=${1:-}
failed=0
logs=build/every-machine
mkdir -p "$logs"
: >"$logs/lines"

# A script that has a line for each of its machines, and takes the same word.
askAll() { "$@" "$wanted" | tee -a "$logs/lines" || failed=1; }

# ask <name> <command>: one line, and the end of what it said when it fails
ask() {
    local begin=$SECONDS verdict=passed log="$logs/${1// /-}.log"
    if [[ $1 != *$wanted* ]]; then return; fi
    "${@:2}" >"$log" 2>&1 || verdict=FAILED
    printf '%-46s %-9s %4d s\n' "$1" "$verdict" $((SECONDS - begin)) | tee -a "$logs/lines"
    if [[ $verdict == FAILED ]]; then
        tail -n 50 "$log"
        failed=1
    fi
}

tryWindowsZip() {
    cmake --preset release &&
        cmake --build --preset release --target mvfreq_tool &&
        rm -f "$logs"/mvfreq-*.zip &&
        scripts/make-windows-zip.sh "$logs" &&
        scripts/test-windows.sh "$logs"/mvfreq-*.zip
}

askAll scripts/digests.sh
askAll scripts/test-machines.sh
ask "windows ZIP" tryWindowsZip
ask "explorer in Chromium" scripts/test-explorer.sh
ask "Debian packages" scripts/test-packages.sh

if [[ ! -s $logs/lines ]]; then
    echo "No name has '$wanted' in it." >&2
    exit 2
fi
exit "$failed"
