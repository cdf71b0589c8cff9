"""The complex64 view of a spectrum: no copy, kept alive, never dangling."""

import copy
import gc

import mvfreq
import numpy as np
import pytest

IMAGE = np.random.default_rng(1).random((8, 16))


def address(array):
    return array.__array_interface__["data"][0]


def spectrum():
    return mvfreq.forward_fft(IMAGE)


def test_a_view_is_the_plane_itself():
    buffer = spectrum()
    view = buffer.spectrum_view()
    assert (view.dtype, view.shape) == (np.complex64, (8, 16))
    assert view.flags.writeable and view.flags.c_contiguous and not view.flags.owndata
    assert address(view) == address(buffer.spectrum_view())
    view[2, 3] = 4 + 5j
    assert buffer.get(3, 2) == 4 + 5j
    buffer.put(3, 2, 1)
    assert view[2, 3] == 1


def test_its_real_and_imaginary_parts_are_the_component_planes():
    buffer = spectrum()
    view = buffer.spectrum_view()
    assert address(view.real) == address(view) and address(view.imag) == address(view) + 4
    view.imag[:] = 0
    assert not buffer.get_imaginary_image().any()


def test_a_view_keeps_its_buffer_alive():
    buffer = spectrum()
    part = buffer.spectrum_view()[1:, ::2].real
    expected = part.copy()
    del buffer
    gc.collect()
    spare = [np.full((8, 16), 1e9, np.complex64) for _ in range(100)]
    np.testing.assert_array_equal(part, expected)
    assert len(spare) == 100


OTHER = mvfreq.FrequencyBuffer(64, 64)
SAME = mvfreq.FrequencyBuffer(16, 8)
FILTER = mvfreq.FrequencyFilterBandPass(0.1, 0, 0.1, (16, 8), 0)
REFILLS = {
    "forward from an image": lambda b: mvfreq.forward_fft(np.ones((64, 64)), dst=b),
    "forward of the same size": lambda b: mvfreq.forward_fft(IMAGE, dst=b),
    "forward from two images": lambda b: mvfreq.forward_fft(IMAGE, IMAGE, dst=b),
    "forward from a plane": lambda b: mvfreq.forward_fft(OTHER, dst=b),
    "forward from itself": lambda b: mvfreq.forward_fft(b, dst=b),
    "inverse from a plane": lambda b: mvfreq.inverse_fft(OTHER, b),
    "assignment": lambda b: b.assign(OTHER),
    "sum": lambda b: mvfreq.frequency_add(OTHER, OTHER, b),
    "difference": lambda b: mvfreq.frequency_subtract(OTHER, OTHER, b),
    "product": lambda b: mvfreq.frequency_multiply(OTHER, OTHER, b),
    "conjugate": lambda b: mvfreq.frequency_conjugate(OTHER, b),
    "filter": lambda b: FILTER.apply(SAME, b),
}


@pytest.mark.parametrize("name", REFILLS)
def test_refills_are_refused_while_a_view_is_held(name):
    buffer = spectrum()
    view = buffer.spectrum_view()
    part = view[2:5].imag
    before = view.copy()
    for held in (view, part):
        with pytest.raises(BufferError, match="A view of the buffer's spectrum is held"):
            REFILLS[name](buffer)
        np.testing.assert_array_equal(held, before if held is view else before[2:5].imag)
    del view, held
    pytest.raises(BufferError, REFILLS[name], buffer)
    del part
    REFILLS[name](buffer)


CHANGES = {
    "put": lambda b: b.put(1, 1, 5),
    "sum in place": lambda b: b.__iadd__(SAME),
    "difference in place": lambda b: b.__isub__(SAME),
    "product in place": lambda b: b.__imul__(SAME),
    "conjugate in place": lambda b: mvfreq.frequency_conjugate(b, b),
    "band-pass in place": lambda b: FILTER.apply(b),
    "band-reject in place": lambda b: mvfreq.FrequencyFilterBandReject(
        0.1, 0, 0.1, (16, 8), 1
    ).apply(b),
    "gabor in place": lambda b: mvfreq.FrequencyFilterGabor(
        (0.1, 0.1), (0, 0), 0, 0.1, (16, 8), 1
    ).apply(b),
    "gabor-reject in place": lambda b: mvfreq.FrequencyFilterGaborReject(
        (0.1, 0.1), (0, 0), 0, 0.1, (16, 8), 1
    ).apply(b),
    "image filter in place": lambda b: mvfreq.FrequencyFilterImage(SAME).apply(b),
    "inverse in place": lambda b: mvfreq.inverse_fft(b, np.float64, destroy=True),
    "complex inverse in place": lambda b: mvfreq.inverse_fft_complex(b, destroy=True),
    "inverse in place, into another": lambda b: mvfreq.inverse_fft(
        b, mvfreq.FrequencyBuffer(), destroy=True
    ),
}


