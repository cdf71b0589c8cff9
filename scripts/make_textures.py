#!/usr/bin/env python3
"""Makes pictures of surfaces for docs/suggest.md: good ones, and ones with a planted defect.

    make_textures.py FOLDER     NAME.png and NAME-defect.png for each texture; needs numpy

The same pels on every run. Each surface has a soft spot and a scratch of known size and contrast.
"""
import pathlib
import struct
import sys
import zlib

import numpy as np

SIDE = 256
Y, X = np.mgrid[:SIDE, :SIDE].astype(float)
TURN = 2 * np.pi


def smooth(random, radius):
    """Noise of deviation 1 with soft grains of that radius, without a seam."""
    f = np.fft.fftfreq(SIDE)
    window = np.exp(-2 * (np.pi * radius) ** 2 * (f[:, None] ** 2 + f**2))
    grains = np.fft.ifft2(np.fft.fft2(random.normal(size=(SIDE, SIDE))) * window).real
    return grains / grains.std()


def streaks(random, length, width):
    """The same with grains that are long along x."""
    f = np.fft.fftfreq(SIDE)
    window = np.exp(-2 * np.pi**2 * ((width * f[:, None]) ** 2 + (length * f) ** 2))
    grains = np.fft.ifft2(np.fft.fft2(random.normal(size=(SIDE, SIDE))) * window).real
    return grains / grains.std()


def fractal(random, slope):
    """Noise whose amplitude falls with the frequency to that power."""
    f = np.hypot(np.fft.fftfreq(SIDE)[:, None], np.fft.fftfreq(SIDE))
    f[0, 0] = 1
    cloud = np.fft.ifft2(np.fft.fft2(random.normal(size=(SIDE, SIDE))) / f**slope).real
    return cloud / cloud.std()


def light(strength):
    """A lamp on the upper left, and the fall-off of the lens."""
    u, v = X / SIDE - 0.5, Y / SIDE - 0.5
    return 1 - strength * (0.5 * u + 0.35 * v + 0.8 * (u * u + v * v))


def weave(random):
    u, v = (X + 1.5 * np.sin(Y / 70)) / 7, (Y + 1.2 * np.sin(X / 60)) / 7
    on_top = (np.floor(u) + np.floor(v)) % 2 == 0
    across, along = np.where(on_top, u, v) % 1, np.where(on_top, v, u) % 1
    tone = np.where(on_top, 172.0, 150.0)
    threads = 40 + (tone - 40) * np.sin(np.pi * across) ** 0.8 * (0.72 + 0.28 * np.sin(np.pi * along))
    return threads * light(0.3) + random.normal(0, 4, X.shape)


def brushed_metal(random):
    return (150 + 14 * streaks(random, 60, 0.7)) * light(0.2) + random.normal(0, 2, X.shape)


def wood_grain(random):
    rings = np.hypot(X - 400, 3 * (Y - 100)) / 9 + 1.5 * fractal(random, 1.6)
    return 140 + 22 * np.sin(rings) + 6 * streaks(random, 12, 0.8) + random.normal(0, 2, X.shape)


def print_screen(random):
    u, v = (X + Y) / np.sqrt(2) / 5, (X - Y) / np.sqrt(2) / 5
    screen = (np.cos(TURN * u) + np.cos(TURN * v)) / 4 + 0.5
    coverage = 0.4 + 0.12 * X / SIDE
    return 225 - 170 / (1 + np.exp((1 - coverage - screen) * 9)) + random.normal(0, 3, X.shape)


def casting(random):
    return 120 + 12 * smooth(random, 1.2) + 7 * smooth(random, 4) + random.normal(0, 3, X.shape)


def uneven_light(random):
    return 190 * light(0.9) + random.normal(0, 3, X.shape)


def knit(random):
    row = np.floor(Y / 9)
    u = X / 8 + 0.25 * np.sin(TURN * Y / 9) + 0.02 * np.sin(row)
    loops = np.abs(np.sin(np.pi * u)) * (0.6 + 0.4 * np.abs(np.sin(np.pi * Y / 9)))
    return (60 + 120 * loops) * light(0.2) + random.normal(0, 5, X.shape)


