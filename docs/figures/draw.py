#!/usr/bin/env python3
"""Draws the figures of the guide around what figures.cpp computed: draw.py RESULTS IMAGES"""

import io
import pathlib
import sys

import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt
import numpy as np
from matplotlib.patches import Rectangle
from PIL import Image

RESULTS, IMAGES = (pathlib.Path(folder) for folder in sys.argv[1:3])
MARK = "tab:orange"
BOX = {"fc": "black", "ec": "none", "alpha": 0.7, "pad": 1.5}  # behind text


def table(name):
    return np.loadtxt(RESULTS / f"{name}.csv", delimiter=",", ndmin=2)


def save(figure, name):
    """As a small file: few colours, and nothing that differs from machine to machine."""
    drawn = io.BytesIO()
    figure.savefig(drawn, dpi=75, bbox_inches="tight")
    plt.close(figure)
    picture = Image.open(drawn).convert("RGB").quantize(96, Image.Quantize.MAXCOVERAGE, dither=Image.Dither.NONE)
    picture.save(IMAGES / f"{name}.png", optimize=True)


def show(axes, image, extent=None, **options):
    """Element (0, 0) at the upper left; `extent` gives the middles of the first and last elements."""
    if extent:
        left, right, top, bottom = extent
        columns, rows = (right - left) / (image.shape[1] - 1), (bottom - top) / (image.shape[0] - 1)
        extent = (left - columns / 2, right + columns / 2, bottom + rows / 2, top - rows / 2)
    axes.imshow(image, extent=extent, cmap="gray", interpolation="nearest", **options)


