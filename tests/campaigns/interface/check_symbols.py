#!/usr/bin/env python3
"""Compares what a library exports, and what it needs, with what the tree says.

    check_symbols.py <library> <list>            fails when they differ
    check_symbols.py --update <library> <list>   writes the list

The list holds the functions that are exported, sorted: those of classes that stand in a source, and
all free ones. Left out is what compilers emit as they like: tables, type information, thunks and
inline members. No function of the standard library may be exported.
"""
import re
import subprocess
import sys

GENERATED = re.compile(r"^(vtable|VTT|typeinfo|construction vtable|guard variable|"
                       r"(non-)?virtual thunk|covariant return thunk)\b")
STANDARD_FUNCTION = re.compile(r"\b(std|__gnu_cxx)::")
INTERNAL = re.compile(r"\bmvi::")
STANDARD = re.compile(r"^(libstdc\+\+|libc\+\+|libm|libgcc_s|libc|libpthread|ld-linux.*)\.so")
SANITIZER = re.compile(r"^lib(asan|tsan|ubsan|clang_rt)|^libgcov")


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def exported(library):
    """Pairs of kind and readable name."""
    lines = output("nm", "-D", "--defined-only", "-C", library).splitlines()
    return [tuple(line.split(" ", 2)[1:]) for line in lines]


def is_member(name):
    return "::" in name.split("(")[0]


def listed(symbols):
    """The names that belong in the list."""
    return sorted({name for kind, name in symbols
                   if not GENERATED.match(name) and (kind == "T" or kind == "W" and not is_member(name))
                   and re.search(r"\bm[vf]", name)})


def needed(library):
    return re.findall(r"\(NEEDED\).*\[(.*)\]", output("readelf", "-d", library))


def problems(library, list_file):
    symbols = exported(library)
    names = set(listed(symbols))
    with open(list_file, encoding="ascii") as file:
        expected = set(file.read().splitlines())
    yield from (f"missing: {name}" for name in sorted(expected - names))
    yield from (f"not in the list: {name}" for name in sorted(names - expected))
    yield from (f"internal, but exported: {name}" for _, name in symbols
                if INTERNAL.search(name.split("(")[0]) and not GENERATED.match(name))
    yield from (f"of the standard library, but exported: {name}" for kind, name in symbols
                if kind in "TW" and STANDARD_FUNCTION.search(name.split("(")[0]))
    yield from (f"needs {name}" for name in needed(library)
                if not (STANDARD.match(name) or SANITIZER.match(name) or name.startswith("libmvbase.")))


def main():
    arguments = [a for a in sys.argv[1:] if a and not a.startswith("--")]
    library, list_file = arguments
    if "--update" in sys.argv:
        with open(list_file, "w", encoding="ascii") as file:
            file.writelines(name + "\n" for name in listed(exported(library)))
        return 0
    found = list(problems(library, list_file))
    print("\n".join(found) or "As listed.")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
