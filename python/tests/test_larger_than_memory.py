"""A picture in blocks on several processes: the same bits, whoever dies on the way."""

import os
import signal
import sys
import time
from pathlib import Path

import mvfreq
import numpy as np
import pytest

da = pytest.importorskip("dask.array", reason="Dask is missing (python3-dask)")
distributed = pytest.importorskip("distributed", reason="Dask is missing (python3-distributed)")
dask = pytest.importorskip("dask")

sys.path.insert(0, str(Path(__file__).parents[1] / "examples"))
import larger_than_memory as example  # noqa: E402

RANDOM = np.random.default_rng(3)


def ring(width, height, sigma=0.05):
    return mvfreq.FrequencyFilterBandPass(
        sigma=sigma, plateau=0.01, frequency=0.1, size=(width, height), dc_removal_radius=1
    )


def lobe(width, height):
    return mvfreq.FrequencyFilterGabor(
        sigma=(0.05, 0.2), plateau=(0, 0), angle=0.5, frequency=0.1, size=(width, height),
        dc_removal_radius=0,
    )


def kernel(width, height):
    image = np.zeros((height, width))
    image[:3, :2] = RANDOM.random((3, 2))
    return mvfreq.FrequencyFilterImage(mvfreq.forward_fft(image))


@pytest.mark.parametrize("make", [ring, lobe, kernel])
@pytest.mark.parametrize("plane", [(64, 64), (128, 32), (32, 256)])
@pytest.mark.parametrize("size", [(300, 400), (301, 133), (129, 160), (420, 10), (20, 200)])
def test_blocks_have_the_bits_of_the_whole(make, plane, size):
    picture = RANDOM.integers(0, 256, size[::-1], dtype=np.uint8)
    filter = make(*plane)
    for out in (np.uint8, np.float64):
        blocks = example.filtered(da.from_array(picture, chunks=(50, 70)), filter, out)
        with dask.config.set(scheduler="synchronous"):
            actual = blocks.compute()
        np.testing.assert_array_equal(actual, mvfreq.filter_image(picture, filter, out))


def last_blocks():
    """Lengths whose last block has from one pel to all of them."""
    core = example.core(64, mvfreq.filter_reach(ring(64, 64))[0])
    return [6 * core + last for last in (1, 2, core // 2, core - 1, core)]


@pytest.mark.parametrize("length", last_blocks())
def test_the_last_block_may_have_any_length(length):
    picture = RANDOM.integers(0, 65536, (length, 90), dtype=np.uint16)
    filter = ring(64, 64)
    with dask.config.set(scheduler="synchronous"):
        actual = example.filtered(da.from_array(picture), filter, np.uint16).compute()
    np.testing.assert_array_equal(actual, mvfreq.filter_image(picture, filter, np.uint16))


def test_a_picture_that_its_mirror_image_does_not_fill_is_refused():
    picture = da.from_array(np.zeros((40, 90), np.uint8))
    with pytest.raises(ValueError, match="filter_image takes it at once"):
        example.filtered(picture, ring(64, 64))


class SlowFile(example.NpyFile):
    """Takes its time to write, and leaves a file that says which process wrote a block."""

    def __setitem__(self, place, pels):
        time.sleep(0.2)
        super().__setitem__(place, pels)
        name = f"{os.getpid()}-{place[0].start}-{place[1].start}"
        Path(self.path).parent.joinpath("written", name).touch()


@pytest.fixture
def cluster(tmp_path):
    (tmp_path / "written").mkdir()
    with dask.config.set({"temporary-directory": str(tmp_path)}):
        with distributed.LocalCluster(
            n_workers=2, threads_per_worker=1, dashboard_address=None
        ) as cluster:
            with distributed.Client(cluster):
                yield cluster


@pytest.fixture
def picture(tmp_path):
    pels = RANDOM.integers(0, 256, (400, 500), dtype=np.uint8)
    np.save(tmp_path / "picture.npy", pels)
    return pels


def written(folder):
    """Which processes wrote, and how often."""
    names = [path.name.split("-")[0] for path in (folder / "written").iterdir()]
    return {int(pid): names.count(pid) for pid in names}


def test_two_processes_share_the_work(cluster, picture, tmp_path, monkeypatch):
    monkeypatch.setattr(example, "NpyFile", SlowFile)
    filter = ring(128, 64)
    example.filter_file(tmp_path / "picture.npy", tmp_path / "result.npy", filter)
    np.testing.assert_array_equal(
        np.load(tmp_path / "result.npy"), mvfreq.filter_image(picture, filter)
    )
    assert len(written(tmp_path)) == 2 and os.getpid() not in written(tmp_path)


def kill_a_worker_that_wrote(cluster, folder):
    """Ends one process with work behind it and work before it."""
    while not (pids := written(folder)):
        time.sleep(0.01)
    victim = next(iter(pids))
    assert victim in [nanny.process.pid for nanny in cluster.workers.values()]
    os.kill(victim, signal.SIGKILL)
    return victim


def test_a_worker_that_dies_costs_only_time(cluster, picture, tmp_path):
    np.lib.format.open_memmap(tmp_path / "result.npy", "w+", np.uint8, picture.shape)
    filter = ring(64, 64)
    source = da.from_array(example.NpyFile(tmp_path / "picture.npy"), chunks=(50, 50))
    blocks = example.filtered(source, filter)
    done = da.store(blocks, SlowFile(tmp_path / "result.npy"), lock=False, compute=False).persist()
    victim = kill_a_worker_that_wrote(cluster, tmp_path)
    assert sum(written(tmp_path).values()) < blocks.npartitions / 2
    distributed.wait(done, timeout=120)
    done.compute()
    np.testing.assert_array_equal(
        np.load(tmp_path / "result.npy"), mvfreq.filter_image(picture, filter)
    )
    pids = written(tmp_path)
    assert victim in pids and len(pids) >= 2
