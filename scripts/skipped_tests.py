#!/usr/bin/env python3
"""Lists the tests that were skipped, each with its reason.

    skipped_tests.py REPORT    what ctest --output-junit wrote
"""
import re
import sys
import xml.etree.ElementTree as xml

# How GoogleTest and pytest give a reason; what other tests say at last is theirs.
REASONS = (r": Skipped\n(.+)", r"^SKIPPED \[\d+\] \S+ (.+)", r"(.+)\s*\Z")

# In a program that ran many tests at once, and passed.
PLACES = re.compile(r"([^/\s]+:\d+): Skipped\n(.+)")


def reason(output):
    found = (re.search(pattern, output, re.MULTILINE) for pattern in REASONS)
    return next((match[1].strip() for match in found if match), "no reason given")


def lines(cases):
    for case in cases:
        output = case.findtext("system-out") or ""
        if case.find("skipped") is not None:
            yield f"{case.get('name')}: {reason(output)}"
        else:
            yield from (f"{case.get('name')}, {place}: {why}" for place, why in PLACES.findall(output))


def main():
    skipped = list(lines(xml.parse(sys.argv[1]).iter("testcase")))
    if skipped:
        print("\nSkipped:")
    for line in skipped:
        print(f"    {line}")


if __name__ == "__main__":
    main()
