#!/usr/bin/env bash
# Tries the Debian packages as a user would, by hand and as root: builds them twice in different
# folders and compares the bytes, asks lintian, and installs and uses them in a new Debian.
#   test-packages.sh [FOLDER]    FOLDER holds packages that are built already: does not build twice
# What is committed is what is tested. It takes about 1 GB below /var/tmp and, on two cores, ten
# minutes.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
suite=bookworm
# From where the machine's own packages come.
mirror=$(apt-get indextargets --format '$(SITE)' "Codename: $suite" "Component: main" | sort -u)
work=$(mktemp -d -p /var/tmp)
trap 'rm -rf --one-file-system "$work"' EXIT
root=$work/root

say() { echo "=== $*"; }
inside() { chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"; }
install() { inside apt-get -qq -y --no-install-recommends -o Dpkg::Use-Pty=0 install "$@" >"$work/log" 2>&1 || { cat "$work/log"; exit 1; }; }

# build FOLDER PACKAGES: from a clone of its own
build() {
    git clone --quiet . "$1"
    "$1/scripts/make-packages.sh" "$2" >"$work/log" 2>&1 || { tail -n 30 "$work/log"; exit 1; }
}

if [[ $# == 1 ]]; then
    packages=$(cd "$1" && pwd)
else
    say "two builds in different folders have the same bytes"
    packages=$work/packages
    build "$work/here" "$packages"
    build "$work/quite/elsewhere" "$work/again"
    (cd "$packages" && sha256sum -- *.deb) | tee "$work/sums"
    (cd "$work/again" && sha256sum --check --strict --quiet "$work/sums")
fi

say "lintian finds no errors"
lintian --allow-root --fail-on error "$packages"/*.deb

say "a new Debian $suite"
debootstrap --variant=minbase "$suite" "$root" "$mirror" >"$work/log" 2>&1 || { tail "$work/log"; exit 1; }
mkdir "$root/packages" && cp "$packages"/*.deb "$root/packages"
inside apt-get -qq update
mkdir "$root/try" && cp -r examples/pictures tests/campaigns/consumer/project "$root/try"
# The new Debian has nothing that makes such a file.
/usr/bin/python3 -c 'import sys; from PIL import Image; Image.open(sys.argv[1]).save(sys.argv[2])' \
    examples/pictures/printed.png "$root/try/photograph.jpg"

# given NAME...: the package files of these names, as seen inside
given() { for name in "$@"; do basename -a "$packages/${name}"_*.deb | sed 's|^|/packages/|'; done; }

say "the program"
install $(given libmvfreq1 mvfreq)
inside sh -ec 'cd /try
    mvfreq --version
    mvfreq bandpass --frequency 0.03 --sigma 0.012 --dc-radius 1 --rescale pictures/woven*.png --out-dir results/
    mvfreq gabor --frequency 0.143 --sigma 0.01 --save weave.mva pictures/woven.png weave.png
    mvfreq view --axes weave.mva response.png
    test -s response.png && ls results
    if test -f /usr/share/mvfreq/explorer.html; then test -s "$(mvfreq explore pictures/woven.png)"; fi
    mvfreq bandreject --frequency 0.24 --sigma 0.02 --plateau 0.05 pictures/printed.png tone.tif
    mvfreq info tone.tif | grep --quiet "TIFF picture"
    mvfreq bandreject --frequency 0.24 --sigma 0.02 photograph.jpg photograph.tif
    mvfreq suggest --radius 6 pictures/woven.png
    mvfreq peaks pictures/disturbed.png
    test -f /usr/share/bash-completion/completions/mvfreq
    test -f /usr/share/man/man1/mvfreq.1.gz || grep --quiet man /etc/dpkg/dpkg.cfg.d/* 2>/dev/null'
cmp "$root/try/results/woven.png" docs/images/woven-defects.png

say "the library: CMake, pkg-config, only a compiler"
install $(given libmvfreq-dev) g++ cmake make pkgconf
inside sh -ec 'cd /try
    cmake -S project -B build >/dev/null && cmake --build build >/dev/null
    build/inspect recipe.mva && build/restore recipe.mva
    g++ -std=c++20 project/inspect.cpp -o inspect $(pkg-config --cflags --libs mvfreq) && ./inspect recipe.mva
    g++ -std=c++20 -I /usr/include/mvfreq project/restore.cpp -o restore -lmvfreq -lmvbase && ./restore recipe.mva'

if [[ -n $(compgen -G "$packages/python3-mvfreq_*.deb") ]]; then
    say "the Python module"
    install $(given python3-mvfreq)
    inside python3 -c 'import mvfreq, numpy
image = numpy.full((30, 50), 100, numpy.uint8)
spectrum = mvfreq.forward_fft(image)
print("mvfreq", mvfreq.__version__, "for Python:", spectrum.width, "x", spectrum.height)
print("waves:", len(mvfreq.peaks(numpy.tile(numpy.arange(64, dtype=numpy.uint8) % 8 * 30, (64, 1)))))'
fi

say "no newer glibc than the documents say"
# needs WHAT FILE...: the newest version whose symbols the files name is that of the table
needs() {
    local newest
    newest=$(readelf --wide --version-info "${@:2}" | grep -o 'GLIBC_[0-9.]*' | sort --version-sort | tail -n 1)
    echo "$1: ${newest#GLIBC_}"
    grep --quiet "^| $1 | ${newest#GLIBC_} |$" docs/guide.md || { echo "docs/guide.md says otherwise"; exit 1; }
}
needs "the libraries" "$root"/usr/lib/*/libmv{base,freq}.so.1
needs "the program" "$root/usr/bin/mvfreq"
if [[ -n $(compgen -G "$packages/python3-mvfreq_*.deb") ]]; then
    needs "the Python module" "$root"/usr/lib/python3/dist-packages/mvfreq/*.so
fi

say "the documents"
install $(given mvfreq-doc) libpng-dev python3-pil
inside bash -ec 'cd /usr/share/doc/mvfreq-doc && ls
    g++ -std=c++20 examples/texture_removal.cpp examples/{picture,program,spots}.cpp \
        $(pkg-config --cflags --libs mvfreq libpng) -o /try/texture_removal
    /try/texture_removal examples/pictures/woven.png /try/defects.png'
if [[ -n $(compgen -G "$packages/python3-mvfreq_*.deb") ]]; then
    inside python3 /usr/share/doc/mvfreq-doc/python/examples/tutorial.py /try/tutorial
    test -s "$root/try/tutorial/1-before-and-after.png"
fi

say "everything can be removed"
inside apt-get -qq -y -o Dpkg::Use-Pty=0 purge '?name(mvfreq)' >"$work/log" 2>&1 || { cat "$work/log"; exit 1; }
if inside dpkg-query --show '*mvfreq*' 2>/dev/null | grep .; then echo "still known"; exit 1; fi
if inside find /usr -path '*mvfreq*' | grep .; then echo "left behind"; exit 1; fi
say "passed"
