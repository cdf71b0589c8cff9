#!/usr/bin/env bash
# Installs the Debian packages that are missing: those for building and testing, and with the
# argument "ci" also those for the checks of .ci/run.
set -euo pipefail

packages=(cmake ninja-build g++ libcli11-dev libpng-dev libgtest-dev)
if [[ ${1:-} == ci ]]; then packages+=(git clang clang-format pkgconf); fi

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
get() { "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq "$@" </dev/null; }
install() { get install --no-install-recommends -o Dpkg::Use-Pty=0 -y "${missing[@]}"; }

echo "Installing ${missing[*]}"
# The package lists are fetched only when those that are there do not do.
install >/dev/null 2>&1 || { get update && install >/dev/null; }
