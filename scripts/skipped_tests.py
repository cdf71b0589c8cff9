#!/usr/bin/env python3
"""Lists the tests that were skipped, each with its reason.

    skipped_tests.py REPORT    what ctest --output-junit wrote
"""
import re
import sys
import xml.etree.ElementTree as xml

# How GoogleTest and pytest give a reason; what other tests say at last is theirs.
REASONS = (r": Skipped\n(.+)", r"^SKIPPED \[\d+\] \S+ (.+)", r"(.+)\s*\Z")


def reason(output):
    found = (re.search(pattern, output, re.MULTILINE) for pattern in REASONS)
    return next((match[1].strip() for match in found if match), "no reason given")


def main():
    skipped = [case for case in xml.parse(sys.argv[1]).iter("testcase") if case.find("skipped") is not None]
    if skipped:
        print("\nSkipped:")
    for case in skipped:
        print(f"    {case.get('name')}: {reason(case.findtext('system-out') or '')}")


if __name__ == "__main__":
    main()
