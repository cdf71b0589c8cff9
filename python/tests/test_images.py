"""Images in and out: arrays without copies, PelBuffers with offset and transform."""

import copy
import gc
import pickle
import weakref

import mvfreq
import numpy as np
import pytest

PEL_TYPES = [np.uint8, np.uint16, np.float64]
each_type = pytest.mark.parametrize("dtype", PEL_TYPES)


def address(array):
    return array.__array_interface__["data"][0]


def random_image(shape, dtype=np.float64):
    return (np.random.default_rng(1).random(shape) * 250).astype(dtype)


@each_type
def test_a_pel_buffer_is_a_view_of_the_array(dtype):
    array = random_image((4, 6), dtype)
    image = mvfreq.PelBuffer(array)
    assert address(image.pels) == address(array)
    assert (image.dtype, image.width, image.height, image.row_update) == (dtype, 6, 4, 6)
    image.pels[1, 2] = 9
    assert array[1, 2] == 9
    assert address(np.asarray(image)) == address(array)


@each_type
def test_rows_may_have_a_stride(dtype):
    array = random_image((8, 32), dtype)[1:7:2, 3:9]
    image = mvfreq.PelBuffer(array)
    assert address(image.pels) == address(array)
    assert (image.width, image.height, image.row_update) == (6, 3, 64)
    np.testing.assert_array_equal(image.pels, array)


LAYOUTS = {
    "every other column": lambda a: a[:, ::2],
    "upside down": lambda a: a[::-1],
    "mirrored": lambda a: a[:, ::-1],
    "by columns": lambda a: a.T,
    "one row for all": lambda a: np.broadcast_to(a[0], a.shape),
}


@pytest.mark.parametrize("name", LAYOUTS)
def test_inputs_of_other_layouts_are_copied_and_views_of_them_refused(name):
    array = LAYOUTS[name](random_image((8, 8)))
    spectrum = mvfreq.forward_fft(array)
    assert spectrum == mvfreq.forward_fft(np.ascontiguousarray(array))
    pytest.raises(ValueError, mvfreq.PelBuffer, array)
    pytest.raises(ValueError, mvfreq.inverse_fft, spectrum, array)


def test_pels_that_are_not_aligned_are_copied():
    raw = np.zeros(8 * 16 + 1, np.uint8)[1:]
    array = raw.view(np.float64).reshape(4, 4)
    array[:] = random_image((4, 4))
    assert mvfreq.forward_fft(array) == mvfreq.forward_fft(array.copy())


@pytest.mark.parametrize("dtype", [np.float32, np.int16, np.int64, bool, complex, ">u2"])
def test_other_dtypes_are_refused_by_name(dtype):
    with pytest.raises(TypeError, match="Pels must be uint8, uint16 or float64, not "):
        mvfreq.forward_fft(np.zeros((4, 4), dtype))
    pytest.raises(TypeError, mvfreq.inverse_fft, mvfreq.FrequencyBuffer(4, 4), np.dtype(dtype))


@pytest.mark.parametrize("image", [np.zeros(4), np.zeros((2, 2, 3)), [[1.0]], None])
def test_what_is_no_image_is_refused(image):
    pytest.raises(TypeError, mvfreq.forward_fft, image)


@pytest.mark.parametrize("shape", [(0, 4), (4, 0)])
def test_images_without_pels_are_refused(shape):
    pytest.raises(mvfreq.mvExceptionWithString, mvfreq.forward_fft, np.zeros(shape))


def test_both_parts_of_a_complex_image_have_one_type():
    with pytest.raises(TypeError, match="Pels must be uint8, not float64"):
        mvfreq.forward_fft(np.zeros((4, 4), np.uint8), np.zeros((4, 4)))


@each_type
def test_results_go_into_arrays_and_their_windows(dtype):
    image = random_image((5, 7), dtype)
    frame = np.zeros((16, 16), dtype)
    out = frame[2:7, 3:10]
    assert mvfreq.inverse_fft(mvfreq.forward_fft(image), out) is out
    np.testing.assert_allclose(frame[2:7, 3:10], image, atol=1e-3)
    frame[2:7, 3:10] = 0
    assert not frame.any()


def test_read_only_pels_are_inputs_but_no_outputs():
    image = random_image((4, 4))
    image.setflags(write=False)
    spectrum = mvfreq.forward_fft(image)
    view = mvfreq.PelBuffer(image)
    assert not view.pels.flags.writeable
    for out in (image, view):
        with pytest.raises(ValueError, match="read-only"):
            mvfreq.inverse_fft(spectrum, out)


