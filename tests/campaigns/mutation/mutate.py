#!/usr/bin/env python3
"""Changes the library in small ways, one at a time, and reports whether the tests notice.

    tests/campaigns/mutation/mutate.py                          300 mutants of filt/, drawn with seed 1
    tests/campaigns/mutation/mutate.py --sample 50 --seed 7     another draw
    tests/campaigns/mutation/mutate.py --files filt/freqfilt    only files whose path begins so
    tests/campaigns/mutation/mutate.py --all                    all mutants, source by source
    tests/campaigns/mutation/mutate.py --list                   prints the mutants, runs none

Copies of the tree, one for each worker, are built in build/mutation at -Og, with static libraries. A
mutant changes one place of one source there; what depends on it is built again and the test programs
run, until one fails. A program that takes far longer than it did on the unchanged tree counts as one
that fails. Mutants that no compiler accepts are drawn again.

Survivors that these programs cannot tell from the original stand in equivalent.txt, with the reason.
Any other survivor makes the exit code 1. Verdicts are kept in build/mutation/results.txt: a run goes
on where the last one stopped, and what was killed is not tried again as long as its source is the
same. With --all a source of which no mutant is left over is entered in judged.txt, and passed over
until it changes.
"""
import argparse
import collections
import hashlib
import itertools
import random
import re
import resource
import shutil
import subprocess
import sys
import threading
from pathlib import Path

ROOT = Path(__file__).resolve().parents[3]
WORK = ROOT / "build" / "mutation"
EQUIVALENT = Path(__file__).with_name("equivalent.txt")
JUDGED = Path(__file__).with_name("judged.txt")
MEMORY = 6 << 30

# The test programs that judge a source, those first that most mutants fail. The first beginning of
# its path that fits counts.
OF_PICTURES = ["freqfilt_picture_test", "freqfilt_memory_test", "freqfilt_test", "model_test",
               "results_digest", "faults_test"]
PROGRAMS = [
    ("filt/fft/internal/kernel/paths/twiddles", ["fft_kernel_test", "results_digest"]),
    ("filt/fft/internal/kernel", ["fft_kernel_test", "results_digest", "fft_transforms_test",
                                  "fft_round_trip_test", "faults_test"]),
    ("filt/fft/arithmetic", ["arithmetic_test", "numbers_test", "results_digest", "faults_test"]),
    ("filt/fft/map_image", ["arithmetic_test", "numbers_test", "results_digest", "faults_test"]),
    ("filt/fft/errors", ["fft_buffer_test", "fft_archive_test", "archive_test", "faults_test"]),
    ("filt/fft/internal/archive", ["fft_archive_test", "archive_test", "freqfilt_archive_test",
                                   "faults_test"]),
    ("filt/fft/buffer_archive", ["fft_archive_test", "archive_test", "fft_transforms_test",
                                 "faults_test"]),
    ("filt/fft", ["fft_buffer_test", "fft_transforms_test", "fft_archive_test", "archive_test",
                  "arithmetic_test", "freqfilt_test", "freqfilt_archive_test", "numbers_test",
                  "results_digest", "fft_round_trip_test", "model_test", "faults_test"]),
    *((f"filt/freqfilt/{name}", OF_PICTURES)
      for name in ("filter_image", "internal/border", "internal/filter_list", "internal/half_filters",
                   "internal/image_reach", "internal/known_filters", "internal/picture_plan",
                   "internal/planeless_tile", "internal/shared_pels", "internal/three_calls",
                   "internal/tile_threads", "internal/tiling")),
    ("filt", ["freqfilt_test", "freqfilt_archive_test", "archive_test", "registration_test",
              "numbers_test", "results_digest", "freqfilt_picture_test", "model_test", "faults_test"]),
]
# Their tests that take seconds: these run last.
SLOW = {"archive_test": "*AnyTwoIntegers*:*AnyByteFlipped*", "freqfilt_test": "FilterComparison/*",
        "fft_kernel_test": "*ForAllSizes*:*ComplexKernelOnRealInput*"}

# Replacements of what stands between blanks; the layout keeps template brackets and unary operators
# away from blanks.
OPERATORS = {
    "<": ["<=", ">"], "<=": ["<", ">"], ">": [">=", "<"], ">=": [">", "<"],
    "==": ["!="], "!=": ["=="], "&&": ["||"], "||": ["&&"],
    "+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"], "%": ["/"],
    "+=": ["-="], "-=": ["+="], "*=": ["/="], "/=": ["*="],
    "<<": [">>"], ">>": ["<<"], "&": ["|"], "|": ["&"], "^": ["|"],
}
WORDS = {"true": ["false"], "false": ["true"], "min": ["max"], "max": ["min"], "cos": ["sin"],
         "sin": ["cos"]}

OPERATOR = re.compile(r"(?<= )(" + "|".join(re.escape(o) for o in
                                            sorted(OPERATORS, key=len, reverse=True)) + r")(?= )")
