"""The test programs that judge a source."""
from pathlib import Path

ROOT = Path(__file__).resolve().parents[3]

# By the beginning of its path; the first that fits counts.
OF_PICTURES = ["freqfilt_picture_test", "freqfilt_memory_test", "freqfilt_test", "model_test",
               "results_digest", "faults_test"]
OF_PASSES = ["fft_kernel_test", "results_digest", "fft_transforms_test", "fft_round_trip_test",
             "faults_test"]
PROGRAMS = [
    ("filt/fft/internal/kernel/paths/twiddles", ["fft_kernel_test", "results_digest"]),
    ("filt/fft/internal/kernel/paths", OF_PASSES),
    *((f"filt/fft/internal/kernel/{name}", [*OF_PASSES, "fft_memory_test", "freqfilt_picture_test",
                                            "freqfilt_memory_test"])
      for name in ("cleared_gain", "filtered_plane", "inverse_columns", "plane_output", "spectrum")),
    ("filt/fft/internal/kernel/path.cpp", ["fft_path_test", *OF_PASSES]),
    ("filt/fft/internal/kernel", [*OF_PASSES, "fft_memory_test"]),
    ("filt/fft/arithmetic", ["arithmetic_test", "numbers_test", "results_digest", "faults_test"]),
    ("filt/fft/map_image", ["arithmetic_test", "numbers_test", "results_digest", "faults_test"]),
    ("filt/fft/errors", ["fft_buffer_test", "fft_archive_test", "archive_test", "faults_test"]),
    ("filt/fft/internal/archive", ["fft_archive_test", "archive_test", "freqfilt_archive_test",
                                   "faults_test"]),
    ("filt/fft/buffer_archive", ["fft_archive_test", "archive_test", "fft_transforms_test",
                                 "faults_test"]),
    ("filt/fft/internal/spatial_plane", ["fft_transforms_test", "numbers_test", *OF_PICTURES]),
    ("filt/fft", ["fft_buffer_test", "fft_transforms_test", "fft_archive_test", "archive_test",
                  "arithmetic_test", "freqfilt_test", "freqfilt_archive_test", "numbers_test",
                  "results_digest", "fft_round_trip_test", "fft_memory_test", "model_test",
                  "faults_test"]),
    *((f"filt/freqfilt/{name}", OF_PICTURES)
      for name in ("filter_image", "internal/border", "internal/filter_list", "internal/half_filters",
                   "internal/image_reach", "internal/known_filters", "internal/picture_plan",
                   "internal/planeless_tile", "internal/shared_pels", "internal/three_calls",
                   "internal/tile_threads", "internal/tiling")),
    ("filt", ["freqfilt_test", "freqfilt_archive_test", "archive_test", "registration_test",
              "numbers_test", "results_digest", "freqfilt_picture_test", "freqfilt_memory_test",
              "model_test", "faults_test"]),
]
PASSES = "filt/fft/internal/kernel/paths/"
# Of the table of all paths, where passes are tried with one path alone.
OF_THE_TABLE = "KernelPaths.*"
# Their tests that take seconds, a step each.
SLOW = {
    "archive_test": "*AnyTwoIntegers*:*AnyByteFlipped*:*OfTheLargestPlane*:SidesOfABuffer.CostNoMore*",
    "freqfilt_test": "FilterComparison/*",
    "fft_kernel_test": "*ForAllSizes*:*ComplexKernelOnRealInput*",
    "faults_test": "*/Pictures",
}


def steps_for(file):
    """Pairs of a program and its arguments."""
    programs = next(programs for prefix, programs in PROGRAMS if file.startswith(prefix))
    others = OF_THE_TABLE if file.startswith(PASSES) else ""
    steps = []
    for name in programs:
        if name == "results_digest":
            steps.append((name, (str(ROOT / "tests/campaigns/digests/results.digest"),)))
        else:
            steps.append((name, ("--gtest_fail_fast", f"--gtest_filter=-{SLOW.get(name, '')}:{others}")))
    return steps + [(name, ("--gtest_fail_fast", f"--gtest_filter={tests}"))
                    for name, tests in SLOW.items() if name in programs]
