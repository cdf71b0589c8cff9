#!/usr/bin/env python3
"""Lays the golden archive files byte by byte, from nothing but the format.

    make_golden.py            writes golden/*.mva beside this script
    make_golden.py --check    compares them with what it would write
"""
import pathlib
import struct
import sys

FOLDER = pathlib.Path(__file__).parent / "golden"


def u8(value):
    return struct.pack("<B", value)


def u32(value):
    return struct.pack("<I", value)


def i32(*values):
    return struct.pack(f"<{len(values)}i", *values)


def f64(*values):
    return struct.pack(f"<{len(values)}d", *values)


def text(value):
    return u32(len(value)) + value.encode("ascii")


def integer_pair(x, y, version=0):
    return u8(version) + i32(x, y)


def double_pair(x, y, version=0):
    return u8(version) + f64(x, y)


def floats(values, version=0):
    return u8(version) + u32(len(values)) + struct.pack(f"<{len(values)}f", *values)


def pointer(name, record):
    return u8(1) + text(name) + record


MATRIX = f64(2, 0.5, -0.25, 3, 7, -9)
PLANE = [0.5 * i - 3 for i in range(16)]  # 4 x 2 elements


def buffer(version=1, transform=u8(0), pair_version=0, floats_version=0, fields=(4, 2, 3, 2, 0, 0, 0),
           inverse=0, offset=(0, 0), plane=None):
    return (u8(version) + i32(*fields) + u8(inverse) + transform + integer_pair(*offset, pair_version)
            + u8(plane is not None) + floats(plane or [], floats_version))


FULL = dict(fields=(4, 2, 3, 2, 1, -3, 9), inverse=1, offset=(-4, 70000), plane=PLANE)


def ring(version=0, base_version=0, initialized=1, pair_version=0, response=None, zero=False):
    numbers = (0.0, 0.0, 0.0) if zero else (0.25, 0.02, 0.01)
    return (u8(version) + u8(base_version) + u8(initialized)
            + (i32(0, 0) if zero else i32(1, 32)) + f64(*numbers)
            + (integer_pair(0, 0) if zero else integer_pair(8, 4, pair_version))
            + i32(0 if zero else 1) + u8(response is not None) + floats(response or []))


PROFILE = [1 - i / 32 for i in range(32)]


def lobe(version=0, base_version=0, initialized=1, pair_version=0, floats_version=0, response=None,
         zero=False):
    return (u8(version) + u8(base_version) + u8(initialized)
            + (i32(0, 0) if zero else i32(3, 3))
            + (f64(0, 0) if zero else f64(0.75, 0.25))
            + (double_pair(0, 0) if zero else double_pair(0.02, 0.03, pair_version))
            + (double_pair(0, 0) if zero else double_pair(0.01, 0.0))
            + (integer_pair(0, 0) if zero else integer_pair(8, 4))
            + i32(0 if zero else 1) + u8(response is not None)
            + floats(response or [], floats_version))


PATCH = [0.125, 0.25, 0.375, 0.5, 1.0, 0.625, 0.75, 0.875, 0.0625]


def image(version=0, base_version=0, initialized=1, held=None):
    return u8(version) + u8(base_version) + u8(initialized) + held


def error(version=0, base_version=0, message=None):
    return u8(version) + u8(base_version) + (u8(0) if message is None else u8(1) + text(message))


def buffer_files():
    yield "buffer-empty.good", buffer(fields=(0, 0, 0, 0, 0, 0, 0))
    yield "buffer-plain.good", buffer(plane=PLANE)
    yield "buffer-full.good", buffer(transform=u8(1) + MATRIX, **FULL)
    yield "buffer-full.old", buffer(version=0, transform=MATRIX, **FULL)
    yield "buffer-full.truncated", buffer(transform=u8(1) + MATRIX, **FULL)[:-3]
    yield "buffer-full-old.truncated", buffer(version=0, transform=MATRIX, **FULL)[:-1]
    yield "buffer-version.unknown", buffer(version=2, plane=PLANE)
    yield "buffer-pair-version.unknown", buffer(pair_version=1, plane=PLANE)
    yield "buffer-floats-version.unknown", buffer(floats_version=1, plane=PLANE)


