"""The picture call: what it gives, what it takes, what it refuses."""

import copy
import threading

import mvfreq
import numpy as np
import pytest

RANDOM = np.random.default_rng(5)
BYTES = RANDOM.integers(0, 256, (40, 70), dtype=np.uint8)
RING = mvfreq.FrequencyFilterBandPass(0.1, 0, 0.2, (32, 16), 1)


def kernel_filter():
    kernel = np.zeros((16, 32))
    kernel[:3, :2] = RANDOM.random((3, 2))
    return mvfreq.FrequencyFilterImage(mvfreq.forward_fft(kernel))


FILTERS = {
    "band-pass": RING,
    "band-reject": mvfreq.FrequencyFilterBandReject(0.1, 0, 0.2, (32, 16), 1),
    "gabor": mvfreq.FrequencyFilterGabor((0.1, 0.2), (0, 0), 0.5, 0.2, (32, 16), 0),
    "gabor-reject": mvfreq.FrequencyFilterGaborReject((0.1, 0.2), (0, 0), 0.5, 0.2, (32, 16), 0),
    "image": kernel_filter(),
}


def cut(length, side, margin):
    """The first pel of each tile and how many it gives, for tiles with a margin."""
    step = side - 2 * margin
    return [(first, min(step, length - first)) for first in range(0, length, step)]


def tile_by_tile(image, filter, margin):
    """The definition for images that are cut along both axes, with mirrored borders."""
    width, height = filter_size(filter)
    result = np.zeros(image.shape, np.uint8)
    for y, rows in cut(image.shape[0], height, margin[1]):
        for x, columns in cut(image.shape[1], width, margin[0]):
            tile = image[np.ix_(mirrored(y - margin[1], height, image.shape[0]),
                                mirrored(x - margin[0], width, image.shape[1]))]
            spectrum = mvfreq.forward_fft(np.ascontiguousarray(tile))
            filter.apply(spectrum)
            pels = mvfreq.inverse_fft(spectrum, np.uint8)
            result[y:y + rows, x:x + columns] = pels[margin[1]:margin[1] + rows,
                                                     margin[0]:margin[0] + columns]
    return result


def mirrored(first, count, length):
    position = np.arange(first, first + count) % (2 * length)
    return np.minimum(position, 2 * length - 1 - position)


def filter_size(filter):
    return mvfreq.filter_plane(filter)


@pytest.mark.parametrize("name", FILTERS)
@pytest.mark.parametrize("threads", [1, 3])
def test_the_result_is_that_of_its_tiles(name, threads):
    filter = FILTERS[name]
    margin = (3, 2)
    expected = tile_by_tile(BYTES, filter, margin)
    actual = mvfreq.filter_image(BYTES, filter, margin=margin, threads=threads)
    np.testing.assert_array_equal(actual, expected)


def test_the_margin_is_the_reach_at_most_a_quarter():
    x, y = mvfreq.filter_reach(RING)
    assert (x, y) == (7, 7)
    expected = mvfreq.filter_image(BYTES, RING, margin=(7, 4))
    np.testing.assert_array_equal(mvfreq.filter_image(BYTES, RING), expected)
    both = mvfreq.filter_image(BYTES, RING, margin=np.int64(3))
    np.testing.assert_array_equal(both, mvfreq.filter_image(BYTES, RING, margin=(3, 3)))


def test_an_image_that_fits_a_plane_of_zeros_is_transformed_as_it_is():
    image = BYTES[:13, :30]
    spectrum = mvfreq.forward_fft(image)
    RING.apply(spectrum)
    expected = mvfreq.inverse_fft(spectrum, np.uint16, rescale=True)
    actual = mvfreq.filter_image(image, RING, np.uint16, border="zero", rescale=True)
    np.testing.assert_array_equal(actual, expected)


@pytest.mark.parametrize("dtype", [np.uint8, np.uint16, np.float64])
@pytest.mark.parametrize("out", [np.uint8, np.uint16, np.float64])
def test_all_pel_types_go_in_and_come_out(dtype, out):
    image = BYTES.astype(dtype)
    actual = mvfreq.filter_image(image, RING, out)
    assert actual.dtype == out
    np.testing.assert_array_equal(actual, mvfreq.filter_image(BYTES, RING, out))


