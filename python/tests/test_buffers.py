"""The class FrequencyBuffer."""

import copy

import mvfreq
import numpy as np
import pytest

IMAGE = np.random.default_rng(1).random((6, 10))


def test_a_new_buffer_has_no_data():
    buffer = mvfreq.FrequencyBuffer()
    assert not buffer.has_data
    assert repr(buffer) == "<FrequencyBuffer without data>"
    assert buffer == mvfreq.FrequencyBuffer()


def test_sides_are_padded_to_powers_of_two():
    buffer = mvfreq.FrequencyBuffer(600, 300)
    assert (buffer.width, buffer.height, buffer.size) == (1024, 512, (1024, 512))
    assert repr(buffer) == "<FrequencyBuffer 1024 x 512>"
    assert not buffer.spectrum_view().any()


def test_a_reduced_copy_keeps_the_lowest_frequencies():
    buffer = mvfreq.forward_fft(IMAGE)
    reduced = mvfreq.FrequencyBuffer(buffer, 8, 4)
    for y in range(-2, 2):
        for x in range(-4, 4):
            assert reduced.get(x, y, centred=True) == buffer.get(x, y, centred=True)


def test_elements_are_read_and_written_in_both_coordinates():
    buffer = mvfreq.FrequencyBuffer(8, 4)
    buffer.put(-1, -2, 1 + 2j, centred=True)
    assert buffer.get(7, 2) == 1 + 2j
    buffer.put_real(7, 2, 5)
    buffer.put_imaginary(7, 2, -3)
    assert (buffer.get_real(7, 2), buffer.get_imaginary(-1, -2, centred=True)) == (5, -3)


@pytest.mark.parametrize("centred", [False, True])
def test_component_images_show_the_plane(centred):
    buffer = mvfreq.forward_fft(IMAGE)
    plane = buffer.spectrum_view().astype(complex)
    if centred:
        plane = np.fft.fftshift(plane)
    np.testing.assert_array_equal(buffer.get_real_image(centred), plane.real)
    np.testing.assert_array_equal(buffer.get_imaginary_image(centred), plane.imag)
    np.testing.assert_allclose(buffer.get_magnitude_image(centred), np.abs(plane), rtol=1e-6)
    np.testing.assert_allclose(
        buffer.get_phase_image(centred), np.angle(plane) % (2 * np.pi), atol=1e-9
    )


@pytest.mark.parametrize("copied", [copy.copy, copy.deepcopy])
def test_copies_have_their_own_plane(copied):
    buffer = mvfreq.forward_fft(IMAGE)
    other = copied(buffer)
    assert other == buffer
    other.put(0, 0, 0)
    assert other != buffer


def test_assignment_takes_everything():
    buffer = mvfreq.FrequencyBuffer()
    buffer.assign(mvfreq.forward_fft(IMAGE))
    assert buffer == mvfreq.forward_fft(IMAGE)
    buffer.assign(buffer)
    assert buffer == mvfreq.forward_fft(IMAGE)


def test_other_objects_are_not_equal_and_buffers_have_no_hash():
    assert mvfreq.FrequencyBuffer() != 1
    pytest.raises(TypeError, hash, mvfreq.FrequencyBuffer())


def test_a_buffer_without_data_has_the_state_of_no_image():
    buffer = mvfreq.FrequencyBuffer()
    assert (buffer.image_size, buffer.offset, buffer.xform) == ((0, 0), (0, 0), None)
    assert (buffer.inverse_computed, buffer.band) == (False, None)
    buffer.clear_band()


def test_a_buffer_tells_of_its_image():
    xform = mvfreq.Xform([[2, 0], [0, 3]], (5, 6))
    image = mvfreq.PelBuffer(IMAGE, offset=(3, -4), xform=xform)
    buffer = mvfreq.forward_fft(image)
    assert (buffer.size, buffer.image_size) == ((16, 8), (10, 6))
    assert (buffer.offset, buffer.xform) == ((3, -4), xform)
    assert mvfreq.forward_fft(IMAGE).xform is None


def test_a_buffer_tells_whether_an_inverse_has_overwritten_it():
    buffer = mvfreq.forward_fft(IMAGE)
    mvfreq.inverse_fft(buffer)
    assert not buffer.inverse_computed
    mvfreq.inverse_fft(buffer, destroy=True)
    assert buffer.has_data and buffer.inverse_computed


def lobe(angle):
    return mvfreq.FrequencyFilterGabor((0.02, 0.02), (0, 0), angle, 0.25, (64, 64), 0)


def test_the_inverse_of_a_sum_of_lobes_is_right_once_the_band_is_cleared():
    spectrum = mvfreq.forward_fft(np.random.default_rng(2).random((64, 64)))
    right, down = mvfreq.FrequencyBuffer(), mvfreq.FrequencyBuffer()
    lobe(0).apply(spectrum, right)
    lobe(np.pi / 2).apply(spectrum, down)
    both = right + down
    expected = np.abs(np.fft.ifft2(both.spectrum_view()))
    assert both.band == right.band == (26, 38)
    assert not np.allclose(mvfreq.inverse_fft(both), expected, atol=1e-5)
    both.clear_band()
    assert both.band is None
    np.testing.assert_allclose(mvfreq.inverse_fft(both), expected, atol=1e-5)