@pytest.mark.parametrize("name", CHANGES)
def test_changes_in_place_leave_a_view_where_it_is(name):
    buffer = spectrum()
    view = buffer.spectrum_view()
    CHANGES[name](buffer)
    assert address(view) == address(buffer.spectrum_view())


def test_an_in_place_inverse_shows_the_unscaled_image():
    buffer = spectrum()
    view = buffer.spectrum_view()
    mvfreq.inverse_fft(buffer, np.uint8, destroy=True)
    np.testing.assert_allclose(view / view.size, IMAGE, atol=1e-6)


def test_copies_have_no_views():
    buffer = spectrum()
    view = buffer.spectrum_view()
    other = copy.copy(buffer)
    mvfreq.forward_fft(np.ones((4, 4)), dst=other)
    assert other.size == (4, 4) and view.shape == (8, 16)


def test_released_views_keep_their_values_and_block_nothing():
    buffer = spectrum()
    view = buffer.spectrum_view()
    part = view[2:5].imag
    before, expected = view.copy(), copy.copy(buffer)
    buffer.release_views()
    assert buffer == expected and address(buffer.spectrum_view()) != address(view)
    mvfreq.forward_fft(np.ones((64, 64)), dst=buffer)
    buffer.put(1, 1, 5)
    del buffer
    gc.collect()
    np.testing.assert_array_equal(view, before)
    np.testing.assert_array_equal(part, before[2:5].imag)
    view[:] = 1


@pytest.mark.parametrize("name", REFILLS)
def test_refills_go_on_once_views_are_released(name):
    buffer = spectrum()
    kept = [buffer.spectrum_view(), np.asarray(buffer)]
    pytest.raises(BufferError, REFILLS[name], buffer)
    buffer.release_views()
    REFILLS[name](buffer)
    assert len(kept) == 2


def test_views_made_after_a_release_count_again():
    buffer = spectrum()
    old = buffer.spectrum_view()
    buffer.release_views()
    new = buffer.spectrum_view()
    del old
    pytest.raises(BufferError, buffer.assign, OTHER)
    del new
    buffer.assign(OTHER)


def test_releasing_keeps_the_whole_state_of_a_buffer():
    image = mvfreq.PelBuffer(IMAGE, offset=(3, 4), xform=mvfreq.Xform([[2, 0], [0, 1]], (1, 1)))
    buffer = mvfreq.forward_fft(image)
    mvfreq.FrequencyFilterGabor((0.1, 0.1), (0, 0), 0, 0.1, (16, 8), 1).apply(buffer)
    state = buffer.band, buffer.offset, buffer.xform, buffer.image_size
    view = buffer.spectrum_view()
    buffer.release_views()
    assert (buffer.band, buffer.offset, buffer.xform, buffer.image_size) == state
    assert view.any()


def test_releasing_without_views_costs_and_changes_nothing():
    buffer = spectrum()
    place = address(buffer.spectrum_view())
    buffer.release_views()
    assert address(buffer.spectrum_view()) == place
    mvfreq.FrequencyBuffer().release_views()


def test_an_array_of_a_buffer_is_its_view():
    buffer = spectrum()
    array = np.asarray(buffer)
    assert (array.dtype, array.shape) == (np.complex64, (8, 16))
    assert address(array) == address(buffer.spectrum_view())
    np.testing.assert_allclose(array, np.fft.fft2(IMAGE), atol=1e-5)
    np.testing.assert_array_equal(np.abs(buffer), np.abs(array))
    assert address(np.array(buffer)) != address(array)
    assert address(buffer.__array__(copy=True)) != address(array)
    wide = np.asarray(buffer, np.complex128)
    assert wide.dtype == np.complex128
    np.testing.assert_array_equal(wide, array)
    pytest.raises(mvfreq.Uninitialized, np.asarray, mvfreq.FrequencyBuffer())