def test_singles_are_taken():
    image = RANDOM.random((20, 20), dtype=np.float32)
    actual = mvfreq.filter_image(image, RING, float)
    np.testing.assert_array_equal(actual, mvfreq.filter_image(image.astype(float), RING, float))


def test_real_parts_have_their_sign():
    real = mvfreq.filter_image(BYTES, RING, float, result="real")
    assert real.min() < 0 < real.max()
    np.testing.assert_allclose(abs(real), mvfreq.filter_image(BYTES, RING, float), atol=1e-4)


def test_arrays_and_pel_buffers_receive_the_pels():
    expected = mvfreq.filter_image(BYTES, RING)
    room = np.zeros((50, 80), np.uint8)
    assert mvfreq.filter_image(BYTES, RING, room[5:45, 4:74]) is not None
    np.testing.assert_array_equal(room[5:45, 4:74], expected)
    assert not room[:5].any() and not room[:, :4].any()
    buffer = mvfreq.PelBuffer(np.zeros_like(BYTES), offset=(9, 8))
    assert mvfreq.filter_image(BYTES, RING, buffer) is buffer
    np.testing.assert_array_equal(buffer.pels, expected)
    assert buffer.offset == (9, 8)


def test_an_unbound_pel_buffer_takes_the_place_of_the_image():
    image = mvfreq.PelBuffer(BYTES, offset=(9, 8))
    buffer = mvfreq.filter_image(image, RING, mvfreq.PelBuffer(np.uint8))
    assert buffer.offset == (9, 8)
    np.testing.assert_array_equal(buffer.pels, mvfreq.filter_image(BYTES, RING))


def test_an_image_is_filtered_in_place():
    image = BYTES.copy()
    assert mvfreq.filter_image(image, RING, image) is image
    np.testing.assert_array_equal(image, mvfreq.filter_image(BYTES, RING))


def test_views_of_any_layout_are_taken():
    expected = mvfreq.filter_image(BYTES.T.copy(), RING)
    np.testing.assert_array_equal(mvfreq.filter_image(BYTES.T, RING), expected)
    frozen = BYTES.copy()
    frozen.flags.writeable = False
    assert mvfreq.filter_image(frozen, RING).any()


@pytest.mark.parametrize("options, error, message", [
    ({"out": float, "rescale": True}, mvfreq.InvalidArgument, "output of integers"),
    ({"result": "real"}, mvfreq.InvalidArgument, "output of doubles"),
    ({"margin": 8}, mvfreq.InvalidArgument, "leaves nothing of a tile"),
    ({"margin": (-2, 0)}, mvfreq.InvalidArgument, "leaves nothing of a tile"),
    ({"threads": 0}, mvfreq.InvalidArgument, "must be positive"),
    ({"out": np.zeros((40, 71), np.uint8)}, mvfreq.InvalidSize, "size of the image"),
    ({"out": np.float32}, TypeError, "float32"),
    ({"border": "none"}, ValueError, "border must be 'zero' or 'mirror', not 'none'"),
    ({"result": "phase"}, ValueError, "result must be 'magnitude' or 'real', not 'phase'"),
    ({"margin": "3"}, (TypeError, RuntimeError), None),
])
def test_what_does_not_go_together_is_refused(options, error, message):
    with pytest.raises(error, match=message):
        mvfreq.filter_image(BYTES, RING, **options)


def test_filters_without_response_are_refused():
    for kind in (mvfreq.FrequencyFilterGabor, mvfreq.FrequencyFilterImage):
        for call in (lambda f: mvfreq.filter_image(BYTES, f), mvfreq.filter_plane,
                     mvfreq.filter_reach):
            with pytest.raises(mvfreq.Uninitialized):
                call(kind())


def in_turn(image, filters):
    """What filters give one after the other, for an image that is a plane."""
    spectrum = mvfreq.forward_fft(image)
    for filter in filters:
        filter.apply(spectrum)
    return mvfreq.inverse_fft(spectrum, float)


