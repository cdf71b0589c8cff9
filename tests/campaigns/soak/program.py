#!/usr/bin/env python3
"""Runs mvfreq again and again while it is disturbed, and looks at what it leaves behind.

    program.py MVFREQ SMALL_DISK MINUTES SEED

After each run every output is what it was before, or the picture that an undisturbed run writes; where
an input changed while it was read, any picture that is whole. Nothing else is left in the folder,
after SIGKILL no half file. The exit code fits what was done to the run, and each failure has its
sentence."""

import collections
import os
import pathlib
import random
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time

import pictures

RING = ["--frequency", "0.08", "--sigma", "0.03"]
LOBE = ["--frequency", "0.09", "--sigma", "0.02"]
COMMANDS = [
    ["bandpass", *RING, "--dc-radius", "1", "--rescale"],
    ["bandpass", *RING, "--rescale", "99.9", "--list"],
    ["bandreject", *RING],
    ["bandreject", *RING, "--channels", "grey", "--tile", "128"],
    ["gabor", *LOBE, "--angle", "30", "--signed"],
    ["gaborreject", *LOBE, "--angle", "30", "--both-sides"],
    ["gaborreject", *LOBE, "--both-sides", "then", "bandreject", *RING],
    ["spectrum"],
]
STOPS = {"interrupted": signal.SIGINT, "terminated": signal.SIGTERM, "killed": signal.SIGKILL}
CHANGES = ["vanishes", "replaced", "overwritten", "shrinks"]


