"""What a call says of itself: signatures that can be asked for, errors that name the argument."""

import inspect
import pickle
import pydoc

import mvfreq
import numpy as np
import pytest

IMAGE = np.zeros((5, 6), np.uint8)


def ring(sigma=0.1, frequency=0.1, size=(16, 16)):
    return mvfreq.FrequencyFilterBandPass(
        sigma=sigma, plateau=0, frequency=frequency, size=size, dc_removal_radius=0
    )


SIGNATURES = [
    (mvfreq.filter_image, "(image, filter, out='uint8', *, border='mirror', result='magnitude', "
                          "rescale=False, margin=None, threads=1)"),
    (mvfreq.forward_fft, "(image, imaginary=None, *, dst=None)"),
    (mvfreq.inverse_fft, "(src, out='float64', *, rescale=False, destroy=False)"),
    (mvfreq.frequency_map_image, "(src, mapping, low=0.0, high=0.0)"),
    (mvfreq.FrequencyBuffer, "(width, height)"),
    (mvfreq.FrequencyBuffer.get, "(self, x, y, centred=False)"),
    (mvfreq.PelBuffer, "(pels, offset=(0, 0), xform=None)"),
    (mvfreq.FrequencyFilterBandPass, "(sigma, plateau, frequency, size, dc_removal_radius)"),
    (mvfreq.FrequencyFilterGaborReject.set,
     "(self, sigma, plateau, angle, frequency, size, dc_protection_radius)"),
    (mvfreq.RingParameters, "(sigma=0.0, plateau=0.0, frequency=0.0, size=(0, 0), dc_radius=0)"),
]


@pytest.mark.parametrize("call, text", SIGNATURES)
def test_signatures_show_names_and_defaults(call, text):
    assert str(inspect.signature(call)) == text


def test_every_public_call_has_a_signature():
    for name in mvfreq.__all__:
        value = getattr(mvfreq, name)
        if not callable(value) or value is mvfreq.FrequencyFilter:
            continue
        if isinstance(value, type) and issubclass(value, Exception):
            continue
        assert inspect.signature(value), name


def test_help_shows_names_and_defaults_and_nothing_of_the_compiled_part():
    calls = mvfreq.filter_image, mvfreq.inverse_fft, mvfreq.FrequencyFilterBandPass.__init__
    for call in calls:
        text = pydoc.plaintext.document(call)
        assert str(inspect.signature(call)) in text
        assert "arg0" not in text and "_core." not in text


ERRORS = [
    (lambda: mvfreq.filter_image(IMAGE, "ring"),
     "filter must be a FrequencyFilter or a list of them, not str"),
    (lambda: mvfreq.filter_image(IMAGE), "filter_image: missing a required argument: 'filter'"),
    (lambda: mvfreq.filter_image(IMAGE, ring(), bordr="zero"),
     "filter_image: got an unexpected keyword argument 'bordr'"),
    (lambda: mvfreq.filter_image(IMAGE, ring(), threads=1.5),
     "filter_image: threads must be a whole number, not float"),
    (lambda: mvfreq.filter_image(IMAGE, ring(), margin="3"),
     "margin must be None, a whole number or two of them, not '3'"),
    (lambda: mvfreq.filter_image(IMAGE, ring(), margin=(1, 2, 3)),
     "margin must be None, a whole number or two of them, not (1, 2, 3)"),
    (lambda: mvfreq.filter_image(IMAGE, ring(), out=5),
     "out: An image must be a numpy array, a PelBuffer or a dtype, not int"),
    (lambda: mvfreq.filter_image(IMAGE, ring(), out=np.float32),
     "out: Pels must be uint8, uint16 or float64, not float32"),
    (lambda: mvfreq.filter_image(IMAGE[0], ring()),
     "image: An image must have two dimensions, rows and columns, not 1"),
    (lambda: mvfreq.forward_fft(IMAGE, IMAGE.astype(float)),
     "imaginary: Pels must be uint8, not float64"),
    (lambda: mvfreq.forward_fft(IMAGE, dst=5),
     "dst: A spectrum goes into a FrequencyBuffer, not int"),
    (lambda: mvfreq.forward_fft([[1.0]]),
     "image: An image must be a numpy array or a PelBuffer, not list"),
    (lambda: mvfreq.frequency_add(mvfreq.FrequencyBuffer(4, 4), mvfreq.FrequencyBuffer(4, 4), 1),
     "result: A spectrum goes into a FrequencyBuffer, not int"),
    (lambda: ring(size=16), "FrequencyFilterBandPass: size must be two whole numbers, not int"),
    (lambda: ring(frequency="0.1"),
     "FrequencyFilterBandPass: frequency must be a number, not str"),
    (lambda: mvfreq.FrequencyFilterBandPass(0.1, 0),
     "FrequencyFilterBandPass: missing a required argument: 'frequency'"),
    (lambda: ring().set(0.1, 0, 0.1, (16.5, 16), 0),
     "set: size must be two whole numbers, not tuple"),
    (lambda: setattr(ring(), "sigma", "wide"), "sigma must be a number, not str"),
    (lambda: setattr(mvfreq.LobeParameters(), "sigma", 0.1), "sigma must be two numbers, not float"),
    (lambda: setattr(mvfreq.PelBuffer(IMAGE), "xform", 1), "xform must be an Xform or None, not int"),
    (lambda: mvfreq.FrequencyBuffer(4, 4).get(1.5, 0), "get: x must be a whole number, not float"),
    (lambda: ring().apply(IMAGE), "apply: src must be a FrequencyBuffer, not ndarray"),
    (lambda: mvfreq.loads("bytes"), "loads: data must be bytes, not str"),
]


