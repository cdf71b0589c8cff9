#!/usr/bin/env python3
"""Checks what documents say of the tree.

    check_layout.py tests     tests stand where tests/README.md says: each in the folder of its source and
                              named after it, or listed there; every folder has its line
    check_layout.py sources   docs/ARCHITECTURE.md lists the sources of the libraries, no more and no fewer
    check_layout.py arrows    includes follow its arrows, and go round in no circle in tools and python
"""
import pathlib
import re
import sys

TESTS = pathlib.Path(__file__).resolve().parents[1]
ROOT = TESTS.parent
LIBRARIES = ("vsys", "base", "filt", "internal", "suggest")
SOURCES = ("vsys", "base", "filt", "suggest", "tools", "explorer")
# What the files of a folder may include of the libraries; the first row that fits counts. A single
# header names what filt uses of base and vsys, and what stands outside sees no internal header.
ARROWS = (
    ("vsys/", r"vsys/"),
    ("base/", r"vsys/|base/|internal/"),
    ("filt/platform.h", r"vsys/|base/"),
    ("filt/fft", r"filt/(fft|internal)/|filt/(export|platform)\.h|internal/"),
    ("filt/", r"filt/|internal/"),
    ("suggest/", r"suggest/|(?!.*internal/)(vsys|base|filt)/"),
    ("tools/|explorer/|python/|examples/", r"(?!.*internal/)(vsys|base|filt|suggest)/"),
)
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


def includes(top):
    """Pairs of a file and what it includes, both as paths from the root."""
    for path in sorted((ROOT / top).rglob("*.*")):
        if path.suffix in (".h", ".cpp"):
            for name in re.findall(r'^#include ["<](.*)[">]', path.read_text(encoding="utf-8"), re.MULTILINE):
                target = next((t for t in (path.parent / name, ROOT / name) if t.is_file()), None)
                if target:
                    yield str(path.relative_to(ROOT)), str(target.resolve().relative_to(ROOT))


def circles(top):
    """Pairs of sources, each with its header, that need each other by whatever way."""
    needs = {}
    for path, target in includes(top):
        needs.setdefault(path.rsplit(".", 1)[0], set()).add(target.rsplit(".", 1)[0])

    def reach(source, seen):
        for other in needs.get(source, set()) - seen - {source}:
            seen.add(other)
            reach(other, seen)
        return seen

    reached = {source: reach(source, set()) for source in needs}
    return [(a, b) for a in reached for b in reached[a] if a < b and a in reached.get(b, ())]


def arrow_faults():
    for top in ("vsys", "base", "filt", "suggest", "tools", "python", "examples"):
        for path, target in includes(top):
            allowed = next(rule for start, rule in ARROWS if re.match(start, path))
            own = target.startswith(top + "/") and top not in LIBRARIES
            if re.match("(vsys|base|filt|internal|suggest)/", target) and not own and not re.match(allowed, target):
                yield f"{path} includes {target}"
    for top in ("tools", "python"):
        yield from (f"{a} and {b} need each other" for a, b in circles(top))


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
                       "sources": ("docs/ARCHITECTURE.md", source_faults),
                       "arrows": ("docs/ARCHITECTURE.md", arrow_faults)}[sys.argv[1]]
    faults = list(check())
    for fault in faults:
        print(f"{document}: {fault}")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
