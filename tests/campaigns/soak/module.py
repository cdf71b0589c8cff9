#!/usr/bin/env python3
"""One Python process calls the module for hours, while calls are stopped and disks are full.

    module.py SMALL_DISK MINUTES SEED

Each call that ends has the result of the first one with these operands; each that is stopped raises
what stopped it; archives are whole or as they were. The process does not grow: in the last tenth of
the time it has the memory (by the median, since it goes up and down), the descriptors and the threads
of the second tenth. What is in use of that memory is known to the byte, and may hardly grow at all."""

import collections
import contextlib
import ctypes
import gc
import hashlib
import os
import pathlib
import random
import signal
import statistics
import sys
import threading
import time

import mvfreq
import numpy as np
import pictures

PLANE = (128, 128)
GROWTH = 4 << 20  # bytes that the median may move
GROWTH_IN_USE = 1 << 20  # bytes: tables of Python, as that of interned names, double now and then


class Stopped(Exception):
    """What interrupts a call."""


def raise_stopped(*_):
    raise Stopped


def resident():
    statm = pathlib.Path("/proc/self/statm").read_text()
    return int(statm.split()[1]) * os.sysconf("SC_PAGE_SIZE")


class AllocatorNumbers(ctypes.Structure):
    """What mallinfo2 of the C library tells."""

    _fields_ = [
        (name, ctypes.c_size_t)
        for name in (
            "arena ordblks smblks hblks hblkhd usmblks fsmblks uordblks fordblks keepcost".split())
    ]


ALLOCATOR = ctypes.CDLL(None)
ALLOCATOR.mallinfo2.restype = AllocatorNumbers


def in_use():
    """Bytes that were taken from the C library's allocator and not given back."""
    numbers = ALLOCATOR.mallinfo2()
    return numbers.uordblks + numbers.hblkhd


def digest(result):
    if isinstance(result, tuple):
        return tuple(digest(each) for each in result)
    if isinstance(result, np.ndarray):
        return hashlib.sha256(result.tobytes()).digest(), result.shape, str(result.dtype)
    return hashlib.sha256(mvfreq.dumps(result)).digest()


class Operands:
    """Made once: what grows is not theirs."""

    def __init__(self):
        textures = [
            pictures.texture(width, height, seed)
            for seed, (width, height) in enumerate([(40, 30), (128, 128), (200, 90), (640, 480)])
        ]
        self.images = [
            each.astype(kind)
            for each in textures
            for kind in (np.uint8, np.uint16, np.float64)
        ]
        box = np.zeros(PLANE)
        box[:3, :3] = 1 / 9
        self.filters = [
            mvfreq.FrequencyFilterBandPass(
                sigma=0.03, plateau=0, frequency=0.1, size=PLANE, dc_removal_radius=1),
            mvfreq.FrequencyFilterBandReject(
                sigma=0.03, plateau=0.01, frequency=0.2, size=PLANE,
                dc_protection_radius=0),
            mvfreq.FrequencyFilterGabor((0.05, 0.03), (0, 0), 0.4, 0.15, PLANE, 0),
            mvfreq.FrequencyFilterGaborReject((0.05, 0.03), (0, 0), 0.4, 0.15, PLANE, 0),
            mvfreq.FrequencyFilterImage(mvfreq.forward_fft(box)),
        ]


