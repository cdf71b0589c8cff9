"""The exceptions: their classes, numbers and messages."""

import pickle

import mvfreq
import numpy as np
import pytest

NO_BUFFER = "FrequencyBuffer has not been initialized"
NO_FILTER = "FrequencyFilter has not been initialized"
SPENT = "Cannot access frequency data once inverse has been computed."
TOO_LARGE = "Width and Height must be no larger than 2048."
NO_POWER = "Size must be a power of 2."
FREQUENCY = "Frequency must be between 0.0 and 0.5."
WRONG_SIZE = "Size of frequency buffer does not match size of filter."
MISMATCH = "Real and Imaginary {} must have the same {}."

BUFFER = mvfreq.FrequencyBuffer(8, 8)
SMALL = mvfreq.FrequencyBuffer(4, 4)
EMPTY = mvfreq.FrequencyBuffer()
UNBOUND = mvfreq.PelBuffer(np.float64)
A, B = np.zeros((4, 4)), np.zeros((4, 5))


def spent():
    buffer = mvfreq.FrequencyBuffer(8, 8)
    mvfreq.inverse_fft(buffer, np.float64, destroy=True)
    return buffer


def band_pass(sigma=0.1, plateau=0.0, frequency=0.1, size=(8, 8), radius=0):
    return mvfreq.FrequencyFilterBandPass(sigma, plateau, frequency, size, radius)


def band_reject(radius):
    return mvfreq.FrequencyFilterBandReject(0.1, 0, 0.1, (8, 8), radius)


def gabor(sigma=(0.1, 0.1), plateau=(0, 0), radius=0):
    return mvfreq.FrequencyFilterGabor(sigma, plateau, 0, 0.1, (8, 8), radius)


def gabor_reject(radius):
    return mvfreq.FrequencyFilterGaborReject((0.1, 0.1), (0, 0), 0, 0.1, (8, 8), radius)


CASES = [
    (lambda: EMPTY.width, "Uninitialized", NO_BUFFER),
    (lambda: EMPTY.spectrum_view(), "Uninitialized", NO_BUFFER),
    (lambda: EMPTY.get(0, 0), "Uninitialized", NO_BUFFER),
    (lambda: mvfreq.forward_fft(EMPTY), "Uninitialized", NO_BUFFER),
    (lambda: mvfreq.inverse_fft(EMPTY), "Uninitialized", NO_BUFFER),
    (lambda: band_pass().apply(EMPTY), "Uninitialized", NO_BUFFER),
    (lambda: spent().get(0, 0), "InvalidBuffer", SPENT),
    (lambda: spent() + BUFFER, "InvalidBuffer", SPENT),
    (lambda: mvfreq.FrequencyBuffer(2049, 1), "InvalidSize", TOO_LARGE),
    (lambda: mvfreq.forward_fft(np.zeros((1, 2049))), "InvalidSize", TOO_LARGE),
    (lambda: mvfreq.FrequencyBuffer(BUFFER, 1, 8), "InvalidSize", "Copied width must be > 1"),
    (lambda: mvfreq.FrequencyBuffer(BUFFER, 8, 1), "InvalidSize", "Copied height must be > 1"),
    (
        lambda: mvfreq.FrequencyBuffer(BUFFER, 16, 8),
        "InvalidSize",
        "Copied width cannot be greater than source width",
    ),
    (
        lambda: mvfreq.FrequencyBuffer(BUFFER, 8, 16),
        "InvalidSize",
        "Copied height cannot be greater than source height",
    ),
    (lambda: mvfreq.FrequencyBuffer(BUFFER, 6, 8), "InvalidSize", "Unsupported width"),
    (lambda: mvfreq.FrequencyBuffer(BUFFER, 8, 6), "InvalidSize", "Unsupported height"),
    (
        lambda: mvfreq.FrequencyBuffer(A, B),
        "InvalidSize",
        MISMATCH.format("PelBuffers", "dimensions and offset"),
    ),
    (
        lambda: mvfreq.forward_fft(A, B),
        "InvalidSize",
        MISMATCH.format("buffers", "size and offset"),
    ),
    (lambda: mvfreq.FrequencyBuffer(UNBOUND, A), "UnboundWindow", None),
    (lambda: mvfreq.forward_fft(UNBOUND), "UnboundWindow", None),
    (lambda: mvfreq.forward_fft(A, UNBOUND), "UnboundWindow", None),
    (
        lambda: mvfreq.frequency_map_image(UNBOUND, mvfreq.FrequencyMapping.CLIP),
        "UnboundWindow",
        None,
    ),
    (lambda: UNBOUND.pels, "UnboundWindow", None),
    (lambda: BUFFER.get(8, 0), "BadCoord", "Coordinates are out of bounds"),
    (lambda: BUFFER.put(0, -1, 0), "BadCoord", "Coordinates are out of bounds"),
    (lambda: BUFFER + SMALL, "InvalidSize", "Can only add equal-sized frequency buffers."),
    (lambda: BUFFER - SMALL, "InvalidSize", "Can only subtract equal-sized frequency buffers."),
    (lambda: BUFFER * SMALL, "InvalidSize", "Can only multiply equal-sized frequency buffers."),
    (lambda: mvfreq.FrequencyFilterBandPass().sigma, "Uninitialized", NO_FILTER),
    (lambda: mvfreq.FrequencyFilterGabor().patch, "Uninitialized", NO_FILTER),
    (lambda: mvfreq.FrequencyFilterGaborReject().apply(BUFFER), "Uninitialized", NO_FILTER),
    (lambda: band_pass().apply(SMALL), "InvalidSize", WRONG_SIZE),
    (lambda: band_pass(size=(8, 6)), "InvalidSize", NO_POWER),
    (lambda: band_pass(frequency=0.6), "InvalidArgument", FREQUENCY),
    (lambda: band_pass(sigma=0), "InvalidArgument", "Sigma must be positive."),
    (lambda: band_pass(plateau=-1), "InvalidArgument", "Plateau cannot be negative."),
    (lambda: band_pass(radius=-1), "InvalidArgument", "DC Removal Radius cannot be negative."),
    (lambda: band_reject(-1), "InvalidArgument", "DC Protection Radius cannot be negative."),
    (lambda: gabor(sigma=(1, 0)), "InvalidArgument", "Sigma values must be positive."),
    (lambda: gabor(plateau=(0, -1)), "InvalidArgument", "Plateau values cannot be negative."),
    (lambda: gabor(radius=-1), "InvalidArgument", "DC Removal Radius cannot be negative."),
    (lambda: gabor_reject(-1), "InvalidArgument", "DC Protection Radius cannot be negative."),
    (lambda: setattr(band_pass(), "sigma", -1), "InvalidArgument", "Sigma must be positive."),
    (lambda: mvfreq.loads(b""), "Truncated", "The archive ends early."),
    (lambda: mvfreq.loads_buffer(b"\1"), "Truncated", "The archive ends early."),
]


