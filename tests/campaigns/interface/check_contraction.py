#!/usr/bin/env python3
"""Fails when a library has instructions that multiply and add with one rounding.

    check_contraction.py <library>

Results would depend on the compiler and on the instruction set. The option against it stands in
cmake/options.cmake; g++ 12 vectorises some loops over pairs of floats to such instructions in spite
of it.
"""
import re
import subprocess
import sys

# x86: vfmadd231ps, vfmsubadd132ps ...; AArch64: fmadd, fmla, fmls ...
FUSED = re.compile(r"\t(v?fn?m(?:add|sub)\w*|fml[as]\w*)\s")


def main():
    code = subprocess.run(["objdump", "-d", "--no-show-raw-insn", sys.argv[1]], check=True,
                          capture_output=True, text=True).stdout
    function, found = "", set()
    for line in code.splitlines():
        if line.endswith(">:"):
            function = line.split("<", 1)[1][:-2]
        elif match := FUSED.search(line):
            found.add(f"{match[1]} in {function}")
    print("\n".join(sorted(found)) or "nothing is fused")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
