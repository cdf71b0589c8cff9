"""The plots of docs/performance.md."""
import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt

from aims import RINGS
from measured import (ROOT, debian_time, fftw_time, is_pruned, one_call, ours, three_calls)

IMAGES = ROOT / "docs" / "images"
TITLES = {"c2c": "complex, in place", "real": "real forward"}
OTHERS = {"FFmpeg": "ffmpeg", "OpenCV": "opencv", "kissfft": "kissfft"}


def draw_transforms(results):
    figure, sides = plt.subplots(1, 2, figsize=(11, 4), sharey=True)
    for axes, group in zip(sides, TITLES):
        squares = {k[1]: v for k, v in results.group(group).items() if k[1] == k[2]}
        sides_of = sorted(squares)
        curves = {"best FFTW": fftw_time, "Debian's FFTW": debian_time}
        for label, peer in OTHERS.items():
            if all(peer in times for times in squares.values()):
                curves[label] = lambda times, peer=peer: times[peer]
        for label, of in curves.items():
            axes.plot(sides_of, [of(squares[n]) / ours(squares[n]) for n in sides_of],
                      marker="o", label=label)
        axes.axhline(1, color="black", linewidth=1)
        axes.set(xscale="log", yscale="log", xlabel="side, pels", xticks=sides_of,
                 title=TITLES[group])
        axes.set_xticklabels(sides_of)
        axes.minorticks_off()
        axes.set_yticks([1, 2, 5, 10, 20])
        axes.set_yticklabels(["1", "2", "5", "10", "20"])
        axes.grid(alpha=0.3)
    sides[0].set_ylabel("time of the peer / time of mvfreq")
    sides[0].legend()
    save(figure, "performance-transforms.png")


def draw_bars(axes, works):
    bars = {"one call": one_call, "three calls": three_calls, "best FFTW": fftw_time,
            "best FFTW pruned": lambda times: fftw_time(times, is_pruned),
            "OpenCV": lambda times: times.get("opencv")}
    for i, (label, of) in enumerate(bars.items()):
        axes.bar([k + 0.17 * (i - 2) for k in range(len(works))],
                 [(of(times) or 0) / 1e6 for _, times in works], 0.17, label=label)
    axes.set(yscale="log", ylabel="ms")
    axes.set_xticks(range(len(works)))
    axes.set_xticklabels([f"{work}\n{x} x {y}" for (work, x, y), _ in works], fontsize=7)
    axes.grid(axis="y", alpha=0.3)


def draw_pipelines(results, group, name):
    works = list(results.group(group).items())
    rows = [[work for work in works if work[0][0] == ring] for ring in RINGS]
    rows.append([work for work in works if work[0][0] not in RINGS])
    rows = [row for row in rows if row]
    figure, axes = plt.subplots(len(rows), 1, figsize=(11, 2.6 * len(rows)), squeeze=False)
    for side, row in zip(axes[:, 0], rows):
        draw_bars(side, row)
    axes[0, 0].legend(fontsize=8, ncols=5)
    save(figure, name)


def save(figure, name):
    IMAGES.mkdir(parents=True, exist_ok=True)
    figure.tight_layout()
    figure.savefig(IMAGES / name, dpi=110, metadata={"Software": None})
    plt.close(figure)


def draw_all(results):
    draw_transforms(results)
    draw_pipelines(results, "pipeline8", "performance-pipelines-8.png")
    draw_pipelines(results, "pipeline16", "performance-pipelines-16.png")
