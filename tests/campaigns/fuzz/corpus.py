#!/usr/bin/env python3
"""Packs fuzz inputs into one file and back, and makes the first ones.

    corpus.py pack FOLDER FILE     all files of a folder into one, each behind its size
    corpus.py unpack FILE FOLDER   the other way
    corpus.py seed TARGET FOLDER   first inputs: golden archives, kernel headers, command lines
"""
import hashlib
import io
import itertools
import pathlib
import random
import struct
import sys
import zlib

GOLDEN = pathlib.Path(__file__).parent.parent / "archives" / "golden"


def pack(folder, file):
    inputs = sorted((path.read_bytes() for path in pathlib.Path(folder).iterdir()),
                    key=lambda data: (len(data), data))
    pathlib.Path(file).write_bytes(b"".join(struct.pack("<I", len(data)) + data for data in inputs))


def write(folder, inputs):
    folder = pathlib.Path(folder)
    folder.mkdir(parents=True, exist_ok=True)
    for data in inputs:
        (folder / hashlib.sha1(data).hexdigest()).write_bytes(data)


def unpack(file, folder):
    data = pathlib.Path(file).read_bytes()
    inputs = []
    while data:
        size, = struct.unpack_from("<I", data)
        inputs.append(data[4:4 + size])
        data = data[4 + size:]
    write(folder, inputs)


def archives():
    for path in sorted(GOLDEN.glob("*.mva")):
        data = path.read_bytes()
        if path.name.startswith("buffer-"):
            yield b"buffer\n" + data
            continue
        yield b"pointers\n" + data
        if data[0] == 1:  # a new object: its name, then its record
            size, = struct.unpack_from("<I", data, 1)
            yield data[5:5 + size] + b"\n" + data[5 + size:]


def kernel():
    """Every size of up to 2^8 elements, in all directions, with some bands."""
    for columns, rows in itertools.product(range(9), repeat=2):
        if columns + rows > 8:
            continue
        for direction, kernel_kind in ((0, 0), (0, 1), (1, 1)):
            yield bytes([columns, rows, direction, kernel_kind, 2, 3])
            yield bytes([columns, rows, direction, 1, 1, 1]) + struct.pack("<ii", 1, 5)


def pictures():
    """Every filter on some planes with all types, borders and targets, right and wrong options."""
    rng = random.Random(1)
    for types, kind in itertools.product(range(9), range(16)):
        target, flags = (types + kind) % 4, rng.choice((0, 1, 2, 3, 8, 9))
        sides = bytes([rng.randrange(48), rng.randrange(48), rng.randrange(34)])
        offset = struct.pack("<ii", rng.randint(-9, 9), rng.randint(-9, 9))
        memory = bytes([rng.randrange(8), rng.randrange(8)]) + struct.pack("<H", rng.randrange(99))
        fails = bytes([1, rng.randrange(20)] if rng.randrange(4) == 0 else [0])
        margin = struct.pack("bb", rng.randint(-3, 9), rng.randint(-3, 9))
        options = bytes([flags]) + margin + bytes([rng.randrange(8)])
        filter_ = bytes([kind, rng.randrange(256), rng.randrange(6), rng.randrange(6)])
        yield bytes([types]) + sides + offset + memory + bytes([target]) + fails + options + filter_


def chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


