#!/usr/bin/env python3
"""Checks what documents say of the tree.

    check_layout.py tests     tests stand where tests/README.md says: each in the folder of its source and
                              named after it, or listed there; every folder has its line
    check_layout.py sources   docs/ARCHITECTURE.md lists the sources of the libraries, no more and no fewer
"""
import pathlib
import re
import sys

TESTS = pathlib.Path(__file__).resolve().parents[1]
ROOT = TESTS.parent
LIBRARIES = ("vsys", "base", "filt", "internal")
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


def described():
    """The names that the tables of the tree list below each folder's heading."""
    text = (ROOT / "docs/ARCHITECTURE.md").read_text(encoding="utf-8")
    parts = re.split(r"^### `([\w/]+)/`$", text, flags=re.MULTILINE)
    rows = [re.findall(r"^\| (`.*?`) \|", part.split("\n## ")[0], re.MULTILINE) for part in parts[2::2]]
    return {folder: [name for row in found for name in re.findall(r"`(\w+)`", row)]
            for folder, found in zip(parts[1::2], rows)}


def source_faults():
    sources = {}
    for path in (path for top in LIBRARIES for path in (ROOT / top).rglob("*.*")):
        if path.suffix in (".h", ".cpp"):
            sources.setdefault(str(path.parent.relative_to(ROOT)), set()).add(path.stem)
    tables = described()
    for folder in sorted(sources.keys() | tables.keys()):
        found, names = sources.get(folder, set()), tables.get(folder, [])
        yield from (f"{folder}/{name} is not listed" for name in sorted(found - set(names)))
        yield from (f"{folder}/{name} is no source" for name in names if name not in found)
        yield from (f"{folder}/{name} is listed twice" for name in set(names) if names.count(name) > 1)


def test_faults():
    lines = listed()
    yield from (f"{folder}/ has no line" for folder in folders() if folder not in lines)
    yield from (f"{folder}/ is no folder" for folder in lines if not (TESTS / folder).is_dir())
    for folder in lines:
        found = unnamed(folder) if folder.startswith(SOURCES) else set()
        yield from (f"{folder}/{name} has no source and is not listed" for name in found - lines[folder])
        yield from (f"{folder}/{name} is listed and has a source, or no test"
                    for name in lines[folder] - found)


def main():
    document, check = {"tests": ("tests/README.md", test_faults),
                       "sources": ("docs/ARCHITECTURE.md", source_faults)}[sys.argv[1]]
    faults = list(check())
    for fault in faults:
        print(f"{document}: {fault}")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
