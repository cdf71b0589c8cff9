#!/usr/bin/env python3
"""Makes the pictures that only the examples use, in examples/pictures. Same pels on every run;
standard library only."""

import math
import pathlib
import random
import sys

from make_pictures import Picture, blob, uneven_light, write_png

GLYPHS = {
    "L": "10000 10000 10000 10000 10000 10000 11111",
    "O": "01110 10001 10001 10001 10001 10001 01110",
    "T": "11111 00100 00100 00100 00100 00100 00100",
    "2": "01110 10001 00001 00110 01000 10000 11111",
    "0": "01110 10001 10011 10101 11001 10001 01110",
    "4": "00010 00110 01010 10010 11111 00010 00010",
    "8": "01110 10001 10001 01110 10001 10001 01110",
}


def ink(lines, x, y, scale, left, top, leading):
    """Whether text covers a pel."""
    for number, text in enumerate(lines):
        row, column = (y - top - number * leading) // scale, (x - left) // scale
        if 0 <= row < 7 and 0 <= column < 6 * len(text) and column % 6 < 5:
            return GLYPHS[text[column // 6]].split()[row][column % 6] == "1"
    return False


def label(side=256):
    """A printed label."""

    def shade(x, y):
        frame = 12 <= x < side - 12 and 12 <= y < side - 12
        if not frame:
            return 70.0
        large = ink(["LOT", "2048"], x, y, 8, 36, 36, 72)
        small = ink(["00482", "40280"], x, y, 3, 80, 186, 27)
        return 40.0 if large or small else 200.0

    return Picture(side, side, shade)


def blurred_label():
    """Seen by a lens out of focus."""
    picture = label()
    for _ in range(12):
        picture.blur()
    return picture


def disturbed_label(frequency=0.11, angle=0.45):
    """Seen by a camera with a loose earth wire."""
    picture = label()
    picture.blur()
    across, down = frequency * math.cos(angle), frequency * math.sin(angle)
    picture.map(lambda x, y, v: v + 35.0 * math.cos(2 * math.pi * (across * x + down * y)))
    return picture


def zone_plate(side=256):
    """Rings that grow finer from the left edge's middle outwards, up to 0.45 cycles a pixel."""

    def shade(x, y):
        y -= side / 2
        return 128.0 + 100.0 * math.cos(math.pi * 0.45 / side * (x * x + y * y))

    return Picture(side, side, shade)


def fringes(side=256):
    """Fringes of 8 pixels, thrown on level ground with a dome that moves them by 2.5 fringes."""

    def shade(x, y):
        height = 2.5 * blob(x, y, (side / 2, side / 2), (36, 36))
        return 120.0 + 80.0 * math.cos(2 * math.pi * (0.125 * x + height))

    picture = Picture(side, side, shade)
    picture.map(lambda x, y, v: v * uneven_light(x, y, side, side))
    return picture


def brushed(side=256):
    """Steel brushed in four directions, and in a fifth on a disc; directions across the lines."""
    rng = random.Random(3)
    waves = [
        (rng.uniform(0.09, 0.15), rng.gauss(0.0, 0.06), rng.uniform(0.0, 7.0)) for _ in range(14)
    ]

    def degrees(x, y):
        if math.hypot(x - side / 2, y - side / 2) < 56:
            return 120
        return {(0, 0): 0, (1, 0): 45, (0, 1): 90, (1, 1): 150}[2 * x // side, 2 * y // side]

    def shade(x, y):
        turn = math.radians(degrees(x, y))
        total = 0.0
        for frequency, stray, phase in waves:
            u = x * math.cos(turn + stray) + y * math.sin(turn + stray)
            total += math.cos(2 * math.pi * frequency * u + phase)
        return 128.0 + 14.0 * total

    return Picture(side, side, shade)


def mark(side=24):
    """A ring with a cross in it."""
    middle = (side - 1) / 2

    def shade(x, y):
        dx, dy = abs(x - middle), abs(y - middle)
        ring = abs(math.hypot(dx, dy) - 9.0) < 1.6
        cross = min(dx, dy) < 1.6 and max(dx, dy) < 7.0
        return 190.0 if ring or cross else 60.0

    return Picture(side, side, shade)


MARKS = [(38, 52), (181, 44), (112, 187)]


def board(side=256):
    """A board with three marks, bright pads and traces, under uneven light with noise."""
    rng = random.Random(4)
    pattern = mark()
    pads = [(96, 40), (140, 60), (30, 130), (70, 150), (200, 120), (220, 200), (50, 220)]

    def shade(x, y):
        for left, top in MARKS:
            if 0 <= x - left < pattern.width and 0 <= y - top < pattern.height:
                return pattern.rows[y - top][x - left]
        if any(abs(x - a) < 12 and abs(y - b) < 9 for a, b in pads):
            return 225.0
        return 110.0 if (x + y) % 64 < 3 or 92 <= y < 96 else 60.0

    picture = Picture(side, side, shade)
    picture.map(lambda x, y, v: v * uneven_light(x, y, side, side) + 2 * rng.randint(-2, 2))
    return picture


def web(width=240, height=720):
    """A web of film: thickness that drifts, a scratch along it, and five faults in the coating."""
    rng = random.Random(5)
    faults = [((70, 90), (7, 7), 34), ((170, 205), (13, 5), -30), ((95, 330), (6, 9), 30),
              ((190, 455), (8, 8), -36), ((60, 560), (9, 6), 32)]

    def shade(x, y):
        drift = 10.0 * math.sin(x / 70.0 + 0.6 * math.sin(y / 160.0)) + 6.0 * math.sin(y / 120.0)
        embossed = 9.0 * math.sin(2 * math.pi * x / 6) * math.sin(2 * math.pi * y / 6)
        value = 130.0 + drift + embossed + rng.gauss(0.0, 2.0)
        return value + sum(depth * blob(x, y, middle, radii) for middle, radii, depth in faults)

    return Picture(width, height, shade)


def main():
    default = pathlib.Path(__file__).resolve().parent.parent / "examples" / "pictures"
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else default
    folder.mkdir(parents=True, exist_ok=True)
    for name, picture in {
        "blurred": blurred_label(),
        "disturbed": disturbed_label(),
        "zone": zone_plate(),
        "fringes": fringes(),
        "brushed": brushed(),
        "board": board(),
        "mark": mark(),
        "web": web(),
    }.items():
        write_png(folder / f"{name}.png", picture, 8)


if __name__ == "__main__":
    main()
