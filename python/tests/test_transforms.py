"""Transforms, arithmetic and display mapping, compared with numpy in double precision."""

import mvfreq
import numpy as np
import pytest

PEL_TYPES = [np.uint8, np.uint16, np.float64]
SHAPES = [(1, 1), (1, 8), (16, 1), (5, 7), (64, 32), (100, 130)]


def random_image(shape, dtype=np.float64, seed=1):
    values = np.random.default_rng(seed).random(shape)
    return values if dtype is np.float64 else (values * np.iinfo(dtype).max).astype(dtype)


def padded_shape(shape):
    return tuple(1 << (side - 1).bit_length() for side in shape)


def assert_near(actual, expected, tolerance=2e-6):
    scale = max(np.abs(expected).max(), 1e-30)
    assert np.abs(actual - expected).max() <= tolerance * scale


@pytest.mark.parametrize("dtype", PEL_TYPES)
@pytest.mark.parametrize("shape", SHAPES)
def test_the_spectrum_is_that_of_the_padded_image(shape, dtype):
    image = random_image(shape, dtype)
    buffer = mvfreq.forward_fft(image)
    expected = np.fft.fft2(image.astype(np.float64), padded_shape(shape))
    assert buffer.size == padded_shape(shape)[::-1]
    assert_near(buffer.spectrum_view(), expected)


def test_two_images_make_a_complex_spectrum():
    real, imaginary = random_image((12, 20)), random_image((12, 20), seed=2)
    buffer = mvfreq.forward_fft(real, imaginary)
    assert_near(buffer.spectrum_view(), np.fft.fft2(real + 1j * imaginary, (16, 32)))


def test_a_plane_is_transformed_in_place_or_into_another():
    real, imaginary = random_image((8, 16)), random_image((8, 16), seed=2)
    plane = mvfreq.FrequencyBuffer(real, imaginary)
    expected = np.fft.fft2(real + 1j * imaginary)
    assert_near(mvfreq.forward_fft(plane).spectrum_view(), expected)
    assert mvfreq.forward_fft(plane, dst=plane) is plane
    assert_near(plane.spectrum_view(), expected)


@pytest.mark.parametrize("destroy", [False, True])
@pytest.mark.parametrize("dtype", PEL_TYPES)
@pytest.mark.parametrize("shape", SHAPES)
def test_the_inverse_gives_the_image_back(shape, dtype, destroy):
    image = random_image(shape, dtype)
    buffer = mvfreq.forward_fft(image)
    back = mvfreq.inverse_fft(buffer, dtype, destroy=destroy)
    assert back.dtype == dtype and back.shape == shape
    if dtype is np.float64:
        assert_near(back, image)
    else:
        np.testing.assert_array_equal(back, image)
    if destroy:
        pytest.raises(mvfreq.InvalidBuffer, buffer.get, 0, 0)
    else:
        buffer.get(0, 0)


def test_float64_is_the_default_output():
    assert mvfreq.inverse_fft(mvfreq.forward_fft(random_image((4, 4)))).dtype == np.float64


def test_the_inverse_into_a_buffer_is_not_scaled():
    image = random_image((8, 8))
    plane = mvfreq.inverse_fft(mvfreq.forward_fft(image), mvfreq.FrequencyBuffer())
    assert_near(plane.spectrum_view(), 64 * image)


def test_complex_angle_and_quadrant_outputs_describe_one_plane():
    image = random_image((16, 16))
    buffer = mvfreq.forward_fft(image)
    mvfreq.FrequencyFilterGabor((0.1, 0.1), (0, 0), 0.5, 0.2, buffer.size, 1).apply(buffer)
    expected = np.fft.ifft2(buffer.spectrum_view().astype(complex))
    real, imaginary = mvfreq.inverse_fft_complex(buffer)
    assert_near(real + 1j * imaginary, expected)
    magnitude, angle = mvfreq.inverse_fft_angle(buffer, np.float64)
    assert_near(magnitude * np.exp(1j * angle), expected)
    magnitude, quadrant = mvfreq.inverse_fft_quadrant(buffer)
    assert_near(magnitude, np.abs(expected))
    np.testing.assert_array_equal(quadrant, (real < 0) + 2 * (imaginary < 0))


def test_rescale_spreads_the_magnitudes():
    buffer = mvfreq.forward_fft(np.linspace(3, 5, 64).reshape(8, 8))
    rescaled = mvfreq.inverse_fft(buffer, np.uint16, rescale=True)
    assert (rescaled.min(), rescaled.max()) == (0, 65535)


def test_phase_images_of_a_plane():
    buffer = mvfreq.forward_fft(random_image((8, 8)))
    view = buffer.spectrum_view()
    np.testing.assert_allclose(mvfreq.compute_angle_image(buffer), np.angle(view), atol=1e-6)
    np.testing.assert_array_equal(
        mvfreq.compute_quadrant_image(buffer), (view.real < 0) + 2 * (view.imag < 0)
    )


OPERATIONS = {
    "add": (mvfreq.frequency_add, lambda a, b: a + b),
    "subtract": (mvfreq.frequency_subtract, lambda a, b: a - b),
    "multiply": (mvfreq.frequency_multiply, lambda a, b: a * b),
}


@pytest.mark.parametrize("name", OPERATIONS)
def test_functions_and_operators_agree_with_numpy(name):
    function, operator = OPERATIONS[name]
    a, b = (mvfreq.forward_fft(random_image((8, 16), seed=seed)) for seed in (1, 2))
    expected = operator(a.spectrum_view().astype(complex), b.spectrum_view().astype(complex))
    result = function(a, b)
    assert_near(result.spectrum_view(), expected)
    assert operator(a, b) == result
    into = mvfreq.FrequencyBuffer()
    assert function(a, b, into) is into and into == result
    assert function(a, b, a) is a and a == result


IN_PLACE = [("add", "__iadd__"), ("subtract", "__isub__"), ("multiply", "__imul__")]


@pytest.mark.parametrize("name, change", IN_PLACE)
def test_operators_in_place_change_their_left_side(name, change):
    a, b = (mvfreq.forward_fft(random_image((8, 16), seed=seed)) for seed in (1, 2))
    result = OPERATIONS[name][0](a, b)
    assert getattr(a, change)(b) is a and a == result


def test_the_conjugate_goes_into_a_new_buffer_or_stays():
    buffer = mvfreq.forward_fft(random_image((4, 8)))
    expected = buffer.spectrum_view().conj()
    np.testing.assert_array_equal(mvfreq.frequency_conjugate(buffer).spectrum_view(), expected)
    assert mvfreq.frequency_conjugate(buffer, buffer) is buffer
    np.testing.assert_array_equal(buffer.spectrum_view(), expected)


Mapping = mvfreq.FrequencyMapping


@pytest.mark.parametrize(
    "mapping, arguments, values, bytes_",
    [
        (Mapping.CLIP, (), [-1.0, 7.9, 300.0], [0, 7, 255]),
        (Mapping.AUTO_SCALE, (), [0.0, 5.0, 10.0], [0, 127, 255]),
        (Mapping.RANGE, (10.0, 20.0), [9.0, 10.0, 20.0], [0, 0, 127]),
        (Mapping.ANGLE, (), [0.0, 1.0, 6.0], [0, 40, 243]),
        (Mapping.LOG, (), [0.0, 0.0, 2.0], [0, 0, 148]),
    ],
)
def test_mappings(mapping, arguments, values, bytes_):
    mapped = mvfreq.frequency_map_image(np.array([values]), mapping, *arguments)
    assert mapped.dtype == np.uint8
    assert mapped[0].tolist() == bytes_
