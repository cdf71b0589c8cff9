"""Archives, pickles and files."""

import pickle

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
