#!/usr/bin/env bash
# Tries the ZIP for Windows under Wine: what the files need and export, the program on names of all kinds, a
# project of its own on the library.
#
#     scripts/test-windows.sh ZIP [PROGRAM]   the mvfreq of this machine, whose results must be the same
set -euo pipefail
if (($# < 1)); then sed -n '2,5s/^# \{0,1\}//p' "$0"; exit 2; fi
zip=$(realpath "$1")
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/install-dependencies.sh windows
tree=$PWD
native=$(realpath "${2:-build/release/tools/mvfreq}")

work=$(mktemp -d)
export WINEPREFIX=$work/wine WINEDEBUG=-all WINEDLLOVERRIDES='mscoree=;mshtml=' LC_ALL=C.UTF-8
wine=$(command -v wine64 || echo /usr/lib/wine/wine64)
finish() {
    wineserver -k 2>/dev/null || true   # of this folder alone
    rm -rf "$work"
}
trap finish EXIT

fail() { echo "FAILED: $*"; exit 1; }
say() { echo "-- $*"; }

home="$work/mit Leerzeichen, Ünïcödé 漢字"
mkdir "$home"
unzip -q "$zip" -d "$home"
root=$(echo "$home"/mvfreq-*)
run() { "$wine" "$root/bin/mvfreq.exe" "$@"; }

say "what the files need and export"
for file in "$root"/bin/*; do
    needs=$(x86_64-w64-mingw32-objdump -p "$file" | sed -n 's/.*DLL Name: //p')
    others=$(grep -viE '^(kernel32|msvcrt|shell32|user32|libmvfreq|libmvbase)\.dll$' <<<"$needs" || true)
    [[ -z $others ]] || fail "$(basename "$file") needs $others"
done

for library in mvfreq mvbase; do
    tests/campaigns/interface/check_dll.py "$root/bin/lib$library.dll" \
        "tests/campaigns/interface/lib$library.symbols" x86_64-w64-mingw32-objdump
done

mkdir "$work/play"
cd "$work/play"
cp "$tree"/examples/pictures/woven.png one.png
cp "$tree"/examples/pictures/printed.png 'zwei drei.png'
mkdir 'Ordner – 目录'
cp one.png 'Ordner – 目录/Äpfel 苹果.png'
ring=(bandpass --frequency 0.03 --sigma 0.012)

say "the same bytes as here"
"$native" "${ring[@]}" --save native.mva one.png native.png
run "${ring[@]}" --save windows.mva one.png windows.png
cmp native.png windows.png || fail "pictures differ"
cmp native.mva windows.mva || fail "archives differ"
for kind in tif pgm ppm; do
    "$native" "${ring[@]}" one.png native.$kind
    run "${ring[@]}" one.png windows.$kind
    cmp native.$kind windows.$kind || fail "$kind differs"
done

say "backslashes, spaces, other alphabets"
run "${ring[@]}" 'Ordner – 目录\Äpfel 苹果.png' 'Ordner – 目录\Ergebnis ñ.png'
cmp native.png 'Ordner – 目录/Ergebnis ñ.png' || fail "result of another alphabet"
run "${ring[@]}" 'zwei drei.png' '.\mit Leerzeichen.png'
[[ -s 'mit Leerzeichen.png' ]] || fail "spaces"

say "patterns, --out-dir"
run "${ring[@]}" --out-dir 'neu\tief' 'one.p?g' 'Ordner – 目录\Ä*.png'
cmp native.png neu/tief/one.png || fail "--out-dir"
cmp native.png 'neu/tief/Äpfel 苹果.png' || fail "pattern in a folder"
! run "${ring[@]}" --out-dir neu 'none*.png' 2>err || fail "a pattern without files"
grep --quiet 'none\*\.png' err || fail "message of a pattern without files: $(cat err)"

say "standard input and output"
run "${ring[@]}" - - <one.png >piped.png
cmp native.png piped.png || fail "pipe"
run info - <native.mva >windows.txt
"$native" info - <native.mva >native.txt
cmp native.txt windows.txt || fail "info"
grep --quiet bandpass <(run --help) || fail "--help"

say "replacing files"
run "${ring[@]}" one.png windows.png            # its own may be replaced
cp one.png foreign.png
! run "${ring[@]}" 'zwei drei.png' foreign.png 2>err || fail "replaced a foreign file"
cmp one.png foreign.png || fail "a foreign file changed"
run "${ring[@]}" --force one.png FOREIGN.PNG
! run "${ring[@]}" foreign.png FoReIgN.png 2>err || fail "an input under another case was replaced"
grep --quiet 'is an input of this call' err || fail "$(cat err)"
[[ -z $(find . -name '*.tmp') ]] || fail "temporary files were left"

say "what is wrong"
! run "${ring[@]}" missing.png out.png 2>err || fail "missing file"
grep --quiet 'missing.png: No such file' err || fail "message: $(cat err)"
! run "${ring[@]}" . out.png 2>err || fail "a folder as picture"
grep --quiet 'Is a directory' err || fail "message: $(cat err)"

say "a stop"
cp "$tree"/examples/pictures/printed.png a.png
for i in $(seq 300); do cp a.png "many$i.png"; done
run "${ring[@]}" a.png whole.png
"$wine" "$root/bin/mvfreq.exe" "${ring[@]}" --jobs 1 --out-dir stopped 'many*.png' 2>err &
process=$!
for i in $(seq 600); do [[ -z $(ls stopped 2>/dev/null) ]] || break; sleep 0.1; done
kill -INT $process
code=0
wait $process || code=$?
[[ -z $(find . -name '*.tmp') ]] || fail "a stopped run left temporary files"
((code == 130)) || fail "a stopped run ended with $code"
((made = $(find stopped -name '*.png' | wc -l))) && ((made < 300)) || fail "$made of 300 were made"
for file in stopped/*.png; do cmp "$file" whole.png || fail "$file is not whole"; done

say "a project on the library"
for from in cmake pkg-config; do
    mkdir "$work/$from"
    if [[ $from == cmake ]]; then
        cmake -S "$tree/tests/campaigns/consumer/project" -B "$work/$from" -G Ninja \
            -DCMAKE_TOOLCHAIN_FILE="$tree/cmake/toolchains/mingw64.cmake" \
            -DMVFREQ_WINDOWS_LIBRARIES="$root" >"$work/log" || fail "$(cat "$work/log")"
        cmake --build "$work/$from" >"$work/log" || fail "$(cat "$work/log")"
    else
        export PKG_CONFIG_LIBDIR=$root/lib/pkgconfig
        for program in inspect restore; do
            eval x86_64-w64-mingw32-g++-posix -std=c++20 -Wall -Wextra -Werror \
                '"$tree/tests/campaigns/consumer/project/$program.cpp"' -o '"$work/$from/$program.exe"' \
                "$(pkg-config --cflags --libs mvfreq)"
        done
        # Here the program has the compiler's run time beside it.
        for dll in libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll; do
            cp "$(x86_64-w64-mingw32-g++-posix -print-file-name=$dll)" "$work/$from"
        done
    fi
    cp "$root"/bin/*.dll "$work/$from"
    "$wine" "$work/$from/inspect.exe" recipe.mva
    "$wine" "$work/$from/restore.exe" recipe.mva
done
echo "All is well."