WORD = re.compile(r"\b(" + "|".join(WORDS) + r")\b")
STEP = re.compile(r"\+\+|--")
NOT = re.compile(r"(?<=[( ])!(?=[\w(])")
NUMBER = re.compile(r"(?<![\w.])(\d+)(\.\d+(?:e[+-]?\d+)?)?([UL]*F?)(?![\w.])")
STATEMENT = re.compile(r"^( +)(?!return\b|using\b|static_assert\b|friend\b|public\b|private\b)"
                       r"((?:throw\b|[\w\]\[.>*()&-]+(?:\(| [-+*/|&^]?= |\+\+|--)|\+\+|--|break;|continue;)"
                       r".*;)$")
CONDITION = re.compile(r"\bif \((.*)\)(?= |$)")
# Nothing that runs: the preprocessor, static assertions, names from elsewhere.
PASSIVE = re.compile(r"^\s*(#|static_assert|using\b|template\b|friend\b|extern\b)")

# `state` tells one version of the file from another.
Mutant = collections.namedtuple("Mutant", "file state line old new")


def without_comments_and_texts(line):
    """The line with blanks in place of comments and of what is quoted."""
    line = re.sub(r'"(?:[^"\\]|\\.)*"', lambda m: '"' + "_" * (len(m[0]) - 2) + '"', line)
    return re.sub(r"//.*", lambda m: "_" * len(m[0]), line)


def variants(line):
    """Every way in which the line can be changed."""
    code = without_comments_and_texts(line)
    if PASSIVE.match(code):
        return

    def replaced(match, text, group=0):
        return line[:match.start(group)] + text + line[match.end(group):]

    for match in OPERATOR.finditer(code):
        for other in OPERATORS[match[0]]:
            yield replaced(match, other)
    for match in WORD.finditer(code):
        for other in WORDS[match[0]]:
            yield replaced(match, other)
    for match in STEP.finditer(code):
        yield replaced(match, "--" if match[0] == "++" else "++")
    for match in NOT.finditer(code):
        yield replaced(match, "")
    for match in NUMBER.finditer(code):
        yield replaced(match, str(int(match[1]) + 1), 1)
        if int(match[1]) > 0:
            yield replaced(match, str(int(match[1]) - 1), 1)
    for match in CONDITION.finditer(code):
        for other in ("true", "false"):
            yield replaced(match, other, 1)
    match = STATEMENT.match(code)
    if match:
        yield match[1] + ";"


def mutants(prefixes):
    """All of them, in the order of the tree."""
    for path in sorted((ROOT / "filt").rglob("*")):
        file = str(path.relative_to(ROOT))
        if path.suffix not in (".cpp", ".h"):
            continue
        # Public headers hold declarations, and changing them builds every test again.
        if not file.startswith(prefixes) or not (path.suffix == ".cpp" or "/internal/" in file):
            continue
        text = path.read_text(encoding="utf-8")
        state = hashlib.sha256(text.encode()).hexdigest()[:12]
        for number, line in enumerate(text.splitlines(), 1):
            for new in dict.fromkeys(variants(line)):
                if new != line:
                    yield Mutant(file, state, number, line, new)


def key(mutant):
    """How a mutant is named in files: without its line number, which moves."""
    return f"{mutant.file}: {mutant.old.strip()} -> {mutant.new.strip()}"


class Copy:
    """A copy of the tree with its build."""

    def __init__(self, number):
        self.tree = WORK / str(number) / "tree"
        self.folder = WORK / str(number) / "build"

    def update(self):
        """Brings the copy up to date, and leaves alone what is the same."""
        files = subprocess.run(["git", "ls-files", "--cached", "--others", "--exclude-standard"],
                               cwd=ROOT, check=True, capture_output=True, text=True).stdout.split()
        for file in files:
            source, target = ROOT / file, self.tree / file
            if not source.exists():
                continue
            content = source.read_bytes()
            if not target.exists() or target.read_bytes() != content:
                target.parent.mkdir(parents=True, exist_ok=True)
                target.write_bytes(content)
                target.chmod(source.stat().st_mode)
        # Each mutant is taken back, and what was built before it is wanted again.
        launcher = ["-DCMAKE_CXX_COMPILER_LAUNCHER=ccache"] if shutil.which("ccache") else []
        subprocess.run(["cmake", "-S", self.tree, "-B", self.folder, "-G", "Ninja", *launcher,
                        "-DBUILD_SHARED_LIBS=OFF", "-DMVFREQ_BUILD_TOOLS=OFF",
                        "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-Og",
                        "-DCMAKE_DISABLE_FIND_PACKAGE_Python3=ON"],
                       check=True, stdout=subprocess.DEVNULL)

    def build(self, target):
        return subprocess.run(["cmake", "--build", self.folder, "-j", "1", "--target", target],
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                              check=False).returncode == 0

    def passes(self, step, seconds):
        """True when the step passes, in so many seconds of the processor's time and some GiB. Threads
        that wait for each other take no such time."""
        name, arguments = step
        program = next(self.folder.glob(f"tests/**/{name}"))
        try:
            return subprocess.run(
                ["prlimit", f"--cpu={seconds}", f"--as={MEMORY}", program, *arguments],
                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, cwd=self.folder,
                timeout=10 * seconds, check=False).returncode == 0
        except subprocess.TimeoutExpired:
            return False

    def measure(self, steps):
        """The time limit of each step, from runs on the unchanged tree."""
        limits = {}
        for step in steps:
            if not self.build(step[0]):
                sys.exit(f"{step[0]} does not build")
            begin = resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime
            if not self.passes(step, 900):
                sys.exit(f"{step[0]} fails on the unchanged tree")
            used = resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime - begin
            limits[step] = int(5 * used) + 5
        return limits

    def verdict_of(self, mutant, limits):
        """"rejected" by the compiler, "survived", or the name of the program that failed."""
        path = self.tree / mutant.file
        original = path.read_text(encoding="utf-8")
        lines = original.splitlines(keepends=True)
        lines[mutant.line - 1] = mutant.new + "\n"
        path.write_text("".join(lines), encoding="utf-8")
        try:
            for step in steps_for(mutant.file):
                if not self.build(step[0]):
                    return "rejected"
                if not self.passes(step, limits[step]):
                    return step[0]
            return "survived"
        finally:
            path.write_text(original, encoding="utf-8")