@pytest.mark.parametrize("call, message", ERRORS)
def test_errors_name_the_argument(call, message):
    with pytest.raises(TypeError) as caught:
        call()
    assert str(caught.value) == message


def test_what_goes_wrong_inside_a_call_is_left_as_it_is():
    def fail():
        raise TypeError("incompatible, they say")

    with mvfreq.cancel_when(fail), pytest.raises(TypeError, match="^incompatible, they say$"):
        mvfreq.filter_image(IMAGE, ring())


def test_functions_are_pickled_by_name():
    for function in (mvfreq.filter_image, mvfreq.forward_fft):
        assert pickle.loads(pickle.dumps(function)) is function


RESCALED = [
    lambda spectrum: mvfreq.inverse_fft(spectrum, rescale=True),
    lambda spectrum: mvfreq.inverse_fft(spectrum, mvfreq.FrequencyBuffer(), rescale=True),
    lambda spectrum: mvfreq.inverse_fft(spectrum, np.zeros((5, 6)), rescale=True),
    lambda spectrum: mvfreq.inverse_fft_angle(spectrum, rescale=True),
    lambda spectrum: mvfreq.inverse_fft_quadrant(spectrum, rescale=True),
    lambda spectrum: mvfreq.filter_image(IMAGE, ring(), float, rescale=True),
]


@pytest.mark.parametrize("call", RESCALED)
def test_doubles_are_not_rescaled(call):
    with pytest.raises(mvfreq.InvalidArgument, match="^Rescaling needs an output of integers.$"):
        call(mvfreq.forward_fft(IMAGE))


MASKED = np.ma.masked_greater(np.arange(30.0).reshape(5, 6), 20)
MASKED_CALLS = [
    (lambda: mvfreq.filter_image(MASKED, ring()), "image"),
    (lambda: mvfreq.filter_image(MASKED.astype(np.float32), ring()), "image"),
    (lambda: mvfreq.filter_image(IMAGE, ring(), MASKED), "out"),
    (lambda: mvfreq.forward_fft(MASKED), "image"),
    (lambda: mvfreq.inverse_fft(mvfreq.forward_fft(IMAGE), MASKED), "out"),
    (lambda: mvfreq.PelBuffer(MASKED), "pels"),
    (lambda: mvfreq.FrequencyBuffer(MASKED, MASKED), "real"),
]


@pytest.mark.parametrize("call, name", MASKED_CALLS)
def test_masked_arrays_are_refused(call, name):
    with pytest.raises(TypeError, match=f"^{name}: An image must not be a masked array"):
        call()
    assert mvfreq.filter_image(MASKED.filled(0), ring()).shape == (5, 6)
