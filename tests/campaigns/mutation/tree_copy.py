"""A copy of the tree in which mutate.py changes the library, and its build."""
import contextlib
import hashlib
import os
import re
import resource
import shutil
import subprocess
import sys
from pathlib import Path

from steps import OF_THE_TABLE, PASSES, ROOT, steps_for

WORK = ROOT / "build" / "mutation"

# The kernel's passes are compiled once for each of these and for AVX2 and AVX-512, all of them in a
# quarter of a minute.
FIRST_PATHS = {"path_baseline": "&kBaselinePath", "path_plain": "&kPlainPath"}
TABLE = "filt/fft/internal/kernel/path.cpp"
TESTS_OF_A_PATH = ("fft_transforms_test", "fft_round_trip_test", "fft_kernel_test")

OBJECTS = "filt/CMakeFiles/mvfreq_objects.dir"

SANITIZED = "-Og -fsanitize=address,undefined,float-cast-overflow -fno-sanitize-recover=all"


def table_of(text, entry):
    """The table of the kernel's paths, with one entry only."""
    return re.sub(r"^ *&k\w+Path,\n", lambda m: m[0] if entry in m[0] else "", text, flags=re.M)


def is_of_a_path(step):
    """Whether it is taken with one path alone."""
    name, arguments = step
    return name in TESTS_OF_A_PATH and arguments[-1].endswith(OF_THE_TABLE)


