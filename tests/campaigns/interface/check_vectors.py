#!/usr/bin/env python3
"""Fails when the path of four lanes is no vector code, or is where that would lose bits.

    check_vectors.py <objdump> <object of the baseline path>

Compilers lower vectors to single floats, without a word, where they see no instructions for them. Of
machines that it does not know it can say nothing, and exits with 77.
"""
import re
import subprocess
import sys

SKIPPED = 77

# By the formats of objdump: sums and products of four lanes.
X86 = r"v?(?:add|sub|mul)ps\s"
MACHINES = {
    "elf64-x86-64": X86,
    "elf32-i386": X86,
    "pe-x86-64": X86,
    "elf64-littleaarch64": r"f(?:add|sub|mul)\tv\d+\.4s",
    "elf64-powerpcle": r"xv(?:add|sub|mul)sp\s",
}

# The vector unit of 32-bit ARM takes denormals for zeros.
FORBIDDEN = {
    "elf32-littlearm": r"v(?:add|sub|mul|mla|mls)\.f32\t[dq]\d+",
}

# A few may be moves of pairs; the passes have thousands.
LEAST = 1000


def main():
    objdump, library = sys.argv[1:]
    code = subprocess.run([objdump, "-d", "--no-show-raw-insn", library], check=True,
                          capture_output=True, text=True).stdout
    machine = re.search(r"file format (\S+)", code)[1]
    if machine in FORBIDDEN:
        count = len(re.findall(FORBIDDEN[machine], code))
        print(f"{count} sums and products by a unit that takes denormals for zeros")
        return 1 if count else 0
    if machine not in MACHINES:
        print(f"skipped: the instructions of {machine} are not known")
        return SKIPPED
    count = len(re.findall(r"\t" + MACHINES[machine], code))
    print(f"{count} sums and products of vectors")
    return 0 if count >= LEAST else 1


if __name__ == "__main__":
    sys.exit(main())
