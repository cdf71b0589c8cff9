"""The exhaustive search that proposals are compared with, by the module mvfreq.

A filter is measured as it is meant: the peak of a filtered soft spot of contrast 1 over the 99.9 %
quantile of the filtered magnitudes of a good picture, both by filter_image in the program's planes.
"""
import itertools
import math

import mvfreq
import numpy as np

FREQUENCIES = [0.0] + [0.0018 * 1.17**i for i in range(36)]
SIGMAS = (0.1, 0.18, 0.3, 0.45, 0.7, 1.1)
PLATEAUS = (0.0, 0.25, 0.6)
DC_RADII = (0, 1, 2, 3, 5, 8)


def side(n, reach):
    """The side of the plane that the program takes for an axis."""
    def margin(s):
        return min(reach, s // 4)

    def fits(s):
        return n + 2 * margin(s) <= s

    tile = 1024 if reach <= 256 else 2048
    s = 1
    while s <= 2048:
        if fits(s):
            planes = 1 if fits(tile) else -(-n // (tile - 2 * margin(tile)))
            return tile if s > tile and planes <= 2 else s
        s *= 2
    return tile


def plane(shape, sigma):
    reach = math.ceil(2 / (math.pi * sigma))
    return side(shape[1], reach), side(shape[0], reach)


def spot(size, radius):
    """A soft spot of contrast 1 in the middle of a plane."""
    width, height = size
    x, y = np.arange(width) - width // 2, np.arange(height) - height // 2
    return np.outer(np.exp(-((y / radius) ** 2) / 2), np.exp(-((x / radius) ** 2) / 2))


class Measure:
    """How far spots stand out of one good picture."""

    def __init__(self, picture):
        self.picture = picture.astype(float)
        self.spectra = {}

    def spectrum(self, size, radius):
        key = (size, radius)
        if key not in self.spectra:
            self.spectra[key] = mvfreq.forward_fft(spot(size, radius))
        return self.spectra[key]

    def ring(self, frequency, sigma, plateau, dc_radius):
        return mvfreq.FrequencyFilterBandPass(
            sigma=sigma, plateau=plateau, frequency=frequency,
            size=plane(self.picture.shape, sigma), dc_removal_radius=dc_radius)

    def background(self, ring):
        result = mvfreq.filter_image(self.picture, ring, out=float)
        values = result.ravel()
        rank = math.ceil(0.999 * values.size) - 1
        return np.partition(values, rank)[rank]

    def answer(self, found, radius):
        """The middle of the filtered spot: the mean of its filtered spectrum, up to the sign of each."""
        first, *others = found if isinstance(found, list) else [found]
        size = mvfreq.filter_plane(first)
        result = mvfreq.FrequencyBuffer()
        first.apply(self.spectrum(size, radius), result)
        for other in others:
            other.apply(result)
        values = result.spectrum_view().real
        signs = np.ones(size[1])[:, None] * np.ones(size[0])
        signs[1::2] *= -1
        signs[:, 1::2] *= -1
        return abs((values * signs).sum()) / (size[0] * size[1])


def filters():
    """All rings of the search."""
    for frequency in FREQUENCIES:
        scale = [frequency] if frequency else FREQUENCIES[1:]
        for base, sigma, plateau, radius in itertools.product(scale, SIGMAS, PLATEAUS, DC_RADII):
            if not frequency and (sigma != 0.7 or plateau):
                continue
            # A square around DC that the ring does not reach changes nothing.
            reaches = frequency - plateau * base - 3 * sigma * base < max(radius - 1, 0) / 1024
            if (reaches or radius == 1) and frequency <= 0.48:
                yield frequency, sigma * base, plateau * base, radius


def suits(frequency, sigma, radius):
    """Spots have nothing far beyond 1 / radius."""
    return 0.04 <= max(frequency, sigma) * radius <= 0.8


def search(picture, radii):
    """The best contrast to background for each radius, with its ring."""
    measure = Measure(picture)
    best = {radius: (0.0, None) for radius in radii}
    for ring in filters():
        suited = [radius for radius in radii if suits(ring[0], ring[1], radius)]
        if not suited:
            continue
        built = measure.ring(*ring)
        background = measure.background(built)
        for radius in suited:
            contrast = measure.answer(built, radius) / background if background > 0 else 0
            best[radius] = max(best[radius], (contrast, ring), key=lambda each: each[0])
    return best
