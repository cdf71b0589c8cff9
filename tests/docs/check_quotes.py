#!/usr/bin/env python3
"""Checks that what campaigns quote of the sources still stands there.

They run by hand, so that nothing else tells when a source has moved on: the planted bugs, the mutants
that equivalent.txt explains, the conditions that conditions.txt names.
"""
import pathlib
import runpy
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
MUTATION = "tests/campaigns/mutation/equivalent.txt"
CONDITIONS = "scripts/conditions.txt"


def planted_faults():
    """Patches that need the tolerance of `patch` may land elsewhere."""
    for patch in sorted(ROOT.glob("tests/campaigns/*/planted/*.patch")):
        tried = subprocess.run(["patch", "--dry-run", "--force", "--fuzz=0", "--strip=1", "--input", patch],
                               cwd=ROOT, capture_output=True, text=True, check=False)
        if tried.returncode:
            yield f"{patch.relative_to(ROOT)}: {tried.stdout.strip() or tried.stderr.strip()}"


def mutant_faults():
    sys.path.insert(0, str((ROOT / MUTATION).parent))
    mutate = runpy.run_path(ROOT / "tests/campaigns/mutation/mutate.py")
    made = {mutate["key"](mutant) for mutant in mutate["mutants"](ROOT, ("filt/",))}
    yield from (f"{MUTATION}: no mutant is made any more: {key}" for key in mutate["explained"]() - made)


def condition_faults():
    for line in runpy.run_path(ROOT / "scripts/conditions.py")["read_exceptions"](ROOT / CONDITIONS):
        source, quoted = line.split(": ", 1)
        text = " ".join((ROOT / source).read_text(encoding="utf-8").split())
        yield from (f"{CONDITIONS}: {source} has no `{part}`"
                    for part in quoted.split(" | ") if " ".join(part.split()) not in text)


def main():
    faults = [*planted_faults(), *mutant_faults(), *condition_faults()]
    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