def paper(random):
    return 215 + 5 * fractal(random, 0.8) + 3 * streaks(random, 4, 0.7) + random.normal(0, 2, X.shape)


def leather(random):
    creases = np.abs(smooth(random, 3.5)) + 0.5 * np.abs(smooth(random, 2))
    return (95 + 28 * np.tanh(creases)) * light(0.25) + random.normal(0, 2.5, X.shape)


def ground_steel(random):
    turn = X * np.cos(0.5) + Y * np.sin(0.5)
    grooves = np.interp(turn, np.arange(-50, 500, 0.7), random.normal(0, 1, 786))
    return 130 + 15 * grooves + 4 * smooth(random, 1) + random.normal(0, 3, X.shape)


def concrete(random):
    pores = smooth(random, 1.5) > 2.2
    return 150 + 10 * fractal(random, 1.1) - 45 * pores + random.normal(0, 4, X.shape)


def corrugated(random):
    ribs = 40 * np.sin(TURN * X / 16) + 12 * np.sin(TURN * X / 8 + 1)
    return (140 + ribs) * light(0.3) + random.normal(0, 4, X.shape)


def tiles(random):
    joints = np.maximum(np.cos(TURN * X / 32) ** 24, np.cos(TURN * Y / 32) ** 24)
    return 180 - 70 * joints + 3 * fractal(random, 1) + random.normal(0, 2, X.shape)


def camera_noise(random):
    return 128 + random.normal(0, 8, X.shape)


# The radius of the soft spot, the half-width of the scratch, and by how many grey levels both are
# darker than the surface.
TEXTURES = {
    weave: (6, 2, 40), brushed_metal: (4, 2, 45), wood_grain: (3, 1.5, 40), print_screen: (8, 3, 35),
    casting: (12, 3, 35), uneven_light: (16, 2, 12), knit: (8, 3, 60), paper: (3, 1.5, 30),
    leather: (4, 2, 45), ground_steel: (6, 2, 45), concrete: (16, 3, 45), corrugated: (4, 2, 40),
    tiles: (2, 1.5, 50), camera_noise: (3, 1.5, 35),
}


def spot(radius, middle=(SIDE * 0.3, SIDE * 0.35)):
    """A soft spot of contrast 1."""
    return np.exp(-((X - middle[0]) ** 2 + (Y - middle[1]) ** 2) / (2 * radius**2))


def scratch(width):
    """A scratch of contrast 1, eight times as long as wide, along x."""
    return np.exp(-(((X - SIDE * 0.65) / (8 * width)) ** 2 + ((Y - SIDE * 0.7) / width) ** 2) / 2)


def grey(surface):
    return np.clip(np.rint(surface), 0, 255).astype(np.uint8)


def textures():
    """Name, radius of the spot, contrast, the good picture and the one with the defects."""
    for number, (make, (radius, width, contrast)) in enumerate(TEXTURES.items()):
        surface = make(np.random.default_rng(number))
        defects = contrast * (spot(radius) + scratch(width))
        yield make.__name__, radius, contrast, grey(surface), grey(surface - defects)


def chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


def write_png(path, pels):
    lines = np.zeros((pels.shape[0], 1 + pels.shape[1]), np.uint8)  # filter type 0 before each
    lines[:, 1:] = pels
    header = struct.pack(">IIBBBBB", pels.shape[1], pels.shape[0], 8, 0, 0, 0, 0)
    path.write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) +
                     chunk(b"IDAT", zlib.compress(lines.tobytes(), 9)) + chunk(b"IEND", b""))


def main(folder):
    folder = pathlib.Path(folder)
    folder.mkdir(parents=True, exist_ok=True)
    for name, _, _, good, bad in textures():
        write_png(folder / f"{name}.png", good)
        write_png(folder / f"{name}-defect.png", bad)


if __name__ == "__main__":
    main(sys.argv[1])
