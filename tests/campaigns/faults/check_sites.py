#!/usr/bin/env python3
"""Checks whether each place where the libraries allocate was made to fail.

    check_sites.py <faults_test> <object files of the libraries>

Every call of an allocating function in the machine code of the libraries' functions is a place. The
test program lists those that it made fail.
"""
import os
import re
import subprocess
import sys
import tempfile

ALLOCATING = re.compile(r"\b(?:call|jmp) .*<(_Zn[wa]m\w*|__wrap_(?:malloc|calloc|realloc|aligned_alloc))"
                        r"(?:@plt)?>")
INSTRUCTION = re.compile(r"^ *([0-9a-f]+):\t(.*)")
FUNCTION = re.compile(r"^[0-9a-f]+ <(.*)>:$")

# Allocations that happen once, before a test can begin.
BEFORE_MAIN = re.compile(r"_GLOBAL__sub_I_|__static_initialization_and_destruction")

# Places that no fault can reach, and why. One place of each such function may be missing.
UNREACHABLE = {
    r"mvi::DcSquare::save|_M_realloc_insert<mvPair<double>": "the list was given its room before",
    r"mvi::.*fadingWeights": "the list was given its room before",
    r"std::vector<float, .*::_M_fill_insert": "the list was given its room before",
}


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def functions_of(objects):
    lines = output("nm", "--defined-only", *objects).splitlines()
    return {line.split()[2] for line in lines if re.match(r"[0-9a-f]+ [tTwWV] ", line)}


def sites(program, functions):
    """The address behind each allocating call, and the function that it stands in."""
    found, function, pending = {}, "", False
    for line in output("objdump", "-d", "--no-show-raw-insn", program).splitlines():
        header = FUNCTION.match(line)
        if header:
            function, pending = header[1], False
            continue
        instruction = INSTRUCTION.match(line)
        if not instruction:
            continue
        if pending:
            found[int(instruction[1], 16)] = function
        pending = (function in functions and not BEFORE_MAIN.search(function)
                   and bool(ALLOCATING.search(instruction[2])))
    return found


def readable(names):
    return subprocess.run(["c++filt"], input="\n".join(names), check=True, capture_output=True,
                          text=True).stdout.splitlines()


def main():
    program, *objects = sys.argv[1:]
    wanted = sites(program, functions_of(objects))
    with tempfile.NamedTemporaryFile("r") as file:
        subprocess.run([program, "--gtest_brief=1"], check=True, stdout=subprocess.DEVNULL,
                       env={**os.environ, "MVFREQ_FAILED_SITES": file.name})
        failed = {int(line) for line in file.read().split()}
    missing = readable([f"{address:x} in {name}" for address, name in sorted(wanted.items())
                        if address not in failed])
    unreachable = []
    for pattern, reason in UNREACHABLE.items():
        place = next((line for line in missing if re.search(pattern, line)), None)
        if place:
            missing.remove(place)
            unreachable.append(f"{place}: not to be reached, {reason}")
    print("\n".join(unreachable + missing))
    count = len(wanted) - len(unreachable)
    print(f"{count - len(missing)} of {count} places were made to fail.")
    return 1 if missing or not wanted else 0


if __name__ == "__main__":
    sys.exit(main())
