"""The filter classes."""

import copy
import math
import pickle

import mvfreq
import numpy as np
import pytest

SIZE = (64, 32)
RING = dict(sigma=0.02, plateau=0.01, frequency=0.125, size=SIZE)
LOBE = dict(sigma=(0.03, 0.02), plateau=(0.01, 0.0), angle=0.5, frequency=0.2, size=SIZE)
FILTERS = {
    mvfreq.FrequencyFilterBandPass: dict(RING, dc_removal_radius=1),
    mvfreq.FrequencyFilterBandReject: dict(RING, dc_protection_radius=1),
    mvfreq.FrequencyFilterGabor: dict(LOBE, dc_removal_radius=0),
    mvfreq.FrequencyFilterGaborReject: dict(LOBE, dc_protection_radius=2),
}
each_filter = pytest.mark.parametrize("kind", FILTERS)


def image_filter():
    return mvfreq.FrequencyFilterImage(noise())


def noise():
    return mvfreq.forward_fft(np.random.default_rng(1).random(SIZE[::-1]))


@each_filter
def test_parameters_are_properties(kind):
    made = kind(**FILTERS[kind])
    assert made.is_initialized and made.support_width % 2 == 1
    for name, value in FILTERS[kind].items():
        assert getattr(made, name) == value
        setattr(made, name, value)
    made.frequency = 0.25
    assert made == kind(**dict(FILTERS[kind], frequency=0.25))
    made.set(**FILTERS[kind])
    assert made == kind(**FILTERS[kind])


@each_filter
def test_the_text_of_a_filter_makes_it_again(kind):
    made = kind(**FILTERS[kind])
    assert eval(repr(made), vars(mvfreq)) == made
    assert eval(repr(kind()), vars(mvfreq)) == kind()


@pytest.mark.parametrize("copied", [copy.copy, copy.deepcopy, lambda made: made.clone()])
@each_filter
def test_copies_are_their_own(kind, copied):
    made = kind(**FILTERS[kind])
    other = copied(made)
    assert type(other) is kind and other == made
    other.frequency = 0.3
    assert other != made


def ring_gain(distance, sigma, plateau, frequency, **_):
    beyond = np.maximum(np.abs(distance - frequency) - plateau, 0)
    return np.exp(-(beyond**2) / (2 * sigma**2))


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.float64])
def test_a_band_pass_keeps_its_ring(dtype):
    size = (128, 128)
    image = (np.random.default_rng(2).random(size) * 200).astype(dtype)
    parameters = dict(sigma=0.05, plateau=0.02, frequency=0.2, size=size)
    buffer = mvfreq.forward_fft(image)
    mvfreq.FrequencyFilterBandPass(**parameters, dc_removal_radius=0).apply(buffer)
    fx, fy = np.meshgrid(np.fft.fftfreq(size[0]), np.fft.fftfreq(size[1]))
    expected = np.fft.fft2(image) * ring_gain(np.hypot(fx, fy), **parameters)
    worst = np.abs(buffer.spectrum_view() - expected).max()
    # The profile is sampled, 32 gains per bin, and cut off about four sigmas from the ring.
    assert worst < 0.01 * np.abs(expected).max()


def test_a_gabor_lobe_stands_where_its_angle_points():
    made = mvfreq.FrequencyFilterGabor((0.05, 0.05), (0, 0), math.pi / 2, 0.25, (64, 64), 0)
    plane = mvfreq.FrequencyBuffer(64, 64)
    plane.spectrum_view()[:] = 1
    made.apply(plane)
    peak = np.unravel_index(np.abs(plane.spectrum_view()).argmax(), (64, 64))
    assert peak == (16, 0)
    assert made.patch.shape == (made.support_height, made.support_width)
    assert made.patch.max() == 1


def test_an_image_filter_multiplies():
    plane, kernel = noise(), noise()
    expected = plane * kernel
    mvfreq.FrequencyFilterImage(kernel).apply(plane)
    assert plane == expected


MAKERS = [lambda kind=kind: kind(**FILTERS[kind]) for kind in FILTERS] + [image_filter]


@pytest.mark.parametrize("make", MAKERS)
def test_a_filter_goes_from_buffer_to_buffer(make):
    made, src, dst = make(), noise(), mvfreq.FrequencyBuffer()
    before = copy.copy(src)
    made.apply(src, dst)
    assert src == before
    made.apply(src)
    np.testing.assert_allclose(
        dst.spectrum_view(), src.spectrum_view(), rtol=1e-5, atol=1e-5
    )


def test_an_image_filter_can_change_its_image():
    made = mvfreq.FrequencyFilterImage()
    assert not made.is_initialized and repr(made) == "<FrequencyFilterImage without image>"
    made.set_image(noise())
    assert (made.support_width, made.support_height) == SIZE
    assert repr(made) == "<FrequencyFilterImage 64 x 32>"
    assert made == image_filter() and copy.copy(made) == made


PARAMETERS = {
    mvfreq.FrequencyFilterBandPass: mvfreq.RingParameters(**RING, dc_radius=1),
    mvfreq.FrequencyFilterBandReject: mvfreq.RingParameters(**RING, dc_radius=1),
    mvfreq.FrequencyFilterGabor: mvfreq.LobeParameters(**LOBE, dc_radius=0),
    mvfreq.FrequencyFilterGaborReject: mvfreq.LobeParameters(**LOBE, dc_radius=2),
}


@each_filter
def test_a_filter_is_built_from_set_to_and_asked_for_its_parameters(kind):
    wanted = PARAMETERS[kind]
    made = kind(wanted)
    assert made == kind(**FILTERS[kind])
    assert made.parameters == wanted
    changed = copy.copy(wanted)
    changed.frequency = 0.3
    assert changed != wanted
    made.set(changed)
    assert made.frequency == 0.3 and made.parameters == changed
    changed.frequency = 0.6
    pytest.raises(mvfreq.InvalidArgument, made.set, changed)
    assert made.frequency == 0.3
    with pytest.raises(mvfreq.Uninitialized):
        kind().parameters


@pytest.mark.parametrize("wanted", PARAMETERS.values())
def test_parameters_are_values(wanted):
    for other in (copy.copy(wanted), copy.deepcopy(wanted), pickle.loads(pickle.dumps(wanted))):
        assert other == wanted and other is not wanted
    assert eval(repr(wanted), vars(mvfreq)) == wanted
    for name in ("sigma", "plateau", "frequency", "size", "dc_radius"):
        setattr(wanted, name, getattr(wanted, name))
    assert wanted == type(wanted)(
        **{name: getattr(wanted, name) for name in vars(type(wanted)) if name[0] != "_"}
    )


@pytest.mark.parametrize("make", MAKERS)
def test_a_filter_tells_whether_it_has_a_response(make):
    made = make()
    assert made.has_response
    assert not type(made)().has_response


def test_an_image_filter_gives_its_image_back():
    assert image_filter().image == noise()
    assert not mvfreq.FrequencyFilterImage().image.has_data
