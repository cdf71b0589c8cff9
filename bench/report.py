#!/usr/bin/env python3
"""Turns bench/results into the tables of docs/performance.md and the plots in docs/images."""
import csv
import pathlib
import re

import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt

ROOT = pathlib.Path(__file__).resolve().parent.parent
RESULTS = ROOT / "bench" / "results"
PAGE = ROOT / "docs" / "performance.md"
IMAGES = ROOT / "docs" / "images"
PLANNED = ("-measure", "-patient", "-two-step", "-in-place")

TARGETS = {
    "c2c": {64: 0.45, 128: 0.50, 256: 0.60, 512: 0.60, 1024: 0.65, 2048: 0.45},
    "real": {64: 0.45, 128: 0.50, 256: 0.50, 512: 0.50, 1024: 0.65, 2048: 0.80},
}


class Results:
    """Median nanoseconds and errors by group, work and size, then by peer."""

    def __init__(self):
        self.medians = {}
        self.errors = {}
        with open(RESULTS / "times.csv", newline="") as lines:
            for row in csv.DictReader(lines):
                key = (row["group"], row["work"], int(row["width"]), int(row["height"]))
                self.medians.setdefault(key, {})[row["peer"]] = float(row["median_ns"])
                self.errors.setdefault(key, {})[row["peer"]] = float(row["error"])
        text = (RESULTS / "machine.txt").read_text()
        self.machine = dict(line.split("=", 1) for line in text.splitlines() if "=" in line)

    def group(self, name, work=None):
        return {k[1:]: v for k, v in self.medians.items()
                if k[0] == name and (work is None or k[1] == work)}


def ours(times):
    return next(t for peer, t in times.items() if peer.startswith("mvfreq"))


def best_fftw(times, wanted=lambda peer: peer.endswith(PLANNED)):
    return min((t, peer) for peer, t in times.items() if peer.startswith("fftw") and wanted(peer))


def micro(nanoseconds):
    us = nanoseconds / 1000
    return f"{us:.1f}" if us < 1000 else f"{us:,.0f}"


def ratio(a, b):
    return f"{a / b:.2f}"


def size_text(width, height):
    return f"{width} x {height}"


def table(head, rows):
    lines = ["| " + " | ".join(head) + " |", "|---" + "|---:" * (len(head) - 1) + "|"]
    return "\n".join(lines + ["| " + " | ".join(row) + " |" for row in rows])


