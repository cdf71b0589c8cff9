#!/usr/bin/env python3
"""Makes the test pictures in examples/pictures. Same pels on every run; standard library only."""

import math
import pathlib
import random
import struct
import sys
import zlib


class Picture:
    """A grey picture as rows of floats, nominally 0 .. 255."""

    def __init__(self, width, height, shade):
        self.width, self.height = width, height
        self.rows = [[shade(x, y) for x in range(width)] for y in range(height)]

    def map(self, change):
        for y, row in enumerate(self.rows):
            self.rows[y] = [change(x, y, value) for x, value in enumerate(row)]

    def blur(self):
        """The lens: a 1-2-1 blur in both directions, edge pels repeated."""
        self.rows = [blurred(row) for row in self.rows]
        columns = [blurred(column) for column in zip(*self.rows)]
        self.rows = [list(row) for row in zip(*columns)]


def blurred(line):
    left = [line[0], *line[:-1]]
    right = [*line[1:], line[-1]]
    return [(a + 2 * b + c) / 4 for a, b, c in zip(left, line, right)]


def write_png(path, picture, depth):
    """8-bit pels as they are; 16-bit ones as a 12-bit camera delivers them, in the upper bits."""

    def packed(value):
        if depth == 8:
            return bytes([min(max(round(value), 0), 255)])
        return struct.pack(">H", min(max(round(value * 16), 0), 4095) << 4)

    def chunk(kind, data):
        check = zlib.crc32(kind + data)
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", check)

    step = depth // 8
    lines = bytearray()
    for row in picture.rows:
        raw = b"".join(packed(value) for value in row)
        lines += b"\x01" + raw[:step]  # filter type 1: differences to the pel on the left
        lines += bytes((b - a) & 255 for a, b in zip(raw, raw[step:]))
    header = struct.pack(">IIBBBBB", picture.width, picture.height, depth, 0, 0, 0, 0)
    path.write_bytes(
        b"\x89PNG\r\n\x1a\n"
        + chunk(b"IHDR", header)
        + chunk(b"IDAT", zlib.compress(bytes(lines), 9))
        + chunk(b"IEND", b"")
    )


def blob(x, y, centre, radii, turn=0.0):
    """A smooth bump of height 1 with elliptical half-widths."""
    dx, dy = x - centre[0], y - centre[1]
    u = dx * math.cos(turn) + dy * math.sin(turn)
    v = dy * math.cos(turn) - dx * math.sin(turn)
    return math.exp(-((u / radii[0]) ** 2 + (v / radii[1]) ** 2) / 2)


def uneven_light(x, y, width, height):
    """A lamp at the upper left and the fall-off of the lens towards the corners."""
    u, v = x / width - 0.5, y / height - 0.5
    return 1.0 - 0.22 * u - 0.16 * v - 0.35 * (u * u + v * v)


def finish(picture, rng, noise):
    """Light, lens and sensor."""
    picture.map(lambda x, y, value: value * uneven_light(x, y, picture.width, picture.height))
    picture.blur()
    picture.map(lambda x, y, value: value + rng.gauss(0.0, noise))
    return picture


def woven(width=640, height=480, pitch=7.0):
    """Plain weave with a slack thread, a thin stain and a rubbed spot."""
    rng = random.Random(1)
    warp = [rng.gauss(0.0, 2.5) for _ in range(width)]
    weft = [rng.gauss(0.0, 2.5) for _ in range(height)]

    def shade(x, y):
        # Cloth is never quite straight.
        u = x + 1.6 * math.sin(y / 90.0) + 1.1 * math.sin(x / 140.0 + 1.0)
        v = y + 1.4 * math.sin(x / 110.0 + 2.0) + 0.9 * math.sin(y / 75.0)
        i, across = divmod(u / pitch, 1.0)
        j, along = divmod(v / pitch, 1.0)
        i, j = int(i), int(j)
        warp_on_top = (i + j) % 2 == 0
        if not warp_on_top:
            across, along = along, across
        tone = 168.0 + warp[i % width] if warp_on_top else 150.0 + weft[j % height]
        round_thread = math.sin(math.pi * across) ** 0.8
        bend = 0.72 + 0.28 * math.sin(math.pi * along)
        fibres = rng.gauss(0.0, 6.0)
        return 38.0 + (tone - 38.0) * round_thread * bend + fibres

    def defects(x, y, value):
        slack = blob(x, y, (236, 150), (46, 4.5), 0.02)
        stain = blob(x, y, (452, 318), (11, 8), 0.6)
        rubbed = blob(x, y, (170, 372), (7, 10), 0.2)
        return value * (1.0 + 0.14 * slack - 0.17 * stain + 0.15 * rubbed)

    picture = Picture(width, height, shade)
    picture.map(defects)
    return finish(picture, rng, 2.0)


def printed(width=768, height=576, pitch=5.0):
    """A printed tone under a 45 degree dot screen, with a scratch and two hickeys."""
    rng = random.Random(2)
    turn = math.pi / 4

    def tone(x, y):
        """Ink coverage of the motif: soft rings on a slope."""
        r = math.hypot(x - 0.56 * width, y - 0.5 * height)
        disc = 1.0 / (1.0 + math.exp((r - 170.0) / 14.0))
        core = 1.0 / (1.0 + math.exp((r - 70.0) / 14.0))
        return 0.30 + 0.18 * x / width + 0.24 * disc - 0.22 * core

    def hickey(x, y, centre):
        """A speck of dust: a bare ring round a full dot."""
        r = math.hypot(x - centre[0], y - centre[1])
        return math.exp(-(((r - 9.0) / 3.0) ** 2)) - 0.8 * math.exp(-((r / 4.5) ** 2))

    def scratch(x, y):
        if not 90 <= x <= 330:
            return 0.0
        path = 470.0 - 0.42 * (x - 90) + 5.0 * math.sin(x / 37.0)
        return math.exp(-(((y - path) / 1.8) ** 2)) * min(1.0, (x - 90) / 30, (330 - x) / 30)

    def shade(x, y):
        u = (x * math.cos(turn) + y * math.sin(turn)) / pitch
        v = (y * math.cos(turn) - x * math.sin(turn)) / pitch
        screen = (math.cos(2 * math.pi * u) + math.cos(2 * math.pi * v)) / 4 + 0.5
        coverage = tone(x, y) - 0.30 * scratch(x, y)
        coverage -= 0.26 * (hickey(x, y, (214, 160)) + hickey(x, y, (585, 420)))
        ink = 1.0 / (1.0 + math.exp((1.0 - coverage - screen) * 9.0))
        paper = 226.0 + rng.gauss(0.0, 4.0)
        return paper - 178.0 * ink

    return finish(Picture(width, height, shade), rng, 2.0)


def disc(side=7):
    """A round kernel for `mvfreq convolve`, with a soft rim."""
    middle = side // 2
    return Picture(side, side, lambda x, y: 255 * (middle + 1 - math.hypot(x - middle, y - middle)))


def main():
    default = pathlib.Path(__file__).resolve().parent.parent / "examples" / "pictures"
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else default
    folder.mkdir(parents=True, exist_ok=True)
    cloth = woven()
    write_png(folder / "woven.png", cloth, 8)
    write_png(folder / "woven16.png", cloth, 16)
    write_png(folder / "printed.png", printed(), 8)
    write_png(folder / "disc.png", disc(), 8)


if __name__ == "__main__":
    main()