def png(width, height, depth, colour, interlace=0, extra=b""):
    channels = {0: 1, 2: 3, 3: 1, 4: 2, 6: 4}[colour]
    if interlace:  # rows of all passes, as many bytes as they can be at most
        pels = bytes(2 * height * (1 + width * channels * max(depth, 8) // 8))
    else:
        size = (width * channels * depth + 7) // 8
        pels = b"".join(bytes([y % 5]) + bytes((31 * x + y) % 256 for x in range(size))
                        for y in range(height))
    header = struct.pack(">IIBBBBB", width, height, depth, colour, 0, 0, interlace)
    palette = chunk(b"PLTE", bytes(range(48))) if colour == 3 else b""
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + palette + extra
            + chunk(b"IDAT", zlib.compress(pels)) + chunk(b"IEND", b""))


def tiff(width, height, channels, depth, order):
    """Samples that are not compressed, in one strip."""
    pels = bytes((7 * i + 3) % 256 for i in range(width * height * channels * depth // 8))
    place = 8 + 2 + 12 * 10 + 4
    bits = depth if channels == 1 else place
    where = place + 8
    tags = [(256, 3, 1, width), (257, 3, 1, height), (258, 3, channels, bits), (259, 3, 1, 1),
            (262, 3, 1, 2 if channels == 3 else 1), (273, 4, 1, where), (274, 3, 1, 6),
            (277, 3, 1, channels), (278, 3, 1, height), (279, 4, 1, len(pels))]
    head = {"<": b"II*\0", ">": b"MM\0*"}[order] + struct.pack(order + "IH", 8, len(tags))
    for tag, kind, count, value in tags:
        short = kind == 3 and count == 1
        head += struct.pack(order + "HHI", tag, kind, count)
        head += struct.pack(order + ("HH" if short else "I"), *((value, 0) if short else (value,)))
    return head + bytes(4) + struct.pack(order + "4H", depth, depth, depth, 0) + pels


def bmp(width, height, bits, head=40, compression=0):
    palette = bytes(range(4 << bits)) if bits <= 4 else bytes(4 << bits if bits <= 8 else 0)
    masks = struct.pack("<III", 0xf800, 0x7e0, 0x1f) if compression == 3 else b""
    rows = bytes((width * bits + 31) // 32 * 4 * abs(height))
    return (b"BM" + struct.pack("<IIIIiiHHIIiiII", 0, 0, 14 + head + len(palette) + len(masks), head,
                                width, height, 1, bits, compression, 0, 0, 0, 0, 0)
            + masks + palette + rows)


def others():
    """Pictures of the other kinds."""
    from PIL import Image  # only seeds need it
    for order, channels, depth in itertools.product("<>", (1, 3), (8, 16)):
        yield tiff(5, 3, channels, depth, order)
    yield from (bmp(5, 3, bits) for bits in (1, 4, 16, 24, 32))
    yield bmp(5, -3, 16, compression=3)
    yield b"P2\n# text\n3 2\n1000\n1 2 3 4 5 1000\n"
    yield b"P3 1 2 255 1 2 3 4 5 6\n"
    yield b"P5\n# mvfreq\n3 2\n255\n123456"
    yield b"P6 1 2 65535\n123456789012"
    for mode, progressive in itertools.product(("L", "RGB"), (False, True)):
        file, exif = io.BytesIO(), Image.Exif()
        exif[0x112] = 6
        Image.new(mode, (9, 7)).save(file, "JPEG", exif=exif, progressive=progressive, optimize=True)
        yield file.getvalue()
    for compression in ("tiff_lzw", "tiff_adobe_deflate", "packbits", "jpeg", "group4"):
        file = io.BytesIO()
        Image.new("1" if compression == "group4" else "RGB", (9, 7)).save(
            file, "TIFF", compression=compression)
        yield file.getvalue()


def program():
    for picture in others():
        yield b"\0" + picture
        yield b"bandreject\n--frequency\n0.2\n--sigma\n0.1\n--rescale\nf\nout.tif\0" + picture
    depths = {0: (1, 2, 4, 8, 16), 2: (8, 16), 3: (1, 2, 4, 8), 4: (8, 16), 6: (8, 16)}
    for colour in depths:
        for depth, interlace in itertools.product(depths[colour], (0, 1)):
            yield b"\0" + png(5, 3, depth, colour, interlace)
    yield b"\0" + png(5, 3, 8, 0, 0, chunk(b"tRNS", b"\0\1") + chunk(b"gAMA", b"\0\0\x80\0"))
    yield b"\0" + png(2049, 1, 1, 0)
    ring = "--frequency 0.1 --sigma 0.1 --plateau 0.05 --dc-radius 1"
    lobe = ring + " --angle 30 --sigma-across 0.2 --plateau-across 0.01"
    for command in (f"bandpass {ring} f out", f"bandreject {ring} --border zero --rescale f out",
                    f"gabor {lobe} --angle-image angle --quadrant-image quadrant f out",
                    f"gaborreject {lobe} --save filter f out", "convolve --kernel f good.png out",
                    "convolve --kernel good.png f out", "spectrum --border zero f out",
                    "spectrum --axes f out", f"bandpass {ring} --out-dir d --jobs 2 f good.png",
                    f"gaborreject {lobe} --both-sides then bandpass {ring} f out.tif",
                    f"bandreject {ring} --channels each --list f out.ppm",
                    f"bandpass {ring} --json --overlay frames.png f out.pgm", "info f",
                    "bandpass --help", "--help", "--version", "gabor --sigma=nan"):
        for picture in (png(7, 6, 8, 0), png(3, 4, 16, 2), png(1, 9, 8, 0), png(17, 1, 1, 0)):
            yield command.replace(" ", "\n").encode() + b"\0" + picture
    for command in ("suggest --direction 90 --radius 2 f", "peaks f", "peaks --most 3 --json f"):
        yield command.replace(" ", "\n").encode() + b"\0" + png(36, 33, 8, 0)
    for path in sorted(GOLDEN.glob("*.good.mva")):
        for command in (b"info\nf", b"view\n--axes\nf\nout", b"apply\nf\ngood.png\nout"):
            yield command + b"\0" + path.read_bytes()


def main():
    commands = {"pack": pack, "unpack": unpack}
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    command, first, second = sys.argv[1:]
    if command == "seed":
        write(second, {"archives": archives, "kernel": kernel, "pictures": pictures,
                       "program": program}[first]())
    else:
        commands[command](first, second)


if __name__ == "__main__":
    main()