def line_adds(n):
    """Additions of one complex split-radix transform: 16 for each butterfly of four elements."""
    if n < 4:
        return 4 if n == 2 else 0
    return line_adds(n // 2) + 2 * line_adds(n // 4) + 4 * n


def plane_adds(work, width, height):
    if work == "c2c":
        return height * line_adds(width) + width * line_adds(height)
    half = width // 2
    rows = height * (line_adds(half) + 12 * (half // 2 - 1) + 2)
    return rows + (half + 1) * line_adds(height)


def machine_table(results):
    names = {"processor": "processor", "clock_ghz": "clock, measured, GHz",
             "adds_per_ns": "single-precision additions a ns, measured",
             "compiler": "compiler, g++", "fftw-debian": "Debian's FFTW (`fftw-debian`)",
             "fftw-built": "FFTW built for this (`fftw-built`)", "path": "path of this library",
             "priority": "priority", "source": "source", "date": "date"}
    rows = [[text, results.machine[key].replace("--real-time", "real-time")]
            for key, text in names.items() if key in results.machine]
    return table(["", ""], rows).replace("|---:", "|---")


def transform_table(results, group):
    rows = []
    for (_, width, height), times in results.group(group).items():
        mine, (best, who) = ours(times), best_fftw(times)
        debian = best_fftw(times, lambda p: p.startswith("fftw-debian") and p.endswith(PLANNED))[0]
        estimate = best_fftw(times, lambda p: p.endswith("estimate+plan"))[0]
        target = TARGETS[group].get(width) if width == height else None
        rows.append([size_text(width, height), micro(mine), micro(best), who,
                     f"**{ratio(mine, best)}**", f"{target:.2f}" if target else "",
                     ratio(mine, debian), ratio(mine, estimate),
                     ratio(mine, times["opencv"]) if "opencv" in times else "",
                     ratio(mine, times["kissfft"]) if "kissfft" in times else ""])
    return table(["size", "mvfreq, us", "best FFTW, us", "which", "ratio", "aim",
                  "to Debian's FFTW", "to FFTW with planning", "to OpenCV", "to kissfft"], rows)


def floor_table(results, group):
    rate = float(results.machine["adds_per_ns"])
    rows = []
    for (work, width, height), times in results.group(group).items():
        adds = plane_adds(work, width, height)
        arithmetic, memory, mine = adds / rate, 2 * times["copy"], ours(times)
        rows.append([size_text(width, height), f"{adds / 1e6:.2f}", micro(arithmetic),
                     micro(memory), micro(mine), ratio(adds / mine, rate),
                     f"{mine / arithmetic:.1f}", f"{mine / max(arithmetic, memory):.1f}",
                     f"{mine / (arithmetic + memory):.1f}"])
    return table(["size", "additions, millions", "floor of additions, us",
                  "floor of moving, us", "mvfreq, us", "part of the addition rate",
                  "times the first floor", "times the higher floor", "times their sum"], rows)


def accuracy_table(results):
    rows = []
    for (group, _, width, height), errors in results.errors.items():
        if group != "c2c":
            continue
        rows.append([size_text(width, height)] + [f"{errors[peer]:.1e}" if peer in errors else ""
                                                  for peer in ("fftw-debian-measure", "opencv",
                                                               "kissfft")])
        rows[-1].insert(1, f"{ours(errors):.1e}")
    return table(["size", "mvfreq", "FFTW", "OpenCV", "kissfft"], rows)


def path_table(results, work):
    rows = []
    for (_, width, height), times in results.group("path", work).items():
        path = {p.removeprefix("mvfreq-"): t for p, t in times.items() if p.startswith("mvfreq")}
        debian, sse2 = times["fftw-debian-measure"], times.get("fftw-sse2-measure")
        rows.append([size_text(width, height)] + [micro(path[p]) if p in path else "" for p in
                                                  ("avx512", "avx2", "baseline", "plain")]
                    + [micro(debian), micro(sse2) if sse2 else "",
                       ratio(path["avx2"], debian) if "avx2" in path else "",
                       ratio(path["baseline"], sse2) if sse2 else "",
                       ratio(path["plain"], path["baseline"])])
    return table(["size", "avx512, us", "avx2, us", "baseline, us", "plain, us",
                  "Debian's FFTW, us", "FFTW with SSE2, us", "avx2 / Debian's FFTW",
                  "baseline / FFTW with SSE2", "plain / baseline"], rows)


def band_table(results):
    rows = []
    for (_, width, height), times in results.group("band").items():
        band, whole = times["mvfreq an eighth"], times["mvfreq all rows"]
        rows.append([size_text(width, height), micro(band), micro(whole), ratio(band, whole)])
    return table(["size", "an eighth of the rows, us", "all rows, us", "ratio"], rows)


def pipeline_table(results, group):
    rows = []
    for (work, width, height), times in sorted(results.group(group).items()):
        mine, (best, who) = ours(times), best_fftw(times, lambda p: True)
        rows.append([f"{work}, {size_text(width, height)}", micro(mine), micro(best), who,
                     f"**{ratio(mine, best)}**", micro(times.get("opencv", 0)),
                     ratio(mine, times["opencv"]) if "opencv" in times else ""])
    return table(["work", "mvfreq, us", "best FFTW, us", "which", "ratio", "OpenCV, us",
                  "to OpenCV"], rows)


def operation_table(results):
    rows = []
    for (work, width, height), times in results.group("operation").items():
        new = times.get("copy-to-new-memory")
        mine = times["mvfreq"]
        rows.append([f"{work}, {size_text(width, height)}", micro(mine), micro(times["copy"]),
                     ratio(mine, times["copy"]), micro(new) if new else "",
                     ratio(mine, new) if new else ""])
    return table(["operation", "mvfreq, us", "copy, us", "ratio", "copy to new memory, us",
                  "ratio"], rows)


def process_table(results):
    rows = []
    for (_, width, height), times in results.group("first").items():
        first, later = times["first call"], times["later calls"]
        rows.append([size_text(width, height), micro(first), micro(later), ratio(first, later)])
    (extra,) = results.group("memory").values()
    return (table(["size", "first call, us", "later calls, us", "ratio"], rows) +
            f"\n\nPeak memory of the in-place 8-bit band-pass pipeline at 2048 x 2048 beyond the "
            f"plane (32 MiB) and the two images: {ours(extra) / 2**20:.2f} MiB.")


def draw_transforms(results):
    figure, sides = plt.subplots(1, 2, figsize=(11, 4), sharey=True)
    for axes, group in zip(sides, ("c2c", "real")):
        squares = {k[1]: v for k, v in results.group(group).items() if k[1] == k[2]}
        sides_of = sorted(squares)
        curves = {"best FFTW": lambda t: best_fftw(t)[0],
                  "Debian's FFTW": lambda t: best_fftw(
                      t, lambda p: p.startswith("fftw-debian") and p.endswith(PLANNED))[0]}
        for name in ("opencv", "kissfft"):
            if all(name in t for t in squares.values()):
                curves[name] = lambda t, name=name: t[name]
        for label, of in curves.items():
            axes.plot(sides_of, [of(squares[n]) / ours(squares[n]) for n in sides_of],
                      marker="o", label=label)
        axes.axhline(1, color="black", linewidth=1)
        axes.set(xscale="log", yscale="log", xlabel="side, pels", xticks=sides_of,
                 title="complex, in place" if group == "c2c" else "real forward")
        axes.set_xticklabels(sides_of)
        axes.minorticks_off()
        axes.set_yticks([1, 2, 5, 10, 20])
        axes.set_yticklabels(["1", "2", "5", "10", "20"])
        axes.grid(alpha=0.3)
    sides[0].set_ylabel("time of the peer / time of mvfreq")
    sides[0].legend()
    save(figure, "performance-transforms.png")


def draw_bars(results, group, name):
    works = sorted(results.group(group).items())
    figure, axes = plt.subplots(figsize=(11, 4))
    for shift, label, of in ((-0.25, "mvfreq", ours),
                             (0, "best FFTW", lambda t: best_fftw(t, lambda p: True)[0]),
                             (0.25, "OpenCV", lambda t: t.get("opencv", 0))):
        axes.bar([i + shift for i in range(len(works))], [of(t) / 1e6 for _, t in works], 0.25,
                 label=label)
    axes.set(yscale="log", ylabel="ms")
    axes.set_xticks(range(len(works)))
    axes.set_xticklabels([f"{w}\n{x} x {y}" for (w, x, y), _ in works], fontsize=7)
    axes.grid(axis="y", alpha=0.3)
    axes.legend()
    save(figure, name)


def save(figure, name):
    IMAGES.mkdir(parents=True, exist_ok=True)
    figure.tight_layout()
    figure.savefig(IMAGES / name, dpi=110, metadata={"Software": None})
    plt.close(figure)


def fill(page, name, text):
    block = re.compile(rf"(<!-- {name} -->\n).*?(<!-- end -->)", re.S)
    page, count = block.subn(lambda m: m[1] + text + "\n" + m[2], page)
    if count != 1:
        raise SystemExit(f"{PAGE} has {count} places for {name}")
    return page


def main():
    results = Results()
    tables = {
        "machine": machine_table(results),
        "c2c": transform_table(results, "c2c"),
        "real": transform_table(results, "real"),
        "accuracy": accuracy_table(results),
        "c2c floors": floor_table(results, "c2c"),
        "real floors": floor_table(results, "real"),
        "c2c paths": path_table(results, "c2c"),
        "real paths": path_table(results, "real"),
        "band": band_table(results),
        "pipeline8": pipeline_table(results, "pipeline8"),
        "pipeline16": pipeline_table(results, "pipeline16"),
        "operations": operation_table(results),
        "process": process_table(results),
    }
    page = PAGE.read_text()
    for name, text in tables.items():
        page = fill(page, name, text)
    PAGE.write_text(page)
    draw_transforms(results)
    draw_bars(results, "pipeline8", "performance-pipelines-8.png")
    draw_bars(results, "pipeline16", "performance-pipelines-16.png")


if __name__ == "__main__":
    main()
