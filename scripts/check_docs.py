#!/usr/bin/env python3
"""Checks the Markdown files: no link, anchor or picture is dead, no picture is left over, quoted code
is what its file holds, and all pictures together stay small."""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
PICTURES = ("docs/images", "examples/pictures")
MOST_BYTES = 4_000_000

CODE = re.compile(r"^```.*?^```", re.MULTILINE | re.DOTALL)
LINK = re.compile(r"\]\(([^)\s]+)\)|\b(?:src|href)=\"([^\"]+)\"")
HEADING = re.compile(r"^#+ +(.*)$", re.MULTILINE)
QUOTE = re.compile(r"^<!-- from (\S+) -->\n```\w*\n(.*?)^```", re.MULTILINE | re.DOTALL)


def documents():
    for path in sorted(ROOT.rglob("*.md")):
        inside = path.relative_to(ROOT).parts[:-1]
        if not any(part.startswith((".", "build", "out")) for part in inside):
            yield path


def anchors(path):
    """The anchors of the headings, as the usual forges make them."""
    text = CODE.sub("", path.read_text(encoding="utf-8"))
    plain = (re.sub(r"[^\w\- ]", "", heading.lower()) for heading in HEADING.findall(text))
    return {heading.strip().replace(" ", "-") for heading in plain}


def faults_of_links(path, used):
    text = re.sub(r"`[^`\n]*`", "", CODE.sub("", path.read_text(encoding="utf-8")))
    for groups in LINK.findall(text):
        target = "".join(groups)
        if re.match(r"\w+:", target):
            continue
        file, _, anchor = target.partition("#")
        found = (path.parent / file).resolve() if file else path
        used.add(found)
        if not found.exists():
            yield f"{target} is dead"
        elif anchor and anchor not in anchors(found):
            yield f"{target} has no such heading"


def faults_of_quotes(path):
    for file, code in QUOTE.findall(path.read_text(encoding="utf-8")):
        if code not in (ROOT / file).read_text(encoding="utf-8"):
            yield f"the quoted code is not that of {file}"


def main():
    used, faults = set(), []
    for path in documents():
        name = path.relative_to(ROOT)
        faults += [f"{name}: {fault}" for fault in faults_of_links(path, used)]
        faults += [f"{name}: {fault}" for fault in faults_of_quotes(path)]
    pictures = [path for folder in PICTURES for path in sorted((ROOT / folder).glob("*.png"))]
    faults += [f"{path.relative_to(ROOT)}: no document shows it" for path in pictures
               if path not in used]
    size = sum(path.stat().st_size for path in pictures)
    if size > MOST_BYTES:
        faults.append(f"the pictures take {size} bytes, more than {MOST_BYTES}")
    print("\n".join(faults) or f"All links live; {len(pictures)} pictures of {size} bytes.")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
