"""Stopping a transform: Ctrl-C, cancel functions, and what they raise."""

import asyncio
import os
import signal
import threading
import time

import mvfreq
import numpy as np
import pytest

IMAGE = np.ones((64, 64))
FILTER = mvfreq.FrequencyFilterBandPass(0.1, 0, 0.2, (64, 64), 1)
cancel_when = mvfreq.cancel_when


class Refused(Exception):
    """What a cancel function raises."""


def refuse():
    raise Refused("enough")


CALLS = {
    "forward": lambda s: mvfreq.forward_fft(IMAGE),
    "forward of two": lambda s: mvfreq.forward_fft(IMAGE, IMAGE),
    "forward of a plane": lambda s: mvfreq.forward_fft(s),
    "plane of two images": lambda s: mvfreq.FrequencyBuffer(IMAGE, IMAGE),
    "inverse": lambda s: mvfreq.inverse_fft(s, np.uint8),
    "inverse in place": lambda s: mvfreq.inverse_fft(s, np.uint8, destroy=True),
    "inverse plane": lambda s: mvfreq.inverse_fft(s, mvfreq.FrequencyBuffer()),
    "complex": mvfreq.inverse_fft_complex,
    "angle": mvfreq.inverse_fft_angle,
    "quadrant": mvfreq.inverse_fft_quadrant,
    "angle image": mvfreq.compute_angle_image,
    "quadrant image": mvfreq.compute_quadrant_image,
    "picture": lambda s: mvfreq.filter_image(IMAGE, FILTER),
    "picture on threads": lambda s: mvfreq.filter_image(np.tile(IMAGE, (3, 3)), FILTER, threads=3),
    "reach": lambda s: mvfreq.filter_reach(mvfreq.FrequencyFilterImage(s)),
}


@pytest.mark.parametrize("name", CALLS)
def test_every_exception_of_the_function_comes_out(name):
    spectrum = mvfreq.forward_fft(IMAGE)
    for error in (Refused("enough"), KeyboardInterrupt(), SystemExit(3), mvfreq.BadCoord("own")):

        def refuse_so():
            raise error

        with cancel_when(refuse_so), pytest.raises(type(error)) as caught:
            CALLS[name](spectrum)
        assert caught.value is error


@pytest.mark.parametrize(
    "answer, status",
    [(True, 1), (7, 7), (-3, -3), ("yes", 1), (10**30, 2**31 - 1), (-(10**30), -(2**31))],
)
def test_answers_that_are_true_stop_with_their_status(answer, status):
    with cancel_when(lambda: answer), pytest.raises(mvfreq.mvStatusException) as caught:
        mvfreq.forward_fft(IMAGE)
    assert caught.value.status == status
    assert str(caught.value) == f"The operation failed with status {status}."


@pytest.mark.parametrize("answer", [None, False, 0, "", []])
def test_other_answers_let_it_go_on(answer):
    with cancel_when(lambda: answer):
        mvfreq.forward_fft(IMAGE)


def test_an_answer_without_truth_raises_what_it_raises():
    with cancel_when(lambda: np.zeros(2)), pytest.raises(ValueError):
        mvfreq.forward_fft(IMAGE)


def test_each_poll_can_stop():
    polls = []
    with cancel_when(lambda: polls.append(1)):
        mvfreq.forward_fft(IMAGE)
    # Zero padding, 64 rows by 16, 33 or 64 columns by 64.
    assert len(polls) >= 6
    for last in range(1, len(polls) + 1):
        asked = []
        with cancel_when(lambda: asked.append(1) or len(asked) == last):
            pytest.raises(mvfreq.mvStatusException, mvfreq.forward_fft, IMAGE)
        assert len(asked) == last


def test_the_function_counts_for_its_block_alone():
    with cancel_when(refuse):
        with cancel_when(lambda: None):
            mvfreq.forward_fft(IMAGE)
        pytest.raises(Refused, mvfreq.forward_fft, IMAGE)
    mvfreq.forward_fft(IMAGE)


def test_the_function_counts_for_its_thread_alone():
    done = []
    other = threading.Thread(target=lambda: done.append(mvfreq.forward_fft(IMAGE)))
    with cancel_when(refuse):
        other.start()
        other.join()
    assert len(done) == 1


def test_tasks_have_their_own_functions():
    async def stopped():
        with cancel_when(refuse):
            await asyncio.sleep(0)
            pytest.raises(Refused, mvfreq.forward_fft, IMAGE)

    async def free():
        await asyncio.sleep(0)
        mvfreq.forward_fft(IMAGE)

    async def both():
        await asyncio.gather(stopped(), free())

    asyncio.run(both())


def test_the_function_may_transform_itself():
    inner = []
    with cancel_when(lambda: inner.append(mvfreq.forward_fft(IMAGE)) or len(inner) == 3):
        pytest.raises(mvfreq.mvStatusException, mvfreq.forward_fft, IMAGE)
    assert len(inner) == 3 and inner[0] == mvfreq.forward_fft(IMAGE)


def test_the_function_cannot_reach_the_buffer_that_is_being_filled():
    buffer = mvfreq.forward_fft(IMAGE)
    refused = []

    def reach():
        for call in (buffer.spectrum_view, lambda: buffer.width, lambda: buffer.put(0, 0, 0)):
            with pytest.raises(RuntimeError, match="changed by another call"):
                call()
        refused.append(repr(buffer))

    with cancel_when(reach):
        mvfreq.forward_fft(IMAGE, dst=buffer)
    assert set(refused) == {"<FrequencyBuffer in use>"}
    assert buffer == mvfreq.forward_fft(IMAGE)


def test_a_stopped_buffer_can_be_filled_again():
    buffer = mvfreq.forward_fft(IMAGE)
    with cancel_when(refuse):
        pytest.raises(Refused, mvfreq.forward_fft, IMAGE, dst=buffer)
    assert mvfreq.forward_fft(IMAGE, dst=buffer) == mvfreq.forward_fft(IMAGE)


class Interrupt:
    """Sends a signal to this process a moment after each start."""

    def __init__(self, number, delay):
        self.timer = threading.Timer(delay, os.kill, (os.getpid(), number))

    def __enter__(self):
        self.timer.start()

    def __exit__(self, *_):
        self.timer.join()


def test_control_c_stops_a_transform_while_it_runs():
    image = np.random.default_rng(1).random((2048, 2048))
    spectrum = mvfreq.forward_fft(image)
    begin = time.perf_counter()
    mvfreq.forward_fft(spectrum)
    usual = time.perf_counter() - begin
    # The interpreter looks for signals between two calls, too: only a buffer that was left half
    # transformed shows that a call was stopped within.
    deadline = time.perf_counter() + 60
    while time.perf_counter() < deadline:
        plane = mvfreq.forward_fft(image)
        with pytest.raises(KeyboardInterrupt):
            with Interrupt(signal.SIGINT, usual / 4):
                mvfreq.forward_fft(plane, dst=plane)
                time.sleep(10)
        if plane != spectrum and plane != mvfreq.forward_fft(spectrum):
            return
    pytest.fail("no transform was stopped while it ran")


def test_handlers_of_signals_run_and_their_exceptions_come_out():
    def handler(*_):
        raise Refused("signal")

    former = signal.signal(signal.SIGUSR1, handler)
    try:
        image = np.ones((2048, 2048))
        with pytest.raises(Refused), Interrupt(signal.SIGUSR1, 0.005):
            while True:
                mvfreq.forward_fft(image)
    finally:
        signal.signal(signal.SIGUSR1, former)