@pytest.mark.parametrize("call, name, message", CASES)
def test_calls_raise_their_class_with_its_message(call, name, message):
    with pytest.raises(mvfreq.mvException) as caught:
        call()
    assert type(caught.value) is getattr(mvfreq, name)
    assert caught.value.message == message
    assert str(caught.value) == (message or "")


NUMBERS = {
    "InvalidArgument": 0x10006300,
    "Uninitialized": 0x10006301,
    "InvalidSize": 0x10006302,
    "UnboundWindow": 0x10006303,
    "InvalidBuffer": 0x10006304,
    "BadCoord": 0x10006305,
}
each_error = pytest.mark.parametrize("name", NUMBERS)


@each_error
def test_errors_have_their_number_and_place_in_the_tree(name):
    error = getattr(mvfreq, name)("text")
    assert error.error_number == NUMBERS[name]
    parents = [parent.__name__ for parent in type(error).__mro__]
    tree = [name, "Errors", "mvExceptionWithString", "mvException"]
    assert [parent for parent in parents if parent in tree] == tree


@pytest.mark.parametrize("arguments", [(), ("",), ("a text",)])
@each_error
def test_errors_survive_archives_and_pickles(name, arguments):
    error = getattr(mvfreq, name)(*arguments)
    for back in (mvfreq.loads(mvfreq.dumps(error)), pickle.loads(pickle.dumps(error))):
        assert type(back) is type(error)
        assert back.message == error.message


def test_python_s_own_classes_catch_them_as_well():
    for builtin, call in [
        (ValueError, lambda: band_pass(sigma=0)),
        (IndexError, lambda: BUFFER.get(9, 9)),
        (EOFError, lambda: mvfreq.loads(b"")),
    ]:
        pytest.raises(builtin, call)


def test_unknown_versions_say_where_they_were_met():
    record = bytearray(mvfreq.dumps(BUFFER))
    record[0] = 9
    with pytest.raises(mvfreq.UnknownVersion) as caught:
        mvfreq.loads_buffer(bytes(record))
    assert (caught.value.text, caught.value.number) == ("filt/fft", 572)
    assert str(caught.value) == "The archive holds a record of an unknown version (filt/fft, 572)."
    assert pickle.loads(pickle.dumps(caught.value)).number == 572


def test_unknown_classes_are_told():
    named = mvfreq.dumps(mvfreq.BadCoord()).replace(b"BadCoord", b"BadCorrd")
    pytest.raises(mvfreq.UnknownClass, mvfreq.loads, named)


def test_other_objects_have_no_archive():
    pytest.raises(TypeError, mvfreq.dumps, 1)


def test_exceptions_of_the_base_library_have_no_number():
    for name in ("mvException", "mvExceptionWithString", "Truncated", "WriteFailed"):
        assert getattr(mvfreq, name).error_number == 0
    assert mvfreq.mvStatusException(7).error_number == 0