def steps_for(file):
    """Pairs of a program and its arguments, in the order in which they run."""
    programs = next(programs for prefix, programs in PROGRAMS if file.startswith(prefix))
    steps = []
    for name in programs:
        if name == "results_digest":
            steps.append((name, (str(ROOT / "tests/campaigns/digests/results.digest"),)))
        else:
            steps.append((name, ("--gtest_fail_fast", f"--gtest_filter=-{SLOW.get(name, '')}")))
    return steps + [(name, ("--gtest_fail_fast", f"--gtest_filter={tests}"))
                    for name, tests in SLOW.items() if name in programs]


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
        self.candidates = iter(candidates)
        self.sample = sample
        self.results = Results()
        self.equivalents = explained()
        self.counts = collections.Counter()
        self.in_work = 0
        self.lock = threading.Lock()

    def judged(self):
        return self.counts["killed"] + self.counts["explained"] + self.counts["survived"]

    def next(self):
        """A mutant that has no verdict yet; None when there are enough of them."""
        with self.lock:
            while self.judged() + self.in_work < self.sample:
                mutant = next(self.candidates, None)
                verdict = mutant and self.results.known(mutant)
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
        kind = verdict if verdict in ("rejected", "survived") else "killed"
        if kind == "survived" and key(mutant) in self.equivalents:
            kind = "explained"
        self.counts[kind] += 1
        if kind == "survived":
            print(f"survived: line {mutant.line} of {key(mutant)}", flush=True)


def work(copy, limits, draw):
    while mutant := draw.next():
        draw.note(mutant, copy.verdict_of(mutant, limits))


def judge(candidates, sample, copies, limits):
    """How many of the candidates came to what, by kind."""
    draw = Draw(candidates, sample)
    threads = [threading.Thread(target=work, args=(copy, limits, draw)) for copy in copies]
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
    rest.append(f"{file} {state} {counts['killed']} killed, {counts['explained']} equivalent, "
                f"{counts['rejected']} rejected")
    JUDGED.write_text("\n".join(head + sorted(rest)) + "\n", encoding="utf-8")


def judge_sources(candidates, copies, limits):
    """Judges all mutants, those of one source after the other."""
    total = collections.Counter()
    for (file, state), group in itertools.groupby(candidates, lambda mutant: mutant[:2]):
        group = list(group)
        counts = judge(group, len(group), copies, limits)
        print(f"{file}: {dict(counts)}", flush=True)
        if not counts["survived"]:
            note_judged(file, state, counts)
        total += counts
    return total


def main():
    parser = argparse.ArgumentParser(description="Mutates filt/ and runs the tests.")
    parser.add_argument("--sample", type=int, default=300, help="how many mutants to judge")
    parser.add_argument("--all", action="store_true", help="judge all, source by source")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--files", nargs="+", default=["filt/"],
                        help="how the paths to mutate begin")
    parser.add_argument("--workers", type=int, default=1, help="mutants at once")
    parser.add_argument("--list", action="store_true", help="print the mutants and stop")
    options = parser.parse_args()

    candidates = list(mutants(tuple(options.files)))
    if options.all:
        judged = already_judged()
        candidates = [mutant for mutant in candidates if mutant[:2] not in judged]
    if options.list:
        for mutant in candidates:
            print(f"{mutant.line:4} {key(mutant)}")
        print(len(candidates), "mutants")
        return 0

    copies = [Copy(number) for number in range(options.workers)]
    for copy in copies:
        copy.update()
    steps = sorted({step for mutant in candidates for step in steps_for(mutant.file)})
    limits = copies[0].measure(steps)

    if options.all:
        counts = judge_sources(candidates, copies, limits)
    else:
        random.Random(options.seed).shuffle(candidates)
        counts = judge(candidates, options.sample, copies, limits)
    judged = counts["killed"] + counts["survived"]
    print(f"{counts['killed']} of {judged} killed, {counts['explained']} equivalent and explained, "
          f"{counts['rejected']} rejected by the compiler, of {len(candidates)} possible")
    return 1 if counts["survived"] else 0


if __name__ == "__main__":
    sys.exit(main())