@pytest.mark.parametrize("sequence", [list, tuple])
def test_a_list_of_filters_is_applied_in_its_order(sequence):
    image = np.ascontiguousarray(BYTES[:16, :32])
    for names in [("gabor-reject", "band-pass"), ("image", "gabor", "band-reject")]:
        filters = sequence(FILTERS[name] for name in names)
        actual = mvfreq.filter_image(image, filters, float, border="zero")
        np.testing.assert_array_equal(actual, in_turn(image, filters))


def test_a_list_of_one_is_its_filter():
    for filter in FILTERS.values():
        np.testing.assert_array_equal(mvfreq.filter_image(BYTES, [filter]),
                                      mvfreq.filter_image(BYTES, filter))


def test_a_list_has_one_plane_and_the_sum_of_the_reaches():
    filters = [FILTERS["image"], RING]
    assert mvfreq.filter_plane(filters) == (32, 16)
    assert mvfreq.filter_reach(filters) == (8, 9)
    expected = mvfreq.filter_image(BYTES, filters, margin=(8, 4))
    np.testing.assert_array_equal(mvfreq.filter_image(BYTES, filters), expected)


OTHER_PLANE = mvfreq.FrequencyFilterBandPass(0.1, 0, 0.2, (16, 16), 1)


@pytest.mark.parametrize("filters, error, message", [
    ([], mvfreq.InvalidArgument, "at least one filter"),
    ([RING, OTHER_PLANE], mvfreq.InvalidSize, "built for one plane"),
    ([RING, mvfreq.FrequencyFilterGabor()], mvfreq.Uninitialized, "FrequencyFilter"),
    ([RING, 3], TypeError, "the list filter must hold FrequencyFilters, not int"),
    (None, TypeError, "filter must be a FrequencyFilter or a list of them, not NoneType"),
    ("abc", TypeError, "filter must be a FrequencyFilter or a list of them, not str"),
])
def test_what_is_no_list_of_filters_is_refused(filters, error, message):
    for call in (lambda f: mvfreq.filter_image(BYTES, f), mvfreq.filter_plane,
                 mvfreq.filter_reach):
        with pytest.raises(error, match=message):
            call(filters)


def test_filters_of_a_list_stay_alive_and_unchanged_while_they_work():
    filters = [copy.copy(RING), copy.copy(FILTERS["gabor-reject"]), RING]
    changed = filters[1]
    seen = []

    def change():
        filters.clear()
        with pytest.raises(RuntimeError, match="in use"):
            changed.frequency = 0.3
        seen.append(1)

    expected = mvfreq.filter_image(BYTES, list(filters))
    with mvfreq.cancel_when(change):
        actual = mvfreq.filter_image(BYTES, filters, threads=2)
    assert seen
    np.testing.assert_array_equal(actual, expected)
    changed.frequency = 0.3


def test_the_plane_is_the_size_of_the_filter():
    for filter in FILTERS.values():
        assert mvfreq.filter_plane(filter) == (32, 16)
    assert mvfreq.filter_reach(FILTERS["image"]) == (1, 2)


def test_a_filter_at_work_cannot_be_changed():
    filter = copy.copy(RING)
    seen = []

    def change():
        with pytest.raises(RuntimeError, match="in use"):
            filter.frequency = 0.3
        seen.append(1)

    with mvfreq.cancel_when(change):
        mvfreq.filter_image(BYTES, filter, threads=2)
    assert seen
    filter.frequency = 0.3


def test_the_cancel_function_is_asked_on_its_own_thread():
    asked = set()
    with mvfreq.cancel_when(lambda: asked.add(threading.get_ident())):
        mvfreq.filter_image(np.tile(BYTES, (8, 8)), RING, threads=4)
    assert asked == {threading.get_ident()}


@pytest.mark.parametrize("threads", [1, 4])
def test_a_stopped_call_leaves_an_unbound_output_unbound(threads):
    out = mvfreq.PelBuffer(np.uint8)
    with mvfreq.cancel_when(lambda: 7), pytest.raises(mvfreq.mvStatusException) as caught:
        mvfreq.filter_image(np.tile(BYTES, (8, 8)), RING, out, threads=threads)
    assert caught.value.status == 7
    assert not out.is_bound
