#!/usr/bin/env python3
"""Compares what a DLL exports, and what it needs, with what the tree says.

    check_dll.py <DLL> <list> [<objdump>]

The list is that of check_symbols.py. A DLL does not say which of its members are inline: those of the
list must be exported, and of other functions none that is free, internal or of the standard library. It
may need what every Windows has, and libmvbase.dll.
"""
import re
import subprocess
import sys

from check_symbols import GENERATED, INTERNAL, STANDARD_FUNCTION, is_member

WINDOWS = re.compile(r"^(kernel32|msvcrt|user32|libmvbase)\.dll$", re.IGNORECASE)


def output(*command, text=None):
    return subprocess.run(command, check=True, capture_output=True, text=True, input=text).stdout


def same_types(name):
    """Streams, and integers of 64 bits, under the names that they have elsewhere."""
    name = re.sub(r"std::basic_([io]stream)<char, std::char_traits<char> >", r"std::\1", name)
    return re.sub(r"\blong long\b", "long", re.sub(r"\b(\d+)ull\b", r"\1ul", name))


def exported(headers):
    table = headers.split("[Ordinal/Name Pointer] Table", 1)[-1].split("\n\n", 1)[0]
    names = re.findall(r"\b(_Z\w+)$", table, re.MULTILINE)
    readable = output("c++filt", text="\n".join(names)).splitlines()
    return {same_types(name) for name in readable if re.search(r"\bm[vf]", name)}


def problems(headers, expected):
    names = exported(headers)
    yield from (f"missing: {name}" for name in sorted(expected - names))
    for name in sorted(name for name in names - expected if not GENERATED.match(name)):
        function = name.split("(")[0]
        if not is_member(name):
            yield f"not in the list: {name}"
        elif INTERNAL.search(function) or STANDARD_FUNCTION.search(function):
            yield f"internal, but exported: {name}"
    yield from (f"needs {name}" for name in re.findall(r"DLL Name: (\S+)", headers)
                if not WINDOWS.match(name))


def main():
    library, list_file = sys.argv[1:3]
    objdump = sys.argv[3] if len(sys.argv) > 3 else "objdump"
    with open(list_file, encoding="ascii") as file:
        expected = set(file.read().splitlines())
    found = list(problems(output(objdump, "-p", library), expected))
    print("\n".join(found) or "As listed.")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