def filter_files():
    for short, name, record, response in (
            ("band-pass", "mvFrequencyFilterBandPass", ring, PROFILE),
            ("band-reject", "mvFrequencyFilterBandReject", ring, PROFILE),
            ("gabor", "mvFrequencyFilterGabor", lobe, PATCH),
            ("gabor-reject", "mvFrequencyFilterGaborReject", lobe, PATCH)):
        built = pointer(name, record(response=response))
        yield f"{short}-built.good", built
        yield f"{short}-empty.good", pointer(name, record(initialized=0, zero=True))
        yield f"{short}-dropped.good", pointer(name, record())
        yield f"{short}-built.truncated", built[:-2]
        yield f"{short}-version.unknown", pointer(name, record(version=1, response=response))
        yield f"{short}-base-version.unknown", pointer(name, record(base_version=1))
    yield "band-pass-pair-version.unknown", pointer("mvFrequencyFilterBandPass",
                                                    ring(pair_version=1))
    yield "gabor-pair-version.unknown", pointer("mvFrequencyFilterGabor", lobe(pair_version=1))
    yield "gabor-floats-version.unknown", pointer("mvFrequencyFilterGabor",
                                                  lobe(floats_version=1, response=PATCH))


def image_files():
    name = "mvFrequencyFilterImage"
    full = buffer(transform=u8(1) + MATRIX, **FULL)
    yield "image-built.good", pointer(name, image(held=full))
    yield "image-built.old", pointer(name, image(held=buffer(version=0, transform=MATRIX, **FULL)))
    yield "image-empty.good", pointer(
        name, image(initialized=0, held=buffer(fields=(0, 0, 0, 0, 0, 0, 0))))
    yield "image-built.truncated", pointer(name, image(held=full[:-1]))
    yield "image-version.unknown", pointer(name, image(version=1, held=full))
    yield "image-base-version.unknown", pointer(name, image(base_version=1, held=full))
    yield "image-buffer-version.unknown", pointer(name, image(held=buffer(version=2)))


def error_files():
    for short, name, message in (
            ("invalid-argument", "InvalidArgument", "Sigma must be positive."),
            ("uninitialized", "Uninitialized", "FrequencyBuffer has not been initialized"),
            ("invalid-size", "InvalidSize", "Size must be a power of 2."),
            ("unbound-window", "UnboundWindow", None),
            ("invalid-buffer", "InvalidBuffer",
             "Cannot access frequency data once inverse has been computed."),
            ("bad-coord", "BadCoord", "Coordinates are out of bounds")):
        record = pointer("mvFrequencyDefs::" + name, error(message=message))
        yield f"error-{short}.good", record
        yield f"error-{short}.truncated", record[:-1]
    yield "error-bad-coord-version.unknown", pointer("mvFrequencyDefs::BadCoord", error(version=1))
    yield "error-bad-coord-base-version.unknown", pointer("mvFrequencyDefs::BadCoord",
                                                          error(base_version=1))


def pointer_files():
    one = pointer("mvFrequencyDefs::InvalidSize", error(message="Unsupported width"))
    yield "pointer-null.good", u8(0)
    yield "pointer-reference.good", one + u8(2) + u32(0) + u8(0) + one + u8(2) + u32(1)


def all_files():
    for group in (buffer_files, filter_files, image_files, error_files, pointer_files):
        for name, content in group():
            yield FOLDER / (name + ".mva"), content


def main():
    files = dict(all_files())
    if sys.argv[1:] == ["--check"]:
        wrong = [p.name for p, content in files.items()
                 if not p.exists() or p.read_bytes() != content]
        wrong += [p.name for p in FOLDER.glob("*.mva") if p not in files]
        sys.exit("golden files differ: " + ", ".join(sorted(wrong)) if wrong else 0)
    FOLDER.mkdir(exist_ok=True)
    for path, content in files.items():
        path.write_bytes(content)


main()
