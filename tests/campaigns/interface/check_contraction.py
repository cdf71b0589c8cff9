#!/usr/bin/env python3
"""Fails when machine code has instructions that multiply and add with one rounding.

    check_contraction.py <library or program> [<objdump>]

Results would depend on the compiler and on the instruction set. internal/product.h says what is done
against it. Of machines that it does not know it can say nothing, and exits with 77.
"""
import re
import subprocess
import sys

SKIPPED = 77

# vfmadd231ps, vfnmsub132sd, vfmaddsub213ps, FMA4's vfmaddps; mulps, vmulsd
X86 = (r"v4?fn?m(?:add|sub)\w+", r"v?mul[ps][sd]")

# By the formats of objdump: the instructions that fuse, and those of plain products.
MACHINES = {
    "elf64-x86-64": X86,
    "elf32-i386": X86,
    "pei-x86-64": X86,
    # fmadd, fnmsub; fmla, fmls, fmlal; SVE's fmad, fmsb, fnmla; fcmla of complex numbers; fmul
    "elf64-littleaarch64": (r"fn?m(?:add|sub|la|ls|ad|sb)\w*|fcmla", r"fmul"),
    # vfma, vfnms, also under conditions; vmla rounds its product
    "elf32-littlearm": (r"vfn?m[as]\w{0,2}\.f\d+", r"vn?m(?:ul|la|ls)\w{0,2}\.f\d+"),
    # fmadd.s, fnmsub.d
    "elf64-littleriscv": (r"fn?m(?:add|sub)\.[sdhq]", r"fmul\.[sd]"),
    # fmadds, fnmsub.; xvmaddasp, xsnmsubmdp; vmaddfp
    "elf64-powerpcle": (r"fn?m(?:add|sub)s?\.?|x[sv]n?m(?:add|sub)[am][sdq]p|vn?m(?:add|sub)fp",
                        r"fmuls?|x[sv]mul[sd]p"),
    # maebr, msdb; vfmasb, wfnmsdb; meebr, wfmsb, which multiplies
    "elf64-s390": (r"m[as][ed]b?r?|[vw]fn?m[as](?:[sdx]b)?", r"m(?:ee|d)br?|[vw]fm[sd]b"),
}


def fused(lines, instructions):
    """The instructions that fuse, each with its function."""
    function, found = "", set()
    for line in lines:
        if line.endswith(">:"):
            function = line.split("<", 1)[1][:-2]
        elif match := instructions.search(line):
            found.add(f"{match[1]} in {function}")
    return found


def main():
    objdump = sys.argv[2] if len(sys.argv) > 2 else "objdump"
    code = subprocess.run([objdump, "-d", "--no-show-raw-insn", sys.argv[1]], check=True,
                          capture_output=True, text=True).stdout
    machine = re.search(r"file format (\S+)", code)[1]
    if machine not in MACHINES:
        print(f"skipped: the instructions of {machine} are not known")
        return SKIPPED
    of_sums, of_products = (re.compile(rf"\t({pattern})\s") for pattern in MACHINES[machine])
    lines = code.splitlines()
    if not any(map(of_products.search, lines)):
        print("no product was found: this is not the code that was meant")
        return 1
    found = fused(lines, of_sums)
    print("\n".join(sorted(found)) or "nothing is fused")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
