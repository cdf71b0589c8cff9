#!/usr/bin/env python3
"""Turns bench/results into the tables of docs/performance.md and the plots in docs/images.

    report.py                   writes them
    report.py --print FOLDER    prints the tables that the results in FOLDER can fill, and writes nothing
"""
import re
import sys

from aims import TRANSFORMS, aims_table
from measured import (ROOT, Results, best_fftw, debian_time, fftw_time, first_with, is_planning,
                      is_pruned, micro, one_call, ours, ratio, size_text, table, three_calls)

PAGE = ROOT / "docs" / "performance.md"


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
        aim = TRANSFORMS.get(group, {}).get((width, height))
        rows.append([size_text(width, height), micro(mine), micro(best), who,
                     f"**{ratio(mine, best)}**", f"{aim:.2f}" if aim else "",
                     ratio(mine, debian_time(times)),
                     ratio(mine, fftw_time(times, is_planning))])
    return table(["size", "mvfreq, us", "best FFTW, us", "which", "ratio", "aim",
                  "to Debian's FFTW", "to FFTW with planning"], rows)


def others_table(results, group):
    peers = {"FFmpeg": "ffmpeg", "kissfft": "kissfft", "OpenCV": "opencv"}
    rows = []
    for (_, width, height), times in results.group(group).items():
        mine, others = ours(times), [times.get(peer) for peer in peers.values()]
        rows.append([size_text(width, height), micro(mine)] + [micro(t) for t in others] +
                    [ratio(mine, t) for t in others])
    return table(["size", "mvfreq, us"] + [f"{name}, us" for name in peers] +
                 [f"to {name}" for name in peers], rows)


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
        others = [first_with(errors, p) for p in ("fftw-debian", "ffmpeg", "opencv", "kissfft")]
        rows.append([size_text(width, height), f"{ours(errors):.1e}"] +
                    [f"{e:.1e}" if e is not None else "" for e in others])
    return table(["size", "mvfreq", "FFTW", "FFmpeg", "OpenCV", "kissfft"], rows)


def path_table(results, work):
    rows = []
    for (_, width, height), times in results.group("path", work).items():
        path = {p: times.get(f"mvfreq-{p}") for p in ("avx512", "avx2", "baseline", "plain")}
        debian, sse2 = first_with(times, "fftw-debian"), first_with(times, "fftw-sse2")
        rows.append([size_text(width, height)] + [micro(t) for t in path.values()]
                    + [micro(debian), micro(sse2), ratio(path["avx2"], debian),
                       ratio(path["baseline"], sse2), ratio(path["plain"], path["baseline"])])
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
    for (work, width, height), times in results.group(group).items():
        mine, three, (whole, who) = one_call(times), three_calls(times), best_fftw(times)
        pruned, pruned_who = best_fftw(times, is_pruned) or (None, "")
        rows.append([f"{work}, {size_text(width, height)}", micro(mine), micro(three),
                     micro(whole), who, micro(pruned), pruned_who, ratio(mine, three),
                     f"**{ratio(mine, whole)}**", f"**{ratio(mine, pruned)}**" if pruned else "",
                     ratio(mine, fftw_time(times, is_planning)), ratio(mine, times.get("opencv")),
                     ratio(three, whole)])
    return table(["work", "one call, us", "three calls, us", "best FFTW, us", "which",
                  "best FFTW pruned, us", "which", "one call / three calls", "one call / FFTW",
                  "one call / FFTW pruned", "one call / FFTW with planning", "one call / OpenCV",
                  "three calls / FFTW"], rows)


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
    return table(["size", "first call, us", "later calls, us", "ratio"], rows)


def memory_table(results):
    rows = []
    for (work, width, height), sizes in results.group("memory").items():
        way, plane, threads = re.fullmatch(r"(.*) by planes of (\d+) on (\d+)", work).groups()
        rows.append([f"{way}, {size_text(width, height)}", size_text(plane, plane), threads,
                     f"{ours(sizes) / 2**20:.1f}"])
    return table(["pipeline", "plane of the filter", "threads", "MiB beyond image and result"],
                 rows)


def fill(page, name, text):
    block = re.compile(rf"(<!-- {name} -->\n).*?(<!-- end -->)", re.S)
    page, count = block.subn(lambda m: m[1] + text + "\n" + m[2], page)
    if count != 1:
        raise SystemExit(f"{PAGE} has {count} places for {name}")
    return page


TABLES = {
    "machine": machine_table,
    "aims": aims_table,
    "c2c": lambda results: transform_table(results, "c2c"),
    "copy": lambda results: transform_table(results, "copy"),
    "real": lambda results: transform_table(results, "real"),
    "c2c others": lambda results: others_table(results, "c2c"),
    "copy others": lambda results: others_table(results, "copy"),
    "real others": lambda results: others_table(results, "real"),
    "accuracy": accuracy_table,
    "c2c floors": lambda results: floor_table(results, "c2c"),
    "real floors": lambda results: floor_table(results, "real"),
    "c2c paths": lambda results: path_table(results, "c2c"),
    "real paths": lambda results: path_table(results, "real"),
    "band": band_table,
    "pipeline8": lambda results: pipeline_table(results, "pipeline8"),
    "everywhere": lambda results: pipeline_table(results, "everywhere"),
    "pipeline16": lambda results: pipeline_table(results, "pipeline16"),
    "tiles": lambda results: pipeline_table(results, "tiles"),
    "operations": operation_table,
    "process": process_table,
    "memory": memory_table,
}
HEAD_LINES = 2


def print_tables(results):
    for name, table_of in TABLES.items():
        text = table_of(results)
        if len(text.splitlines()) > HEAD_LINES:
            print(f"{name}\n\n{text}\n")


def rewrite_page(results):
    page = PAGE.read_text()
    for name, table_of in TABLES.items():
        page = fill(page, name, table_of(results))
    PAGE.write_text(page)


def main():
    if sys.argv[1:2] == ["--print"]:
        print_tables(Results(sys.argv[2]))
        return
    import plots  # needs matplotlib, which the tables do not
    results = Results()
    rewrite_page(results)
    plots.draw_all(results)


if __name__ == "__main__":
    main()