def coordinates():
    """One spectrum in storage, centred and shifted coordinates."""
    storage, shifted = np.log1p(table("spectrum-storage")), np.log1p(table("spectrum-shifted"))
    n = len(storage)
    u, v = 18, 10
    figure, panels = plt.subplots(1, 3, figsize=(12.6, 4.4), layout="constrained")
    ends = {
        "storage": (storage, (0, n - 1), lambda k: k % n),
        "centred": (shifted, (-n // 2, n // 2 - 1), lambda k: k),
        "shifted": (shifted, (0, n - 1), lambda k: k + n // 2),
    }
    for axes, (name, (image, (first, last), place)) in zip(panels, ends.items()):
        show(axes, image, (first, last, first, last), vmin=0, vmax=8)
        for sign, text in ((1, "w"), (-1, "−w"), (0, "DC")):
            x, y = place(sign * u), place(sign * v)
            axes.plot(x, y, "o", mfc="none", mec=MARK, ms=11, mew=2)
            inwards = -1 if x > (first + last) / 2 else 1
            axes.annotate(f"{text} ({x}, {y})", (x, y), (14 * inwards, 0), color=MARK, weight="bold",
                          textcoords="offset points", ha="left" if inwards > 0 else "right",
                          va="center", bbox=BOX)
        axes.set_title(name)
        axes.set_xlabel("column" if name != "centred" else "u, bins")
        axes.set_ylabel("row" if name != "centred" else "v, bins")
    save(figure, "guide-coordinates")


def units():
    """A ring and a lobe with their parameters, on a plane twice as wide as high."""
    figure, panels = plt.subplots(1, 2, figsize=(12.6, 4.6))
    for axes, name in zip(panels, ("ring", "lobe")):
        image = table(name)
        show(axes, image, (-0.5, 0.5 - 1 / image.shape[1], -0.5, 0.5 - 1 / image.shape[0]),
             aspect="equal")
        axes.set_xlabel("x, cycles per pixel")
        axes.set_ylabel("y, cycles per pixel (downwards)")
        axes.set_title(f"{name}, {image.shape[1]} × {image.shape[0]} bins")
    ring, lobe = panels

    def length(axes, start, end, text, place, colour=MARK):
        axes.annotate("", end, start, arrowprops={"arrowstyle": "<->", "color": colour, "lw": 2})
        axes.annotate(text, place, color=colour, weight="bold", ha="center", bbox=BOX if text else None)

    length(ring, (0, 0), (0.25, 0), "frequency 0.25", (0.09, -0.03))
    length(ring, (0, 0.22), (0, 0.28), "", (0, 0))
    ring.annotate("2 plateau = 0.06", (0.0, 0.345), color=MARK, weight="bold", ha="center")
    ring.annotate("flanks of sigma 0.02", (-0.19, -0.19), (-0.47, -0.42), color=MARK,
                  weight="bold", arrowprops={"arrowstyle": "->", "color": MARK, "lw": 2})
    turn = np.pi / 6
    along, across = np.array([np.cos(turn), np.sin(turn)]), np.array([-np.sin(turn), np.cos(turn)])
    centre = 0.25 * along
    length(lobe, (0, 0), centre, "", (0, 0))
    lobe.annotate("frequency 0.25", (-0.02, 0.13), color=MARK, weight="bold", ha="center")
    lobe.plot([0, 0.3], [0, 0], ":", color=MARK, lw=1.5)
    arc = np.linspace(0, turn, 30)
    lobe.plot(0.17 * np.cos(arc), 0.17 * np.sin(arc), color=MARK, lw=1.5)
    lobe.annotate("angle 30°", (0.14, -0.02), color=MARK, weight="bold", ha="center")
    length(lobe, centre - 0.05 * along, centre + 0.05 * along, "", (0, 0), "tab:cyan")
    lobe.annotate("x: along", centre + 0.07 * along, color="tab:cyan", weight="bold", va="center")
    length(lobe, centre - 0.05 * across, centre + 0.05 * across, "", (0, 0), "tab:green")
    lobe.annotate("y: across", centre + 0.08 * across + (0, 0.03), color="tab:green",
                  weight="bold", ha="center")
    save(figure, "guide-units")


def widths():
    """What sigma and plateau do to the response and to a single bright pel."""
    names = ("sigma 0.004", "sigma 0.03", "sigma 0.004, plateau 0.05")
    figure, (gains, answers) = plt.subplots(1, 2, figsize=(12.6, 3.6))
    for number, name in enumerate(names):
        gain = table(f"width-{number}-response")[0]
        gains.plot(np.arange(len(gain)) / 512, gain, label=name)
        answer = table(f"width-{number}-answer")[0]
        answers.plot(np.arange(-128, 128), answer / answer.max() - 1.5 * number, label=name)
    gains.set(xlim=(0, 0.45), xlabel="cycles per pixel", title="gain of a ring at 0.125")
    answers.set(xlabel="pels from a single bright pel", yticks=[],
                title="what it makes of a single bright pel")
    gains.legend(loc="upper right")
    save(figure, "guide-widths")


def placement():
    """The patch of a lobe in its plane."""
    figure, panels = plt.subplots(1, 3, figsize=(12.6, 4.4), layout="constrained")
    for number, (axes, degrees) in enumerate(zip(panels, (0, 180, 225))):
        image = table(f"placement-{number}")
        show(axes, image, (-32, 31, -32, 31))
        rows, columns = np.nonzero(image)
        left, right, top, bottom = (k - 32 for k in
                                    (columns.min(), columns.max(), rows.min(), rows.max()))
        axes.add_patch(Rectangle((left - 0.5, top - 0.5), right - left + 1, bottom - top + 1,
                                 fill=False, ec="tab:cyan", lw=1.5))
        x, y = (0.21 * 64 * f(np.radians(degrees)) for f in (np.cos, np.sin))
        axes.plot(x, y, "+", color=MARK, ms=12, mew=2)
        axes.set(xlim=(x - 16, x + 16), ylim=(y + 16, y - 16), xlabel="u, bins", ylabel="v, bins",
                 title=f"angle {degrees}°: {right - left + 1} columns × {bottom - top + 1} rows")
    save(figure, "guide-placement")


def mappings():
    """Bytes over values, with the ramp that shows what is peculiar to each mapping."""
    names = ("eMapClip", "eMapAutoScale\n100 to 200", "eMapRange\nlow 20, high 100",
             "eMapLog\n0 to 20", "eMapAngle\nradians")
    figure, panels = plt.subplots(1, 5, figsize=(14, 2.8), sharey=True)
    for number, (axes, name) in enumerate(zip(panels, names)):
        values, bytes_ = table(f"mapping-{number}")
        axes.plot(values, bytes_, ".", ms=2)
        axes.set(title=name, xlabel="value", ylim=(-5, 260), yticks=(0, 128, 255))
    panels[0].set_ylabel("byte")
    save(figure, "guide-mappings")


def pictures(names, titles, columns, size):
    figure, panels = plt.subplots(len(names) // columns, columns, figsize=size, layout="constrained")
    for axes, name, title in zip(panels.flat, names, titles):
        show(axes, plt.imread(RESULTS / f"{name}.png"), vmin=0, vmax=1)
        axes.set_title(title)
        axes.set(xticks=[], yticks=[])
    return figure


def borders():
    """What the library transforms, and what comes of its edge."""
    save(pictures(("plane-0", "border-0", "plane-1", "border-1"),
                  ("padded with zeros: 1024 × 1024", "the filter answers the edge",
                   "padded with its mirror image", "the filter answers the defects"),
                  2, (9, 5.7)), "guide-borders")


def choice():
    """One ring in three widths."""
    save(pictures([f"choice-{i}" for i in range(3)],
                  ("sigma 0.002: everything rings", "sigma 0.012", "sigma 0.06: the weave comes in"),
                  3, (12.6, 3.6)), "guide-choice")


def offsets():
    """A picture with an offset, there and back."""
    figure, panels = plt.subplots(1, 3, figsize=(10.5, 3.8))
    for number, (axes, offset) in enumerate(zip(panels, ((0, 0), (96, 48), (-96, -48)))):
        image = plt.imread(RESULTS / f"offset-{number}.png")
        x, y = offset
        show(axes, image, (x, x + image.shape[1] - 1, y, y + image.shape[0] - 1), vmin=0, vmax=1)
        axes.set_title(f"offset ({x}, {y})".replace("-", "−"))
    save(figure, "guide-offsets")


def band():
    """The rows that a lobe leaves."""
    image = np.log1p(table("band"))
    n = len(image)
    figure, axes = plt.subplots(figsize=(5.2, 5.2))
    show(axes, image, (0, n - 1, 0, n - 1), vmin=0, vmax=9)
    rows = np.nonzero(image.any(axis=1))[0]
    for row, edge in ((rows.min(), "first"), (rows.max(), "last")):
        axes.axhline(row, color=MARK, lw=1.5)
        axes.annotate(f"{edge} row of the band: {row}", (6, row), (0, 6 if edge == "first" else -14),
                      textcoords="offset points", color=MARK, weight="bold")
    axes.set(xlabel="shifted column", ylabel="shifted row", title="spectrum after a lobe")
    save(figure, "guide-band")


if __name__ == "__main__":
    for figure_of in (coordinates, units, widths, placement, mappings, borders, choice, offsets,
                      band):
        figure_of()
