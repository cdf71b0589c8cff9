"""What was aimed at, beside what a run measured: ratios of medians, below 1 this library is faster."""
from measured import (best_fftw, fftw_time, is_pruned, one_call, ours, size_text, table,
                      three_calls)

SQUARES = (64, 128, 256, 512, 1024, 2048)
TRANSFORMS = {
    "c2c": {**{(n, n): aim for n, aim in zip(SQUARES, (0.78, 0.78, 0.82, 0.82, 0.65, 0.56))},
            (1024, 256): 0.92, (2048, 64): 0.92, (256, 1024): 0.78},
    "real": {(n, n): aim for n, aim in zip(SQUARES, (0.72, 0.72, 0.70, 0.75, 0.85, 0.80))},
}
RINGS = ("narrow ring", "standard ring", "wide ring")
TO_WHOLE_PLANE = {
    **{(ring, 1024, 1024): aim for ring, aim in zip(RINGS, (0.40, 0.48, 0.62))},
    **{(ring, 1200, 900): aim for ring, aim in zip(RINGS, (0.22, 0.28, 0.42))},
    **{(ring, 512, 512): aim for ring, aim in zip(RINGS, (0.40, 0.46, 0.58))},
    **{(ring, 640, 480): aim for ring, aim in zip(RINGS, (0.40, 0.46, 0.58))},
    ("gabor", 1024, 1024): 0.35, ("image", 1024, 1024): 1.0,
}
TO_PRUNED = 0.95
TO_THREE_CALLS = 0.85
THREE_CALLS_TO_WHOLE_PLANE = 0.80
TILE_TO_PLANE = 1.6
TWO_THREADS_TO_ONE = 0.55


def highest(what, aim, cases):
    """One row for the highest of (ratio, name) pairs; none where there are no cases."""
    for value, name in [max(cases)] if cases else []:
        yield what, f"the highest: {name}", aim, value


def named(contest):
    work, width, height = contest
    return f"{work}, {size_text(width, height)}"


def transforms(results):
    for group, what in (("c2c", "complex / best FFTW"), ("real", "real / best FFTW")):
        for (width, height), aim in TRANSFORMS[group].items():
            if times := results.contest(group, group, width, height):
                yield what, size_text(width, height), aim, ours(times) / best_fftw(times)[0]


def pictures(results):
    pipelines = results.group("pipeline8")
    for contest, aim in TO_WHOLE_PLANE.items():
        if times := pipelines.get(contest):
            yield ("one call / FFTW over the plane", named(contest), aim,
                   one_call(times) / fftw_time(times))
    yield from highest("one call / FFTW pruned by hand, rings to 1024 x 1024", TO_PRUNED,
                       [(one_call(times) / fftw_time(times, is_pruned), named(contest))
                        for contest, times in pipelines.items()
                        if contest[0] in RINGS and max(contest[1:]) <= 1024])
    for contest in ((ring, 1024, 1024) for ring in RINGS):
        if times := pipelines.get(contest):
            yield ("three calls / FFTW over the plane", named(contest),
                   THREE_CALLS_TO_WHOLE_PLANE, three_calls(times) / fftw_time(times))


def calls(results):
    everywhere = results.group("everywhere")
    everything = {**results.group("pipeline8"), **everywhere}
    for what, contests, aim in (
            ("one call / three calls, filters that leave no row or column out", everywhere,
             TO_THREE_CALLS),
            ("one call / three calls, all 8-bit works", everything, 1.0)):
        yield from highest(what, aim, [(one_call(times) / three_calls(times), named(contest))
                                       for contest, times in contests.items()])


def tiles(results):
    for contest, times in results.group("tiles").items():
        pels, plane = contest[1] * contest[2], 1024 * 1024
        yield ("tiles of 1024 with a margin of 100 / one plane, a pel", named(contest),
               TILE_TO_PLANE, one_call(times) / pels / (times["mvfreq-one-plane"] / plane))
    for contest, times in results.group("threads").items():
        yield ("two threads / one", named(contest), TWO_THREADS_TO_ONE,
               times["mvfreq-2-threads"] / times["mvfreq-1-thread"])


def aims_table(results):
    rows = []
    for part in (pictures, calls, tiles, transforms):
        for what, where, aim, value in part(results):
            missed = "" if value < aim + 0.005 else f"{value - aim:.2f}"
            rows.append([what, where, f"{aim:.2f}", f"**{value:.2f}**", missed])
    return table(["ratio", "of", "aim", "measured", "missed by"], rows)
