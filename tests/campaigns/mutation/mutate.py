#!/usr/bin/env python3
"""Changes the library in small ways, one at a time, and reports whether the tests notice.

    tests/campaigns/mutation/mutate.py                          300 mutants of filt/, drawn with seed 1
    tests/campaigns/mutation/mutate.py --sample 50 --seed 7     another draw
    tests/campaigns/mutation/mutate.py --files filt/freqfilt    only files whose path begins so
    tests/campaigns/mutation/mutate.py --all                    all mutants, source by source
    tests/campaigns/mutation/mutate.py --all --short            without tests of over 10 s and sanitizers
    tests/campaigns/mutation/mutate.py --list                   prints the mutants, runs none

Copies of the tree, one for each worker, are built in build/mutation at -Og, with static libraries. A
mutant changes one place of one source there; what depends on it is built again and the test programs
run, the quickest first, until one fails. A program that takes far longer than it did on the unchanged
tree counts as one that fails. Of the passes of the kernel, which every instruction set compiles, one
path is tried by itself before all are built, and of a header its own test. Mutants that no compiler
accepts are drawn again; where the compiler makes the same code as of the original, nothing needs to
run. What survives is compiled at -O2, for the same reason, and tried under AddressSanitizer and UBSan.

Survivors that these programs cannot tell from the original stand in equivalent.txt, with the reason,
and are not tried but where the line stands twice. Any other survivor makes the exit code 1. Verdicts are
kept in build/mutation/results.txt: a run goes on where the last one stopped, and tries survivors again,
but what was killed only when its source has changed. With --all a source of which no mutant is left
over is entered in judged.txt, and passed over until it changes.
"""
import argparse
import collections
import itertools
import random
import sys
import threading
from pathlib import Path

from mutants import key, mutants
from steps import ROOT, steps_for
from tree_copy import WORK, Judge

EQUIVALENT = Path(__file__).with_name("equivalent.txt")
JUDGED = Path(__file__).with_name("judged.txt")
# The seconds that a step of a short run may take.
SHORT = 10


class Results:
    """The verdicts so far."""

    def __init__(self):
        WORK.mkdir(parents=True, exist_ok=True)
        self.path = WORK / "results.txt"
        lines = self.path.read_text(encoding="utf-8").splitlines() if self.path.exists() else []
        self.verdicts = dict(reversed(line.split("\t", 1)) for line in lines)

    @staticmethod
    def name(mutant):
        return f"{mutant.state} {mutant.line} {key(mutant)}"

    def note(self, mutant, verdict):
        with open(self.path, "a", encoding="utf-8") as file:
            file.write(f"{verdict}\t{self.name(mutant)}\n")

    def known(self, mutant):
        """None where there is no verdict, or where new tests may change it."""
        verdict = self.verdicts.get(self.name(mutant))
        return None if verdict == "survived" else verdict


def explained():
    """The mutants of equivalent.txt: lines that are no comment and not indented."""
    if not EQUIVALENT.exists():
        return set()
    lines = EQUIVALENT.read_text(encoding="utf-8").splitlines()
    return {line for line in lines if line and line[0] not in "# "}


class Draw:
    """Deals the mutants to the workers until a sample of them is judged."""

    def __init__(self, candidates, sample):
        candidates = list(candidates)
        self.candidates = iter(candidates)
        self.equivalents = explained()
        # Lines that stand twice are not told apart.
        names = collections.Counter(map(key, candidates))
        self.unique = {name for name, times in names.items() if times == 1}
        self.sample = sample
        self.results = Results()
        self.counts = collections.Counter()
        self.in_work = 0
        self.lock = threading.Lock()

    def judged(self):
        return self.counts.total() - self.counts["rejected"]

    def explained(self, mutant):
        return "survived" if key(mutant) in self.equivalents & self.unique else None

    def next(self):
        """A mutant that has no verdict yet; None when there are enough of them."""
        with self.lock:
            while self.judged() + self.in_work < self.sample:
                mutant = next(self.candidates, None)
                verdict = mutant and (self.results.known(mutant) or self.explained(mutant))
                if verdict is None:
                    self.in_work += mutant is not None
                    return mutant
                self.count(mutant, verdict)
            return None

    def note(self, mutant, verdict):
        with self.lock:
            self.in_work -= 1
            self.results.note(mutant, verdict)
            self.count(mutant, verdict)

    def count(self, mutant, verdict):
        kind = verdict if verdict in ("rejected", "same", "survived") else "killed"
        if kind == "survived" and key(mutant) in self.equivalents:
            kind = "explained"
        self.counts[kind] += 1
        if kind == "survived":
            print(f"survived: line {mutant.line} of {key(mutant)}", flush=True)