def test_angles_and_quadrants_go_into_arrays():
    spectrum = mvfreq.forward_fft(random_image((4, 4)))
    angle, quadrant = np.zeros((4, 4)), np.zeros((4, 4), np.uint8)
    assert mvfreq.inverse_fft_angle(spectrum, np.uint8, angle)[1] is angle
    assert mvfreq.inverse_fft_quadrant(spectrum, np.uint8, quadrant)[1] is quadrant
    assert mvfreq.compute_angle_image(spectrum, angle) is angle
    pytest.raises(TypeError, mvfreq.compute_quadrant_image, spectrum, angle)


def test_offset_and_transform_come_back():
    xform = mvfreq.Xform([[2, 0], [0, 3]], (5, 6))
    image = mvfreq.PelBuffer(random_image((8, 8)), offset=(3, 4), xform=xform)
    spectrum = mvfreq.forward_fft(image)
    back = mvfreq.PelBuffer(np.float64)
    assert not back.is_bound
    assert mvfreq.inverse_fft(spectrum, back) is back
    assert (back.is_bound, back.offset, back.xform) == (True, (3, 4), xform)
    # The wrap copy places the pels by their offset and drops those that fall outside.
    np.testing.assert_allclose(back.pels[4:, 3:], image.pels[:4, :5], atol=1e-3)
    assert not back.pels[:4].any() and not back.pels[:, :3].any()


def test_a_bound_output_keeps_its_place():
    image = random_image((4, 4))
    out = mvfreq.PelBuffer(np.zeros((4, 4)), offset=(1, 2))
    mvfreq.inverse_fft(mvfreq.forward_fft(image), out)
    assert out.offset == (1, 2)
    np.testing.assert_allclose(out.pels[:2, :3], image[2:, 1:], atol=1e-3)
    assert not out.pels[2:].any() and not out.pels[:, 3:].any()


def test_windows_and_copies_share_pels_and_deep_copies_do_not():
    image = mvfreq.PelBuffer(random_image((8, 8)), offset=(10, 20))
    window = image.window(1, 2, 3, 4)
    assert window.offset == (11, 22) and window.pels.shape == (4, 3)
    assert address(window.pels) == address(image.pels[2:, 1:])
    assert address(copy.copy(image).pels) == address(image.pels)
    pytest.raises(mvfreq.mvExceptionWithString, image.window, 6, 6, 3, 3)
    copies = copy.deepcopy(image), pickle.loads(pickle.dumps(image)), mvfreq.pel_clone(image)
    for other in copies:
        assert not np.shares_memory(other.pels, image.pels)
        np.testing.assert_array_equal(other.pels, image.pels)
        assert other.offset == (10, 20)


def test_pels_are_copied_where_images_overlap():
    src = mvfreq.PelBuffer(np.full((4, 4), 7, np.uint8), offset=(2, 2))
    dst = np.zeros((4, 4), np.uint8)
    mvfreq.pel_copy(src, dst)
    assert dst.sum() == 4 * 7 and dst[2:, 2:].all()
    mvfreq.pel_set(dst, 3)
    assert (dst == 3).all()
    unbound = mvfreq.PelBuffer(np.uint8)
    pytest.raises(mvfreq.mvExceptionWithString, mvfreq.pel_copy, unbound, dst)
    pytest.raises(mvfreq.mvExceptionWithString, mvfreq.pel_set, unbound, 1)


class Tracked(np.ndarray):
    """An array that can be watched."""


def test_an_image_keeps_its_array_and_lets_it_go():
    array = random_image((4, 4)).view(Tracked)
    watched = weakref.ref(array)
    pels = mvfreq.PelBuffer(array).window(1, 1, 2, 2).pels
    expected = array[1:3, 1:3].copy()
    del array
    gc.collect()
    assert watched() is not None
    np.testing.assert_array_equal(pels, expected)
    del pels
    gc.collect()
    assert watched() is None


def test_results_own_their_pels():
    image = random_image((64, 64))
    spectrum = mvfreq.forward_fft(image)
    back = mvfreq.inverse_fft(spectrum)
    del spectrum
    gc.collect()
    np.testing.assert_allclose(back, image, atol=1e-3)


def test_transforms_of_the_plane():
    xform = mvfreq.Xform([[0, -1], [1, 0]], (10, 20))
    assert xform * (1, 2) == (8, 21)
    assert xform * xform.inverse() == mvfreq.Xform()
    assert (xform.matrix, xform.trans) == ([[0, -1], [1, 0]], (10, 20))
    for other in (copy.copy(xform), copy.deepcopy(xform), pickle.loads(pickle.dumps(xform))):
        assert other == xform
    assert eval(repr(xform), vars(mvfreq)) == xform
    pytest.raises(mvfreq.mvExceptionWithString, mvfreq.Xform([[0, 0], [0, 0]]).inverse)