class Soak:
    def __init__(self, small, minutes, seed):
        self.random = random.Random(seed)
        self.begin = time.monotonic()
        self.seconds = 60 * minutes
        self.operands = Operands()
        self.small = pictures.SmallDisk(small)
        self.filler = f"room{seed}"
        self.archive = pathlib.Path(small, f"archives{seed}", "filter.mva")
        self.archive.parent.mkdir()
        self.known = {}
        self.counts = collections.Counter()
        self.kinds = [
            self.filter_image, self.filter_image_into, self.round_trip, self.arithmetic,
            self.angles, self.life_of_a_filter,
        ]

    def passed(self):
        return (time.monotonic() - self.begin) / self.seconds

    # Each gives a key for its operands, and the call.

    def filter_image(self):
        draw = self.random
        image = draw.randrange(len(self.operands.images))
        # No more operands than the table of results has seen in a tenth of the time: it would grow.
        filters = tuple(
            draw.randrange(len(self.operands.filters)) for _ in range(draw.choice([1, 1, 2])))
        border = draw.choice(["mirror", "zero"])
        rescale = draw.random() < 0.3
        threads = draw.randint(1, 3)
        chain = [self.operands.filters[each] for each in filters]
        return (image, filters, border, rescale), lambda: mvfreq.filter_image(
            self.operands.images[image], chain, out="uint16", border=border, rescale=rescale,
            threads=threads)

    def filter_image_into(self):
        image = self.random.randrange(len(self.operands.images))
        kept = self.operands.images[image]

        def call():
            out = kept.copy()
            return mvfreq.filter_image(out, self.operands.filters[0], out=out)

        return image, call

    def round_trip(self):
        image = self.random.randrange(len(self.operands.images))

        def call():
            spectrum = mvfreq.forward_fft(self.operands.images[image])
            view = np.asarray(spectrum)
            total = np.array([abs(view).sum()])
            del view
            return total, mvfreq.inverse_fft(spectrum, np.float64)

        return image, call

    def arithmetic(self):
        kind = self.random.randrange(3)

        def call():
            a = mvfreq.forward_fft(self.operands.images[kind])
            b = mvfreq.loads_buffer(mvfreq.dumps(a))
            mvfreq.frequency_conjugate(a, b)
            mvfreq.frequency_multiply(a, b, b)
            return b

        return kind, call

    def angles(self):
        image = self.random.randrange(len(self.operands.images))
        return image, lambda: mvfreq.inverse_fft_angle(
            mvfreq.forward_fft(self.operands.images[image]))

    def life_of_a_filter(self):
        number = self.random.randrange(len(self.operands.filters))

        def call():
            kept = self.operands.filters[number]
            spectrum = mvfreq.forward_fft(self.operands.images[3])
            mvfreq.loads(mvfreq.dumps(kept)).apply(spectrum)
            return spectrum

        return number, call

    def call(self):
        kind = self.random.choice(self.kinds)
        operands, call = kind()
        key = (kind.__name__, operands)
        if key not in self.known:
            self.known[key] = digest(call())
        way = self.random.choice(["left alone", "cancelled", "interrupted"])
        try:
            with self.disturbance(way):
                result = call()
        except (Stopped, mvfreq.mvStatusException):
            if way == "left alone":
                self.fail("a call that was left alone was stopped")
            self.counts[f"calls {way}"] += 1
            return
        if digest(result) != self.known[key]:
            self.fail(f"another result of {key}, {way}")
        self.counts["calls that ended"] += 1

    @contextlib.contextmanager
    def disturbance(self, way):
        if way == "left alone":
            yield
        elif way == "cancelled":
            left = self.random.randrange(60)

            def asked():
                nonlocal left
                left -= 1
                if left == 0 and self.random.random() < 0.5:
                    raise Stopped
                return left == 0

            with mvfreq.cancel_when(asked):
                yield
        else:
            signal.setitimer(signal.ITIMER_REAL, self.random.uniform(1e-5, 5e-3))
            try:
                yield
            finally:
                signal.setitimer(signal.ITIMER_REAL, 0)

    def archives(self):
        """An archive on a disk that may be full, and that others fill as well."""
        kept, new = self.random.sample(self.operands.filters, 2)
        if not self.is_saved(kept):
            return
        self.small.leave(self.random.randrange(200_000), self.filler)
        if self.is_saved(new):
            kept = new
        if mvfreq.load(self.archive) != kept:
            self.fail("an archive was lost")
        if list(self.archive.parent.glob(".mvfreq-*")):
            self.fail("a temporary file was left behind")
        pathlib.Path(self.small.folder, self.filler).unlink(missing_ok=True)
        self.archives_in_change([kept, new])

    def is_saved(self, made):
        try:
            mvfreq.save(self.archive, made)
        except OSError:
            self.counts["archives that found no room"] += 1
            return False
        self.counts["archives saved"] += 1
        return True

    def archives_in_change(self, two):
        """Another thread replaces the archive, and in the end takes it away, while it is loaded."""

        def replace():
            try:
                for number in range(20):
                    self.is_saved(two[number % 2])
            finally:
                self.archive.unlink()  # which ends the other thread's loop

        other = threading.Thread(target=replace)
        other.start()
        with contextlib.suppress(FileNotFoundError):
            while True:
                if mvfreq.load(self.archive) not in two:
                    self.fail("an archive that nobody saved was loaded")
                self.counts["archives loaded while they were replaced"] += 1
        other.join()

    def measure(self):
        gc.collect()
        ALLOCATOR.malloc_trim(0)  # what the allocator keeps of what it got back is not in use
        descriptors, threads = os.listdir("/proc/self/fd"), os.listdir("/proc/self/task")
        return resident(), in_use(), len(descriptors), len(threads)

    def fail(self, what):
        print(f"module: FAILED: {what}", flush=True)
        os._exit(1)

    def run(self):
        signal.signal(signal.SIGALRM, raise_stopped)
        tenths = [[] for _ in range(10)]
        while self.passed() < 1:
            for _ in range(200):
                self.call()
            self.archives()
            # A thousand in all, since what is noted takes memory itself.
            if sum(map(len, tenths)) < 1000 * self.passed():
                tenths[min(9, int(10 * self.passed()))].append(self.measure())
        self.archive.unlink(missing_ok=True)
        self.archive.parent.rmdir()
        for what, count in sorted(self.counts.items()):
            print(f"module: {what}: {count}")
        self.judge(list(zip(*tenths[1])), list(zip(*tenths[9])))

    def judge(self, before, now):
        """Of the bytes the medians count, of descriptors and threads the most."""
        self.compare("resident bytes", before[0], now[0], statistics.median, GROWTH)
        self.compare("bytes in use", before[1], now[1], statistics.median, GROWTH_IN_USE)
        self.compare("descriptors", before[2], now[2], max, 0)
        self.compare("threads", before[3], now[3], max, 0)

    def compare(self, what, before, now, average, growth):
        first, last = average(before), average(now)
        print(f"module: {what} in the second tenth: {first:.0f}, in the last: {last:.0f}")
        if last > first + growth:
            self.fail(f"its {what} grew")


if __name__ == "__main__":
    Soak(sys.argv[1], float(sys.argv[2]), int(sys.argv[3])).run()
