"""Several threads, and the interpreter lock."""

import copy
import threading
import time
from concurrent.futures import ThreadPoolExecutor

import mvfreq
import numpy as np
import pytest

IMAGE = np.random.default_rng(1).random((256, 256))
FILTER = mvfreq.FrequencyFilterBandPass(0.1, 0, 0.2, (256, 256), 1)


def filtered(_):
    spectrum = mvfreq.forward_fft(IMAGE)
    FILTER.apply(spectrum)
    return mvfreq.inverse_fft(spectrum)


def test_threads_share_a_filter_and_an_image():
    expected = filtered(None)
    with ThreadPoolExecutor(4) as pool:
        for result in pool.map(filtered, range(16)):
            np.testing.assert_array_equal(result, expected)


def test_other_threads_run_during_a_transform():
    """A thread held within a transform by its cancel function lets this one work."""
    inside, go_on = threading.Event(), threading.Event()

    def wait():
        inside.set()
        go_on.wait(60)

    def transform():
        with mvfreq.cancel_when(wait):
            mvfreq.forward_fft(IMAGE)

    other = threading.Thread(target=transform)
    other.start()
    assert inside.wait(60)
    filtered(None)
    go_on.set()
    other.join()


def test_the_lock_is_released_while_a_transform_computes():
    image = np.ones((2048, 2048))
    mvfreq.forward_fft(image)
    counted, stop = [], threading.Event()

    def count():
        while not stop.is_set():
            counted.append(time.perf_counter())
            time.sleep(0.0005)

    other = threading.Thread(target=count)
    other.start()
    during, deadline = 0, time.perf_counter() + 60
    while during <= 5 and time.perf_counter() < deadline:
        begin = time.perf_counter()
        mvfreq.forward_fft(image)
        end = time.perf_counter()
        during += sum(begin < moment < end for moment in list(counted))
    stop.set()
    other.join()
    assert during > 5


class Busy:
    """A thread that holds `call` in the middle of its work."""

    def __init__(self, call):
        self.call = call
        self.inside, self.go_on = threading.Event(), threading.Event()
        self.thread = threading.Thread(target=self.run)

    def run(self):
        with mvfreq.cancel_when(self.wait):
            self.call()

    def wait(self):
        self.inside.set()
        self.go_on.wait(60)

    def __enter__(self):
        self.thread.start()
        assert self.inside.wait(60)

    def __exit__(self, *_):
        self.go_on.set()
        self.thread.join()


def plane():
    return mvfreq.forward_fft(IMAGE)


USES = {
    "width": lambda b: b.width,
    "get": lambda b: b.get(0, 0),
    "put": lambda b: b.put(0, 0, 0),
    "view": lambda b: b.spectrum_view(),
    "magnitudes": lambda b: b.get_magnitude_image(),
    "copy": copy.copy,
    "compare": lambda b: b == b,
    "assign": lambda b: b.assign(mvfreq.FrequencyBuffer()),
    "refill": lambda b: mvfreq.forward_fft(IMAGE, dst=b),
    "inverse": mvfreq.inverse_fft,
    "filter": FILTER.apply,
    "sum": lambda b: b + b,
    "store": mvfreq.dumps,
    "set as image": mvfreq.FrequencyFilterImage,
}
CHANGING = {"put", "assign", "refill", "filter"}


@pytest.mark.parametrize("name", USES)
def test_a_buffer_that_is_being_changed_is_not_to_be_used(name):
    buffer = plane()
    with Busy(lambda: mvfreq.forward_fft(IMAGE, dst=buffer)):
        with pytest.raises(RuntimeError, match="by another call"):
            USES[name](buffer)
    assert buffer == plane()
    USES[name](buffer)


@pytest.mark.parametrize("name", USES)
def test_a_buffer_that_is_being_read_is_not_to_be_changed(name):
    buffer = plane()
    with Busy(lambda: mvfreq.inverse_fft(buffer)):
        if name in CHANGING:
            with pytest.raises(RuntimeError, match="in use by another call"):
                USES[name](buffer)
        else:
            USES[name](buffer)


def test_a_failed_call_leaves_nothing_in_use():
    buffer, small = plane(), mvfreq.FrequencyBuffer(4, 4)
    pytest.raises(mvfreq.InvalidSize, lambda: buffer + small)
    pytest.raises(mvfreq.InvalidSize, FILTER.apply, small)
    buffer.put(0, 0, 1)
    small.put(0, 0, 1)
    other = FILTER.clone()
    pytest.raises(mvfreq.InvalidSize, other.apply, small)
    other.frequency = 0.3
