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
    """The folders that hold files, without those of a campaign's material."""
    inside = {path.parent.relative_to(TESTS) for path in TESTS.rglob("*.*") if path.is_file()}
    for folder in sorted(inside):
        material = folder.parts[:1] == ("campaigns",) and len(folder.parts) > 2
        if folder.parts and not material and folder.name != "__pycache__":
            yield str(folder)


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
