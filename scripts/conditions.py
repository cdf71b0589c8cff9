#!/usr/bin/env python3
"""Lists the conditions that no test has shown to matter: MC/DC of the libraries, for conditions.sh.

    conditions.py <llvm-cov export, JSON> <llvm-cov show, text> <file of exceptions>

A condition of a decision (`a && b`, `a || b`, ...) is covered when two evaluations of the decision
differ in it, in nothing else that was evaluated, and in the result. One that decides by itself is
covered when it was both true and false. Instances of templates, the kernel's paths among them, count
together: their source is one. Left out are conditions that the compiler knows, and defaulted
comparisons, which have no source.

The exceptions are lines `file: decision | condition`, with the reason below, indented. It fails when
a condition is not covered and not named, and when a name fits none that is open.
"""
import collections
import json
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
PARTS = {"filt/": ("filt/",), "base/": ("base/", "vsys/", "internal/")}
OF_DECISION = 6  # the kind of a branch that belongs to a decision of several conditions

Span = collections.namedtuple("Span", "line column end_line end_column")


def span(region):
    return Span(*region[:4])


def holds(outer, inner):
    return outer[:2] <= inner[:2] and inner[2:] <= outer[2:]


class Source:
    """A file, what was evaluated in it and how."""

    def __init__(self, name):
        self.name = name
        self.lines = (ROOT / name).read_text().splitlines()
        self.branches = collections.defaultdict(lambda: [0, 0])
        self.parts = set()  # branches that belong to a decision
        self.decisions = set()
        self.constants = set()  # line and column of what compilers know, in one instance or more
        self.vectors = collections.defaultdict(set)  # by line and column of the decision

    def add(self, record):
        for branch in record["branches"]:
            counts = self.branches[span(branch)]
            counts[0] += branch[4]
            counts[1] += branch[5]
            if branch[8] == OF_DECISION:
                self.parts.add(span(branch))
        self.decisions.update(span(decision) for decision in record["mcdc_records"])

    def text(self, at):
        lines = self.lines[at.line - 1:at.end_line]
        lines[-1] = lines[-1][:at.end_column - 1]
        lines[0] = lines[0][at.column - 1:]
        return " ".join(" ".join(lines).split())

    def conditions(self, decision):
        """Those of the decision, without those of decisions in its arguments."""
        within = [d for d in self.decisions if d != decision and holds(decision, d)]
        return sorted(c for c in self.parts
                      if holds(decision, c) and not any(holds(d, c) for d in within))

    def between(self, decision, conditions):
        """The decision without its conditions: operators and parentheses."""
        kept, begin = [], decision[:2]
        for condition in conditions:
            kept.append(self.text(Span(*begin, *condition[:2])))
            begin = condition[2:]
        return "".join(kept) + self.text(Span(*begin, *decision[2:]))

    def is_constant(self, at):
        return at[:2] in self.constants and not any(self.branches[at])

    def is_defaulted(self, at):
        return "= default" in self.lines[at.line - 1]


def read_export(file):
    sources = {}
    for record in json.loads(file.read_text())["data"][0]["files"]:
        path = pathlib.Path(record["filename"])
        name = str(path.relative_to(ROOT)) if path.is_relative_to(ROOT) else ""
        if name.startswith(sum(PARTS.values(), ())):
            sources.setdefault(name, Source(name)).add(record)
    return sources


def read_show(file, sources):
    """What the export lacks: which evaluations there were of each decision, and what is constant."""
    source = at = None
    for line in file.read_text().splitlines():
        line = line.lstrip(" |")
        if line.startswith(f"{ROOT}/") and line.endswith(":"):
            source = sources.get(line[len(f"{ROOT}/"):-1])
        elif source is None:
            continue
        elif found := re.match(r"Branch \((\d+):(\d+)\): \[Folded", line):
            source.constants.add((int(found[1]), int(found[2])))
        elif found := re.match(r"-+> MC/DC Decision Region \((\d+):(\d+)\)", line):
            at = int(found[1]), int(found[2])
        elif found := re.match(r"\d+ \{ (.*) = ([TF]) +\}", line):
            source.vectors[at].add((tuple(found[1].replace(" ", "").split(",")), found[2]))


def is_pair(index, one, other):
    """Whether two evaluations show by themselves that the condition of this index matters."""
    (values, result), (others, other_result) = one, other
    if result == other_result or {values[index], others[index]} != {"T", "F"}:
        return False
    return all(a == b or not {a, b} <= {"T", "F"}
               for i, (a, b) in enumerate(zip(values, others)) if i != index)


def open_of_decision(source, decision, conditions):
    """Those of the conditions that are not covered."""
    operators = source.between(decision, conditions)
    if ("&&" in operators) != ("||" in operators):
        # Whatever comes before the last that is evaluated has let it pass: both outcomes suffice. The
        # compiler notes no evaluations where a decision chooses between objects of classes.
        return [c for c in conditions if not all(source.branches[c])]
    vectors = source.vectors[decision[:2]]
    return [c for i, c in enumerate(conditions)
            if not any(is_pair(i, a, b) for a in vectors for b in vectors)]


def examine(source):
    """Numbers of conditions, and the open ones as pairs of decision and condition."""
    counted, missing, seen = 0, [], set()
    for decision in sorted(source.decisions):
        conditions = source.conditions(decision)
        seen.update(conditions)
        if source.is_defaulted(decision):
            continue
        counted += sum(not source.is_constant(c) for c in conditions)
        missing += [(decision, c) for c in open_of_decision(source, decision, conditions)
                    if not source.is_constant(c)]
    for condition in sorted(source.branches.keys() - seen):
        if source.is_constant(condition) or source.is_defaulted(condition):
            continue
        counted += 1
        if not all(source.branches[condition]):
            missing.append((condition, condition))
    return counted, sorted(missing)


def read_exceptions(file):
    return [line for line in file.read_text().splitlines() if line and line[0] not in " #"]


def name(source, decision, condition):
    shown = f"{source.name}: {source.text(decision)}"
    return shown if condition == decision else f"{shown} | {source.text(condition)}"


def main(export, show, exceptions):
    sources = read_export(pathlib.Path(export))
    read_show(pathlib.Path(show), sources)
    named = read_exceptions(pathlib.Path(exceptions))
    unused, failed = set(named), False
    for part, folders in PARTS.items():
        counted = excused = uncovered = 0
        for source in sorted((s for s in sources.values() if s.name.startswith(folders)),
                             key=lambda s: s.name):
            number, missing = examine(source)
            counted += number
            for decision, condition in missing:
                key = name(source, decision, condition)
                unused.discard(key)
                if key in named:
                    excused += 1
                    continue
                uncovered += 1
                values = ", ".join(f"{n} {word}" for n, word in
                                   zip(source.branches[condition], ("true", "false")))
                print(f"{source.name}:{condition.line}: {key.split(': ', 1)[1]}  ({values})")
        covered = counted - excused - uncovered
        print(f"{part} {counted} conditions, {covered} covered, {excused} named, {uncovered} open")
        failed |= uncovered > 0
    for key in sorted(unused):
        print(f"named, but covered or not there: {key}")
    return 1 if failed or unused else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
