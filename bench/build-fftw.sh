#!/usr/bin/env bash
# Builds FFTW in single precision from Debian's source package, outside this tree: with all
# instruction sets in PREFIX, limited to SSE2 in PREFIX/sse2. Then configure the benchmarks with
# -DMVFREQ_BENCH_FFTW_ROOT=PREFIX.
set -euo pipefail

if (($# != 1)); then
    echo "usage: $0 PREFIX" >&2
    exit 2
fi
prefix=$(realpath -m "$1")
sources=$(mktemp -d)
trap 'rm -rf "$sources"' EXIT
cd "$sources"

# A package list of its own, so that the machine's stays as it is.
apt_root=$sources/apt
mkdir -p "$apt_root"/lists/partial "$apt_root"/cache/archives/partial
keyring=/usr/share/keyrings/debian-archive-keyring.gpg
release=$(. /etc/os-release && echo "$VERSION_CODENAME")
# From where the machine's packages come, there come their sources.
mirror=$(apt-get indextargets --format '$(SITE)' "Codename: $release" "Component: main" | sort -u)
echo "deb-src [signed-by=$keyring] $mirror $release main" >"$apt_root/sources.list"
apt() {
    apt-get -qq -o Dir::Etc::SourceList="$apt_root/sources.list" -o Dir::Etc::SourceParts=/dev/null \
        -o Dir::State::Lists="$apt_root/lists" -o Dir::Cache="$apt_root/cache" \
        -o APT::Sandbox::User=root "$@"
}
apt update
apt --download-only source fftw3
mkdir fftw
tar --extract --file fftw3_*.orig.tar.* --directory fftw --strip-components 1

#   build <prefix> <configure options>
build() {
    local to=$1
    shift
    mkdir "$sources/build"
    (
        cd "$sources/build"
        ../fftw/configure --quiet --prefix="$to" --enable-float --enable-shared --disable-static \
            --disable-doc --disable-fortran "$@" CFLAGS="-O3 -fomit-frame-pointer -fno-math-errno"
        make --quiet -j"$(nproc)"
        make --quiet install
    ) >"$sources/log" 2>&1 || { tail -20 "$sources/log" >&2; return 1; }
    rm -rf "$sources/build"
    echo "Built $to"
}

build "$prefix" --enable-sse2 --enable-avx2 --enable-avx512
build "$prefix/sse2" --enable-sse2
