#!/usr/bin/env bash
# Unpacks the newest source package of that name that this machine's package sources have, unless it is
# there already, and says in which folder it lies.
#
#     scripts/fetch-source.sh FOLDER PACKAGE
set -euo pipefail
if (($# != 2)); then sed -n '2,5s/^# \{0,1\}//p' "$0"; exit 2; fi
mkdir -p "$1"
folder=$(realpath "$1")
package=$2
cd "$folder"

sayWhere() { find "$folder/$package" -mindepth 1 -maxdepth 1 -type d; }
if [[ -d $package ]]; then
    sayWhere
    exit
fi

# Lists of source packages, in a state of their own.
mkdir -p apt/lists/partial
for file in /etc/apt/sources.list /etc/apt/sources.list.d/debian*; do
    if [[ ! -f $file ]]; then continue; fi
    sed 's/^Types: deb$/Types: deb-src/; s/^deb /deb-src /' "$file" >"apt/$(basename "$file")"
done
as_sources=(-qq -o Dir::Etc::sourcelist=/dev/null -o Dir::Etc::sourceparts="$folder/apt"
    -o Dir::State::lists="$folder/apt/lists" -o APT::Sandbox::User=root)
apt-get "${as_sources[@]}" update >&2

# Not every mirror has all that its list names. What is not whole has another name.
for version in $(apt-cache "${as_sources[@]}" showsrc "$package" | sed -n 's/^Version: //p' | sort -urV); do
    rm -rf partial
    mkdir partial
    if (cd partial && apt-get "${as_sources[@]}" source "$package=$version" >/dev/null); then
        mv partial "$package"
        sayWhere
        exit
    fi
done
rm -rf partial
echo "There is no source package $package." >&2
exit 1
