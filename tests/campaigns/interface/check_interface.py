#!/usr/bin/env python3
"""Compares the binary interface of a library with the dump that the tree keeps: functions, layouts
of classes, tables of virtual functions.

    check_interface.py <library> <dump>            fails when they differ, and says where
    check_interface.py --update <library> <dump>   writes the dump

Additions are left to the lists of symbols: what an unoptimised build exports besides is no concern.
A dump is what abidw of libabigail writes, compressed. Without that tool, or for a library without
debug information, the exit code is 77: nothing was compared.
"""
import lzma
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

HERE = Path(__file__).resolve().parent
ROOT = HERE.parents[2]
SKIPPED = 77
OUTSIDE = ["--suppressions", HERE / "outside.abignore"]


def dump(library, file):
    folders = [word for name in ("vsys", "base", "filt") for word in ("--headers-dir", ROOT / name)]
    subprocess.run(["abidw", "--exported-interfaces-only", "--drop-private-types",
                    "--drop-undefined-syms", "--no-show-locs", "--no-corpus-path",
                    "--no-comp-dir-path", "--type-id-style", "hash", *OUTSIDE, *folders,
                    "--out-file", file, library], check=True)


def has_debug_information(library):
    sections = subprocess.run(["readelf", "-SW", library], check=True, capture_output=True, text=True)
    return ".debug_info" in sections.stdout


def main():
    library, kept = [Path(argument) for argument in sys.argv[1:] if not argument.startswith("--")]
    if not shutil.which("abidw") or not shutil.which("abidiff"):
        print("libabigail's tools are missing.")
        return SKIPPED
    if not has_debug_information(library):
        print("The library has no debug information.")
        return SKIPPED
    with tempfile.TemporaryDirectory() as folder:
        now, then = Path(folder) / "now.abi", Path(folder) / "then.abi"
        dump(library, now)
        if "--update" in sys.argv:
            kept.write_bytes(lzma.compress(now.read_bytes(), preset=9))
            return 0
        then.write_bytes(lzma.decompress(kept.read_bytes()))
        return subprocess.run(["abidiff", "--no-added-syms", *OUTSIDE, then, now], check=False).returncode


if __name__ == "__main__":
    sys.exit(main())