class Copy:
    """A copy of the tree with its build. Programs may take so many times as long as measured."""

    def __init__(self, name, flags, slowness=5, memory=6 << 30):
        self.tree = WORK / name / "tree"
        self.folder = WORK / name / "build"
        self.flags = flags
        self.slowness = slowness
        self.memory = memory
        self.objects = {}

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
                        "-DCMAKE_BUILD_TYPE=Debug", f"-DCMAKE_CXX_FLAGS_DEBUG={self.flags}",
                        "-DCMAKE_DISABLE_FIND_PACKAGE_Python3=ON"],
                       check=True, stdout=subprocess.DEVNULL)
        if not self.build("mvfreq_objects"):
            sys.exit("the library does not build")
        self.objects = {path: self.state_of(path) for path in self.folder.glob(f"{OBJECTS}/**/*.o")}

    @staticmethod
    def state_of(path):
        return hashlib.sha256(path.read_bytes()).hexdigest()

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
                ["prlimit", f"--cpu={seconds}", f"--as={self.memory}", program, *arguments],
                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, cwd=self.folder,
                timeout=10 * seconds, check=False).returncode == 0
        except subprocess.TimeoutExpired:
            return False

    def measure(self, steps):
        """The seconds that each step takes on the unchanged tree, with all paths of the kernel, and by
        the one path that is left where passes are tried by themselves."""
        costs = {None: self.measure_unchanged(steps)}
        for entry in FIRST_PATHS.values():
            with self.table_with(entry):
                costs[entry] = self.measure_unchanged([s for s in steps if is_of_a_path(s)])
        return costs

    def measure_unchanged(self, steps):
        costs = {}
        for step in steps:
            if not self.build(step[0]):
                sys.exit(f"{step[0]} does not build")
            begin = resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime
            if not self.passes(step, 900):
                sys.exit(f"{step[0]} fails on the unchanged tree")
            costs[step] = resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime - begin
        return costs

    @contextlib.contextmanager
    def changed(self, file, text, unnoticed=False):
        """The file with another text for a while. Unnoticed, nothing is built again for its return."""
        path = self.tree / file
        original, status = path.read_bytes(), path.stat()
        path.write_text(text, encoding="utf-8")
        try:
            yield
        finally:
            path.write_bytes(original)
            if unnoticed:
                os.utime(path, ns=(status.st_atime_ns, status.st_mtime_ns))

    def table_with(self, entry):
        """The kernel with one path alone, for a while."""
        return self.changed(TABLE, table_of((self.tree / TABLE).read_text(encoding="utf-8"), entry))

    def text_with(self, mutant):
        lines = (self.tree / mutant.file).read_text(encoding="utf-8").splitlines(keepends=True)
        lines[mutant.line - 1] = mutant.new + "\n"
        return "".join(lines)

    def first_that_fails(self, steps, costs):
        """The name of the first program that fails, those first that take the least time; "rejected"
        where the compiler does that; None when all pass."""
        for step in sorted(steps, key=costs.get):
            if not self.build(step[0]):
                return "rejected"
            if not self.passes(step, int(self.slowness * costs[step]) + 5):
                return step[0]
        return None

    def parts_for(self, file):
        """Objects that can show a mutant of the file before all are built, with the steps to take and
        the one path of the kernel that is left."""
        if file.startswith(PASSES):
            for path, entry in FIRST_PATHS.items():
                name = f"{OBJECTS}/{PASSES.removeprefix('filt/')}{path}.cpp.o"
                yield self.folder / name, is_of_a_path, entry
        elif file.endswith(".h"):
            for test in sorted(self.folder.glob(f"tests/**/*.dir/**/{Path(file).stem}_test.cpp.o")):
                programs = [part.removesuffix(".dir") for part in test.parts if part.endswith(".dir")]
                yield test, lambda step, programs=programs: step[0] in programs, None

    def verdict_of_a_part(self, mutant, steps, costs):
        """What the tests say when one object that the mutant changes has it, and the others do not."""
        for target, is_asked, entry in self.parts_for(mutant.file):
            name = str(target.relative_to(self.folder))
            with self.changed(mutant.file, self.text_with(mutant), unnoticed=True):
                built = self.build(name)
            try:
                if not built:
                    return "rejected"
                if self.state_of(target) == self.objects.get(target):
                    continue
                with self.table_with(entry) if entry else contextlib.nullcontext():
                    return self.first_that_fails([s for s in steps if is_asked(s)], costs[entry])
            finally:
                target.unlink(missing_ok=True)
                self.build(name)
        return None

    def has_the_same_code(self):
        return all(self.state_of(path) == state for path, state in self.objects.items())

    def makes_the_same_code(self, mutant):
        with self.changed(mutant.file, self.text_with(mutant)):
            return self.build("mvfreq_objects") and self.has_the_same_code()

    def verdict_of(self, mutant, costs):
        """"rejected" by the compiler, "same" when it makes the same code of it, "survived", or the name
        of the program that failed."""
        steps = [step for step in steps_for(mutant.file) if step in costs[None]]
        verdict = self.verdict_of_a_part(mutant, steps, costs)
        if verdict:
            return verdict
        with self.changed(mutant.file, self.text_with(mutant)):
            if not self.build("mvfreq_objects"):
                return "rejected"
            if self.has_the_same_code():
                return "same"
            return self.first_that_fails(steps, costs[None]) or "survived"


class Judge:
    """Who tries one mutant after the other, with copies of its own."""

    def __init__(self, number, short):
        self.quick = Copy(f"{number}", "-Og")
        self.optimized = None if short else Copy(f"{number}-optimized", "-O2")
        # The sanitizers reserve addresses for terabytes.
        self.sanitized = None if short else Copy(
            f"{number}-sanitized", SANITIZED, 50, "unlimited")
        for copy in (self.quick, self.optimized, self.sanitized):
            if copy:
                copy.update()

    def verdict_of(self, mutant, costs):
        """As that of the quick copy; of what survives there, whether the optimizer makes the same code
        of it, and whether the sanitizers notice."""
        verdict = self.quick.verdict_of(mutant, costs)
        if verdict != "survived" or not self.optimized:
            return verdict
        if self.optimized.makes_the_same_code(mutant):
            return "same"
        verdict = self.sanitized.verdict_of(mutant, costs)
        return verdict if verdict in ("survived", "same") else "sanitizers"
