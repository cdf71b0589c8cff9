#!/usr/bin/env python3
"""Checks that tests stand where tests/README.md says: each in the folder of its source and named after
it, or listed there; and that every folder has its line."""
import pathlib
import re
import sys

TESTS = pathlib.Path(__file__).resolve().parents[1]
ROOT = TESTS.parent
SOURCES = ("vsys", "base", "filt", "tools")
ROW = re.compile(r"^\| `([\w/]+)/` \|[^|]*\|(.*)", re.MULTILINE)


def listed():
    """The names that each folder's line lists."""
    text = (TESTS / "README.md").read_text(encoding="utf-8")
    return {folder: set(re.findall(r"`(\w+)`", names)) for folder, names in ROW.findall(text)}


def unnamed(folder):
    """The tests of a folder of sources that no source there has the name of."""
    tests = {path.name.removesuffix("_test.cpp") for path in (TESTS / folder).glob("*_test.cpp")}
    return tests - {path.stem for path in (ROOT / folder).glob("*.*")}


def folders():
    """The folders that hold code, without those that hold a campaign's material."""
    for path in sorted(TESTS.rglob("*")):
        inside = path.relative_to(TESTS)
        depth = 2 if inside.parts[0] == "campaigns" else 4
        if path.is_dir() and len(inside.parts) <= depth and not path.name.startswith(("__", ".")):
            yield str(inside)


def main():
    lines = listed()
    faults = [f"{folder}/ has no line" for folder in folders() if folder not in lines]
    faults += [f"{folder}/ is no folder" for folder in lines if not (TESTS / folder).is_dir()]
    for folder in lines:
        found = unnamed(folder) if folder.startswith(SOURCES) else set()
        faults += [f"{folder}/{name} has no source and is not listed" for name in found - lines[folder]]
        faults += [f"{folder}/{name} is listed and has a source, or no test"
                   for name in lines[folder] - found]
    for fault in faults:
        print(f"tests/README.md: {fault}")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
