"""What a run measured: bench/results, and the choice of peers in a contest."""
import csv
import pathlib

ROOT = pathlib.Path(__file__).resolve().parent.parent
RESULTS = ROOT / "bench" / "results"


class Results:
    """Median nanoseconds and errors by group, work and size, then by peer."""

    def __init__(self, folder=RESULTS):
        self.medians = {}
        self.errors = {}
        with open(pathlib.Path(folder) / "times.csv", newline="") as lines:
            for row in csv.DictReader(lines):
                key = (row["group"], row["work"], int(row["width"]), int(row["height"]))
                self.medians.setdefault(key, {})[row["peer"]] = float(row["median_ns"])
                self.errors.setdefault(key, {})[row["peer"]] = float(row["error"])
        text = (pathlib.Path(folder) / "machine.txt").read_text()
        self.machine = dict(line.split("=", 1) for line in text.splitlines() if "=" in line)

    def group(self, name, work=None):
        return {k[1:]: v for k, v in self.medians.items()
                if k[0] == name and (work is None or k[1] == work)}

    def contest(self, group, work, width, height):
        """Nothing where the run did not hold it."""
        return self.medians.get((group, work, width, height))


def ours(times):
    return next(t for peer, t in times.items() if peer.startswith("mvfreq"))


def one_call(times):
    return times["mvfreq-one-call"]


def three_calls(times):
    return times["mvfreq-three-calls"]


def is_planning(peer):
    """FFTW that makes its plans within the run."""
    return peer.endswith("+plan")


def is_pruned(peer):
    return "-pruned-" in peer


def is_whole(peer):
    """FFTW over the whole plane, with plans from before."""
    return not is_planning(peer) and not is_pruned(peer)


def best_fftw(times, wanted=is_whole):
    """The least time and its peer; None without any."""
    return min(((t, peer) for peer, t in times.items() if peer.startswith("fftw") and wanted(peer)),
               default=None)


def fftw_time(times, wanted=is_whole):
    found = best_fftw(times, wanted)
    return found[0] if found else None


def debian_time(times):
    return fftw_time(times, lambda peer: peer.startswith("fftw-debian") and is_whole(peer))


def first_with(times, prefix):
    return next((t for peer, t in times.items() if peer.startswith(prefix)), None)


def micro(nanoseconds):
    if nanoseconds is None:
        return ""
    us = nanoseconds / 1000
    return f"{us:.1f}" if us < 1000 else f"{us:,.0f}"


def ratio(a, b):
    return "" if a is None or b is None else f"{a / b:.2f}"


def size_text(width, height):
    return f"{width} x {height}"


def table(head, rows):
    lines = ["| " + " | ".join(head) + " |", "|---" + "|---:" * (len(head) - 1) + "|"]
    return "\n".join(lines + ["| " + " | ".join(row) + " |" for row in rows])
