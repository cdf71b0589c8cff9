"""Archives, pickles and files."""

import contextlib
import os
import pickle
import resource
import stat

import mvfreq
import numpy as np
import pytest

SIZE = (16, 8)


def buffer():
    return mvfreq.forward_fft(np.random.default_rng(1).random((6, 10)))


def spent():
    made = buffer()
    mvfreq.inverse_fft(made, np.float64, destroy=True)
    return made


FILTERS = {
    "band-pass": lambda: mvfreq.FrequencyFilterBandPass(0.1, 0, 0.2, SIZE, 1),
    "band-reject": lambda: mvfreq.FrequencyFilterBandReject(0.1, 0, 0.2, SIZE, 1),
    "gabor": lambda: mvfreq.FrequencyFilterGabor((0.1, 0.2), (0, 0), 1, 0.2, SIZE, 1),
    "gabor-reject": lambda: mvfreq.FrequencyFilterGaborReject((0.1, 0.2), (0, 0), 1, 0.2, SIZE, 1),
    "image": lambda: mvfreq.FrequencyFilterImage(buffer()),
    "nothing": mvfreq.FrequencyFilterGabor,
}
BUFFERS = {"spectrum": buffer, "spent": spent, "empty": mvfreq.FrequencyBuffer}


@pytest.mark.parametrize("name", FILTERS)
def test_filters_come_back_as_they_were(name, tmp_path):
    made = FILTERS[name]()
    mvfreq.save(tmp_path / "filter.mva", made)
    for back in (
        pickle.loads(pickle.dumps(made)),
        mvfreq.loads(mvfreq.dumps(made)),
        mvfreq.load(tmp_path / "filter.mva"),
    ):
        assert type(back) is type(made) and back == made


@pytest.mark.parametrize("name", BUFFERS)
def test_buffers_come_back_as_they_were(name, tmp_path):
    made = BUFFERS[name]()
    mvfreq.save(tmp_path / "buffer.mva", made)
    for back in (
        pickle.loads(pickle.dumps(made)),
        mvfreq.loads_buffer(mvfreq.dumps(made)),
        mvfreq.load_buffer(tmp_path / "buffer.mva"),
    ):
        assert back == made


def test_a_buffer_s_place_survives(tmp_path):
    xform = mvfreq.Xform(trans=(1, 2))
    image = mvfreq.PelBuffer(np.ones((4, 4)), offset=(3, 4), xform=xform)
    back = mvfreq.PelBuffer(np.float64)
    mvfreq.inverse_fft(pickle.loads(pickle.dumps(mvfreq.forward_fft(image))), back)
    assert (back.offset, back.xform) == ((3, 4), xform)


def test_pickles_hold_archives():
    made = buffer()
    assert mvfreq.dumps(made) in pickle.dumps(made)


def test_the_bytes_are_those_of_the_format():
    record = mvfreq.dumps(FILTERS["band-pass"]())
    name = b"mvFrequencyFilterBandPass"
    assert record[:5 + len(name)] == b"\1" + len(name).to_bytes(4, "little") + name


@pytest.mark.parametrize("make", [FILTERS["gabor"], buffer])
def test_every_cut_is_noticed(make):
    record = mvfreq.dumps(make())
    load = mvfreq.loads_buffer if make is buffer else mvfreq.loads
    for end in range(0, len(record), 7):
        pytest.raises(mvfreq.Truncated, load, record[:end])


def test_null_is_none():
    assert mvfreq.loads(b"\0") is None


def test_a_pickle_with_other_bytes_is_refused():
    damaged = pickle.dumps(FILTERS["gabor"]()).replace(b"\0\0\1", b"\7\0\1", 1)
    pytest.raises(mvfreq.UnknownVersion, pickle.loads, damaged)


@contextlib.contextmanager
def files_of_at_most(most):
    """As on a full disk: no file grows beyond that many bytes."""
    soft, hard = resource.getrlimit(resource.RLIMIT_FSIZE)
    resource.setrlimit(resource.RLIMIT_FSIZE, (most, hard))
    try:
        yield
    finally:
        resource.setrlimit(resource.RLIMIT_FSIZE, (soft, hard))


@pytest.fixture
def archive(tmp_path):
    path = tmp_path / "filter.mva"
    mvfreq.save(path, FILTERS["gabor"]())
    return path


def test_a_full_disk_leaves_the_archive_that_was_there(archive):
    with files_of_at_most(100), pytest.raises(OSError) as caught:
        mvfreq.save(archive, FILTERS["band-pass"]())
    assert caught.value.filename == str(archive)
    assert mvfreq.load(archive) == FILTERS["gabor"]()
    assert os.listdir(archive.parent) == [archive.name]


def test_an_interruption_leaves_the_archive_that_was_there(archive, monkeypatch):
    def interrupt(*_):
        raise KeyboardInterrupt

    monkeypatch.setattr(os, "replace", interrupt)
    with pytest.raises(KeyboardInterrupt):
        mvfreq.save(archive, FILTERS["band-pass"]())
    assert mvfreq.load(archive) == FILTERS["gabor"]()
    assert os.listdir(archive.parent) == [archive.name]


@pytest.mark.parametrize(
    "name, error",
    [("missing/filter.mva", FileNotFoundError), ("filter.mva/filter.mva", NotADirectoryError)],
)
def test_an_error_names_the_file_that_was_to_be_written(archive, name, error):
    path = archive.parent / name
    with pytest.raises(error) as caught:
        mvfreq.save(path, buffer())
    assert (caught.value.filename, caught.value.filename2) == (str(path), None)
    assert os.listdir(archive.parent) == [archive.name]


def test_a_replaced_archive_keeps_its_permissions(archive):
    archive.chmod(0o640)
    mvfreq.save(archive, buffer())
    assert stat.S_IMODE(archive.stat().st_mode) == 0o640


def test_a_link_to_an_archive_stays_one(archive, tmp_path):
    link = tmp_path / "link.mva"
    link.symlink_to(archive)
    mvfreq.save(link, FILTERS["image"]())
    assert link.is_symlink() and mvfreq.load(archive) == FILTERS["image"]()


def test_a_pipe_takes_an_archive(tmp_path):
    pipe = tmp_path / "pipe"
    os.mkfifo(pipe)
    end = os.open(pipe, os.O_RDONLY | os.O_NONBLOCK)
    mvfreq.save(pipe, FILTERS["nothing"]())
    assert mvfreq.loads(os.read(end, 1000)) == FILTERS["nothing"]()
    os.close(end)