def work(judge, costs, draw):
    while mutant := draw.next():
        draw.note(mutant, judge.verdict_of(mutant, costs))


def judge_some(candidates, sample, judges, costs):
    """How many of the candidates came to what, by kind."""
    draw = Draw(candidates, sample)
    threads = [threading.Thread(target=work, args=(judge, costs, draw)) for judge in judges]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    return draw.counts


def already_judged():
    """The lines of judged.txt without their counts: a source and its state."""
    if not JUDGED.exists():
        return set()
    return {tuple(line.split()[:2]) for line in JUDGED.read_text(encoding="utf-8").splitlines()
            if not line.startswith("#")}


def note_judged(file, state, counts):
    """Replaces what is said of a former state of the source."""
    lines = JUDGED.read_text(encoding="utf-8").splitlines() if JUDGED.exists() else []
    head = [line for line in lines if line.startswith("#")]
    rest = [line for line in lines if line not in head and line.split()[0] != file]
    rest.append(f"{file} {state} {counts['killed']} killed, {counts['same']} the same code, "
                f"{counts['explained']} equivalent, {counts['rejected']} rejected")
    JUDGED.write_text("\n".join(head + sorted(rest)) + "\n", encoding="utf-8")


def judge_sources(candidates, judges, costs):
    """Judges all mutants, those of one source after the other."""
    total = collections.Counter()
    for (file, state), group in itertools.groupby(candidates, lambda mutant: mutant[:2]):
        group = list(group)
        counts = judge_some(group, len(group), judges, costs)
        print(f"{file}: {dict(counts)}", flush=True)
        if not counts["survived"]:
            note_judged(file, state, counts)
        total += counts
    return total


def main():
    parser = argparse.ArgumentParser(description="Mutates filt/ and runs the tests.")
    parser.add_argument("--sample", type=int, default=300, help="how many mutants to judge")
    parser.add_argument("--all", action="store_true", help="judge all, source by source")
    parser.add_argument("--short", action="store_true", help="leave out tests that take over 10 s")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--files", nargs="+", default=["filt/"],
                        help="how the paths to mutate begin")
    parser.add_argument("--workers", type=int, default=1, help="mutants at once")
    parser.add_argument("--list", action="store_true", help="print the mutants and stop")
    options = parser.parse_args()

    candidates = list(mutants(ROOT, tuple(options.files)))
    if options.all:
        judged = already_judged()
        candidates = [mutant for mutant in candidates if mutant[:2] not in judged]
    if options.list:
        for mutant in candidates:
            print(f"{mutant.line:4} {key(mutant)}")
        print(len(candidates), "mutants")
        return 0

    judges = [Judge(number, options.short) for number in range(options.workers)]
    steps = sorted({step for mutant in candidates for step in steps_for(mutant.file)})
    costs = judges[0].quick.measure(steps)
    if options.short:
        costs[None] = {step: cost for step, cost in costs[None].items() if cost <= SHORT}

    if options.all:
        counts = judge_sources(candidates, judges, costs)
    else:
        random.Random(options.seed).shuffle(candidates)
        counts = judge_some(candidates, options.sample, judges, costs)
    judged = counts["killed"] + counts["survived"]
    print(f"{counts['killed']} of {judged} killed, {counts['same']} of the same code, "
          f"{counts['explained']} equivalent and explained, {counts['rejected']} rejected by the compiler, "
          f"of {len(candidates)} possible")
    return 1 if counts["survived"] else 0


if __name__ == "__main__":
    sys.exit(main())