class Soak:
    def __init__(self, program, small, minutes, seed):
        self.program = program
        self.random = random.Random(seed)
        self.end = time.monotonic() + 60 * minutes
        self.files = pictures.files()
        self.small = pictures.SmallDisk(small)
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="soak-"))
        self.known = {}  # results of undisturbed runs, and how long they took
        self.counts = collections.Counter()
        self.filler = f"filler{seed}"
        self.full = pathlib.Path(small, f"out{seed}")

    def run(self):
        while time.monotonic() < self.end:
            self.disturbed_run()
            if self.counts["runs"] % 1000 == 0:
                self.batch()
        shutil.rmtree(self.folder)
        for what, count in sorted(self.counts.items()):
            print(f"program: {what}: {count}")

    def fail(self, what):
        print(f"program: FAILED: {what}; its files are in {self.folder}", flush=True)
        sys.exit(1)

    def result(self, command, name):
        """The output of an undisturbed run, and its seconds."""
        key = (tuple(command), name)
        if key not in self.known:
            calm = self.folder / "calm"
            calm.mkdir()
            (calm / name).write_bytes(self.files[name])
            begin = time.monotonic()
            subprocess.run(
                [self.program, *command, calm / name, calm / "out.png"],
                check=True, stdout=subprocess.DEVNULL,
            )
            seconds = time.monotonic() - begin
            self.known[key] = (calm / "out.png").read_bytes(), seconds
            shutil.rmtree(calm)
        return self.known[key]

    def disturbed_run(self):
        draw = self.random
        command, name = draw.choice(COMMANDS), draw.choice(list(self.files))
        stop = draw.choice([None, None, *STOPS])
        change = draw.choice([None, None, None, *CHANGES])
        is_full = draw.random() < 0.25
        expected = self.result(command, name)[0]
        other = draw.choice(list(self.files))
        folder = self.full if is_full else self.folder / "out"
        folder.mkdir()
        source, target = self.folder / name, folder / "out.png"
        source.write_bytes(self.files[name])
        before = draw.choice([None, self.result(COMMANDS[0], "grey40.png")[0]])
        if before is not None:
            target.write_bytes(before)
        if is_full:
            self.small.leave(draw.randrange(len(expected) + 8192), self.filler)

        code, said = self.disturbed(command, source, target, stop, change, other)

        self.count(stop, change, "full disk" if is_full else None)
        self.judge_code(code, said, stop, change, is_full)
        results = [expected]
        if change == "replaced":
            results.append(self.result(command, other)[0])
        self.judge_output(code, target, before, results, change)
        self.judge_folder(folder, stop)
        shutil.rmtree(folder)
        source.unlink(missing_ok=True)
        pathlib.Path(self.small.folder, self.filler).unlink(missing_ok=True)

    def disturbed(self, command, source, target, stop, change, other):
        """The exit code of a run, and what it said, while another thread stops it or changes its input."""
        seconds = self.result(command, source.name)[1]
        jobs = str(self.random.randint(1, 3))
        process = subprocess.Popen(
            [self.program, *command, "--force", "--jobs", jobs, source, target],
            stdout=subprocess.DEVNULL, stderr=subprocess.PIPE,
        )
        helpers = []
        if stop:
            moment = self.random.uniform(0, 1.2 * seconds)
            helpers.append(threading.Timer(moment, process.send_signal, [STOPS[stop]]))
        if change:
            moment = self.random.uniform(0, seconds)
            helpers.append(threading.Timer(moment, self.change, [change, source, other]))
        for helper in helpers:
            helper.start()
        said = process.communicate()[1].decode(errors="replace")
        for helper in helpers:
            helper.cancel()
            helper.join()
        return process.returncode, said

    def count(self, *disturbances):
        self.counts["runs"] += 1
        for what in filter(None, disturbances):
            self.counts[what] += 1

    def change(self, change, source, other):
        content = self.files[other]
        if change == "vanishes":
            source.unlink()
        elif change == "replaced":
            beside = source.with_name("beside")
            beside.write_bytes(content)
            beside.replace(source)
        elif change == "overwritten":
            source.write_bytes(content)
        else:
            os.truncate(source, self.random.randrange(source.stat().st_size))

    def judge_code(self, code, said, stop, change, is_full):
        allowed = {0}
        if stop == "killed":
            allowed.add(-signal.SIGKILL)
        elif stop:
            # The signal's own number where it came before the program could listen.
            allowed |= {130, -STOPS[stop]}
        if change or is_full:
            allowed.add(1)
        if code not in allowed:
            self.fail(f"exit code {code} after {stop}, {change}, full {is_full}: {said}")
        if code == 1 and not (said.endswith("\n") and len(said) > 10):
            self.fail(f"no sentence: {said!r}")
        self.counts[f"exit code {code}"] += 1

    def judge_output(self, code, target, before, results, change):
        content = target.read_bytes() if target.exists() else None
        if content in results or (code != 0 and content == before):
            return
        # Half the old bytes and half the new ones may be a picture, too, but then a whole one.
        is_mixed = change in ("overwritten", "shrinks")
        if content is None or not is_mixed or not pictures.is_whole(content):
            self.fail(f"exit code {code}, input that {change}: an output that nobody asked for")
        self.counts["outputs of inputs that changed while they were read"] += 1

    def judge_folder(self, folder, stop):
        """A kill may strike between the name beside the target and the target's own."""
        left = [path for path in folder.iterdir() if path.name != "out.png"]
        if stop != "killed" and left:
            self.fail(f"left behind: {left}")
        if not all(pictures.is_whole(path.read_bytes()) for path in left):
            self.fail(f"half a file was left by SIGKILL: {left}")
        self.counts["whole files left by SIGKILL beside their target"] += len(left)

    def batch(self):
        """Many pictures by one process: neither its memory nor its descriptors grow."""
        inputs = self.folder / "inputs"
        inputs.mkdir()
        for number in range(400):
            for name in ("grey257.png", "colour257.jpg", "grey257.tif"):
                (inputs / f"{number}{name}").write_bytes(self.files[name])
        out = self.folder / "results"
        process = subprocess.Popen(
            [self.program, "bandpass", *RING, "--jobs", "2", *inputs.iterdir(), "--out-dir", out],
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
        )
        sizes, descriptors = [], []
        while process.poll() is None:
            try:
                statm = pathlib.Path(f"/proc/{process.pid}/statm").read_text()
                descriptors.append(len(os.listdir(f"/proc/{process.pid}/fd")))
                sizes.append(int(statm.split()[1]) * os.sysconf("SC_PAGE_SIZE"))
            except (OSError, IndexError):
                break  # it has just ended
            time.sleep(0.02)
        if process.wait() != 0 or len(list(out.iterdir())) != 1200:
            self.fail("a batch that was left alone did not succeed")
        half = len(sizes) // 2
        early, late = max(sizes[:half], default=0), max(sizes[half:], default=0)
        if late > early + (4 << 20) or max(descriptors, default=0) > 32:
            self.fail(f"a batch grew from {early} to {late} bytes, {max(descriptors)} descriptors")
        self.counts["pictures in batches"] += 1200
        self.counts["largest growth in the second half of a batch, KiB"] = max(
            self.counts["largest growth in the second half of a batch, KiB"], (late - early) >> 10
        )
        shutil.rmtree(inputs)
        shutil.rmtree(out)


if __name__ == "__main__":
    Soak(sys.argv[1], sys.argv[2], float(sys.argv[3]), int(sys.argv[4])).run()
