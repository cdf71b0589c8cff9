#!/usr/bin/env python3
"""Fails when two of the given objects define the same function.

A linker keeps one of several functions of one name, whatever processor it was compiled for: paths
of different instruction sets may not share any.
"""
import collections
import subprocess
import sys


def functions(path):
    listing = subprocess.run(["nm", "--defined-only", "--extern-only", "-C", path], check=True,
                             capture_output=True, text=True).stdout
    found = {line.split(" ", 2)[2] for line in listing.splitlines() if line.split(" ", 2)[1] in "TW"}
    # Of 32-bit x86; nothing but the address that they were called from.
    return {function for function in found if not function.startswith("__x86.get_pc_thunk.")}


def main():
    owners = collections.defaultdict(list)
    for path in sys.argv[1:]:
        for function in functions(path):
            owners[function].append(path)
    shared = {function for function, paths in owners.items() if len(paths) > 1}
    for function in sorted(shared):
        print("shared:", function)
    if len(sys.argv) < 3:
        print("There is nothing to compare.")
    return 1 if shared or len(sys.argv) < 3 else 0


if __name__ == "__main__":
    sys.exit(main())
