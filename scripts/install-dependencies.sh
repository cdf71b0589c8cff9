#!/usr/bin/env bash
# Installs the Debian packages that are missing: those for building and testing, and those of the
# groups that are named.
#
#     package  for scripts/make-packages.sh and scripts/test-packages.sh
#     ci       for the checks of .ci/run
#     checks   for the longer checks: other machines, coverage, static analysis, the interface
#     fuzz     for the fuzz targets
#     explorer for the explorer and its tests in a browser
#     windows  for the ZIP for Windows and its tests under Wine
set -euo pipefail

packages=(cmake make ninja-build pkgconf g++ libcli11-dev libpng-dev libjpeg62-turbo-dev libtiff-dev
    libgtest-dev pybind11-dev python3-dev python3-numpy python3-pil python3-pytest)
for group in "$@"; do
    case $group in
    ci) packages+=(git clang clang-format clang-tidy cppcheck doxygen libopencv-core-dev
        python3-dask python3-distributed) ;;
    package) packages+=(git dpkg-dev doxygen lintian debootstrap) ;;
    checks) packages+=(clang g++-aarch64-linux-gnu g++-s390x-linux-gnu g++-riscv64-linux-gnu
        g++-powerpc64le-linux-gnu g++-arm-linux-gnueabihf g++-i686-linux-gnu qemu-user
        g++-mingw-w64-x86-64 wine64 gcovr clang-19 llvm-19 libclang-rt-19-dev abigail-tools ccache
        emscripten node-acorn nodejs googletest valgrind dpkg-dev g++-11 clang-16 libc++-19-dev
        libc++abi-19-dev) ;;
    fuzz) packages+=(clang libclang-rt-dev patch zlib1g-dev) ;;
    explorer) packages+=(emscripten node-acorn nodejs chromium chromium-driver python3-selenium
        optipng fonts-liberation) ;;
    windows) packages+=(git dpkg-dev g++-mingw-w64-x86-64 libz-mingw-w64-dev wine64 pkgconf
        unzip) ;;
    *) echo "There is no group $group." >&2; exit 1 ;;
    esac
done

installed() { [[ $(dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>/dev/null) == installed ]]; }

missing=()
for package in "${packages[@]}"; do
    installed "$package" || missing+=("$package")
done
if ((${#missing[@]} == 0)); then exit 0; fi

if ! command -v apt-get >/dev/null; then
    echo "This machine has no apt-get. Install what these Debian packages hold: ${missing[*]}" >&2
    exit 1
fi

as_root=()
if ((EUID != 0)); then as_root=(sudo); fi
# What apt-get says with descriptor 3 is the output. What the packages print as they are installed goes
# nowhere, but can be printed: some fail if not. sudo keeps no descriptor but the usual ones open.
get() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 \
        sh -c 'exec apt-get -qq "$@" 3>&1 >/dev/null' sh "$@" </dev/null
}

# A line for each tenth that apt-get has fetched and installed; its own lines are left out.
progress() {
    local line step said=
    while read -r line; do
        [[ $line =~ ^(dl|pm)status:.*:([0-9]*)[0-9](\.[0-9]+)?: ]] || continue
        step=$((10 * ${BASH_REMATCH[2]:-0}))
        case ${BASH_REMATCH[1]} in dl) step="fetched $step %" ;; pm) step="installed $step %" ;; esac
        [[ $step == "$said" ]] || echo "    $step"
        said=$step
    done
}
install() {
    get install --no-install-recommends -o Dpkg::Use-Pty=0 -o APT::Status-Fd=3 -y "${missing[@]}" | progress
}

echo "Installing ${missing[*]}"
# The package lists are fetched only when those that are there do not do.
if ! install 2>/dev/null; then
    echo "    fetching the lists of packages"
    get update
    install
fi
