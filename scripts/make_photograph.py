#!/usr/bin/env python3
"""Makes a photograph of 12 megapixels, as a camera would take it of a cloth that lies in folds.

    make_photograph.py PHOTO.png        4000 x 3000 pels, the same on every run; needs numpy

Four threads or knots are wrong in it. The threads are 9 pixels apart.
"""
import struct
import sys
import zlib

import numpy as np

WIDTH, HEIGHT, PITCH = 4000, 3000, 9.0
# Middle, half-widths and how much brighter than the cloth.
FAULTS = (
    ((620, 410), (60, 8), 0.16),
    ((2910, 760), (14, 14), -0.20),
    ((1480, 1930), (12, 18), 0.18),
    ((3420, 2540), (16, 12), -0.18),
)


def weave(x, y):
    """Plain weave; threads bend with the folds."""
    u = (x + 14 * np.sin(y / 410) + 5 * np.sin(x / 530)) / PITCH
    v = (y + 11 * np.sin(x / 470) + 4 * np.sin(y / 350)) / PITCH
    on_top = (np.floor(u) + np.floor(v)) % 2 == 0
    across, along = np.where(on_top, u, v) % 1, np.where(on_top, v, u) % 1
    tone = np.where(on_top, 176.0, 158.0)
    return 40 + (tone - 40) * np.sin(np.pi * across) ** 0.8 * (0.74 + 0.26 * np.sin(np.pi * along))


def light(x, y):
    """A window on the left, folds, and the fall-off of the lens."""
    u, v = x / WIDTH - 0.5, y / HEIGHT - 0.5
    folds = 0.06 * np.sin(x / 310 + y / 520) + 0.05 * np.sin(x / 240 - y / 610)
    return 1.0 - 0.35 * u - 0.1 * v - 0.6 * (u * u + v * v) + folds


def bump(x, y, middle, radii):
    return np.exp(-(((x - middle[0]) / radii[0]) ** 2 + ((y - middle[1]) / radii[1]) ** 2) / 2)


def rows(random, top, count):
    """Some rows of the photograph; `random` is the sensor's noise."""
    y, x = np.mgrid[top : top + count, 0:WIDTH].astype(float)
    value = weave(x, y) * light(x, y)
    for middle, radii, strength in FAULTS:
        value *= 1 + strength * bump(x, y, middle, radii)
    noise = random.integers(-5, 6, x.shape)
    return np.clip(np.rint(value + noise), 0, 255).astype(np.uint8)


def chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


def main(path):
    random = np.random.default_rng(12)
    packer = zlib.compressobj(1)
    packed = b""
    for top in range(0, HEIGHT, 250):
        pels = rows(random, top, 250)
        lines = np.zeros((len(pels), 1 + WIDTH), np.uint8)  # filter type 0 before each
        lines[:, 1:] = pels
        packed += packer.compress(lines.tobytes())
    packed += packer.flush()
    with open(path, "wb") as file:
        file.write(b"\x89PNG\r\n\x1a\n")
        file.write(chunk(b"IHDR", struct.pack(">IIBBBBB", WIDTH, HEIGHT, 8, 0, 0, 0, 0)))
        file.write(chunk(b"IDAT", packed) + chunk(b"IEND", b""))


if __name__ == "__main__":
    main(sys.argv[1])
