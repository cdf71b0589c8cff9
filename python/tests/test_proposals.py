"""Proposed filters and waves."""

import math
import warnings

import mvfreq
import numpy as np
import pytest

RANDOM = np.random.default_rng(3)


def cloth(side=64):
    y, x = np.mgrid[:side, :side]
    weave = 20 * np.cos(2 * np.pi * x / 7) * np.cos(2 * np.pi * y / 7)
    return np.rint(128 + weave + RANDOM.normal(0, 3, x.shape)).astype(np.uint8)


def spot(side, radius):
    y, x = np.mgrid[:side, :side] - side // 2
    return np.exp(-(x**2 + y**2) / (2 * radius**2))


def test_a_spot_of_so_many_levels_stands_out_threefold():
    good = cloth()
    for found in mvfreq.suggest(good, radii=[2, 5]):
        background = np.quantile(mvfreq.filter_image(good, found.filter, out=float), 0.999)
        answer = mvfreq.filter_image(found.levels * spot(64, found.radius), found.filter, out=float)
        assert answer.max() / background == pytest.approx(3, rel=0.02)
        assert found.arguments[0] == "bandpass"
        assert isinstance(found.filter, mvfreq.FrequencyFilterBandPass)


def test_waves_that_no_ring_clears_are_removed_first():
    y, x = np.mgrid[:144, :144] + 0.5
    waves = sum(25 * np.cos(2 * np.pi * at / period) for at, period in ((y, 16), (x, 9), (y, 6)))
    good = np.rint(128 + waves + RANDOM.normal(0, 2, x.shape)).astype(np.uint8)
    found = mvfreq.suggest(good, radii=[2])[0]
    *before, ring = found.filter
    assert all(isinstance(each, mvfreq.FrequencyFilterGaborReject) for each in before)
    assert isinstance(ring, mvfreq.FrequencyFilterBandPass)
    background = np.quantile(mvfreq.filter_image(good, found.filter, out=float), 0.999)
    answer = mvfreq.filter_image(found.levels * spot(144, 2), found.filter, out=float)
    assert answer.max() / background == pytest.approx(3, rel=0.02)


def test_all_pel_types_and_lists_are_taken():
    good = cloth()
    levels = {
        kind: mvfreq.suggest(good.astype(kind), radii=[2])[0].levels
        for kind in (np.uint8, np.uint16, np.float32, float)
    }
    assert len(set(levels.values())) == 1
    both = mvfreq.suggest([good, mvfreq.PelBuffer(good)], radii=[2])
    assert both[0].levels == pytest.approx(levels[float], rel=0.15)


def test_a_direction_asks_for_lobes():
    found = mvfreq.suggest(cloth(), radii=[2], direction=math.pi / 2)[0]
    assert isinstance(found.filter, mvfreq.FrequencyFilterGabor)
    assert found.filter.angle == pytest.approx(math.pi / 2)
    assert "90" in found.arguments


@pytest.mark.parametrize("image, text", [
    (np.zeros((1, 1), np.uint8), "too small"),
    (np.full((64, 64), 9, np.uint8), "flat"),
    (np.clip(RANDOM.normal(300, 40, (64, 64)), 0, 255).astype(np.uint8), "overexposed"),
])
def test_pictures_without_a_surface_are_refused_by_a_sentence(image, text):
    with pytest.raises(ValueError, match=text):
        mvfreq.suggest(image)


def test_other_arguments_are_refused():
    with pytest.raises(TypeError):
        mvfreq.suggest(np.zeros((64, 64), np.int64))
    with pytest.raises(TypeError, match="one type"):
        mvfreq.suggest([cloth(), cloth().astype(float)])
    with pytest.raises(ValueError, match="no picture"):
        mvfreq.suggest([])


def test_radii_that_are_left_out_are_warned_of():
    with pytest.warns(UserWarning, match="Left out: radius 48"):
        found = mvfreq.suggest(cloth(), radii=[2, 48])
    assert [each.radius for each in found] == [2]
    with warnings.catch_warnings():
        warnings.simplefilter("error")
        mvfreq.suggest(cloth(), radii=[2])


def test_a_search_can_be_stopped():
    with mvfreq.cancel_when(lambda: True), pytest.raises(mvfreq.mvStatusException):
        mvfreq.suggest(cloth())


def test_waves_are_found_and_removed():
    y, x = np.mgrid[:200, :300]
    wave = 100 + 40 * np.cos(2 * np.pi * (0.1 * x + 0.05 * y))
    first = mvfreq.peaks(wave)[0]
    assert first.frequency == pytest.approx(math.hypot(0.1, 0.05), abs=1e-3)
    assert first.angle == pytest.approx(math.atan2(0.05, 0.1), abs=0.02)
    assert first.strength == pytest.approx(40, rel=0.1)
    assert (first.group, first.order) == (0, 1)
    clean = mvfreq.filter_image(wave, first.filters, out=float)
    assert abs(clean - 100)[50:150, 50:250].max() < 2
    assert mvfreq.peaks(np.full((64, 64), 5.0)) == []
