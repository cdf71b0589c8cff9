"""Filters proposed from pictures of a good surface, and the waves of a picture."""

from __future__ import annotations

import math
import warnings
from typing import Any, List, NamedTuple, Optional, Sequence, Union

from . import _core

RADII = (1.5, 2, 3, 4, 6, 8, 12, 16, 24, 32, 48)


class Suggestion(NamedTuple):
    """A filter for defects of one size, as suggest() proposes it."""

    radius: float
    levels: float
    filter: Union[_core.FrequencyFilter, List[_core.FrequencyFilter]]
    arguments: List[str]


Suggestion.radius.__doc__ = "Of the soft spot, or of the scratch across, in pels."
Suggestion.levels.__doc__ = "How much brighter or darker than the surface it must be to stand out threefold."
Suggestion.filter.__doc__ = "For filter_image(): a filter, or a list of them that are applied in turn."
Suggestion.arguments.__doc__ = "What stands between mvfreq and the names of input and output."


class Peak(NamedTuple):
    """A wave of a picture, as peaks() finds it."""

    frequency: float
    angle: float
    strength: float
    decibels: float
    group: int
    order: int
    filters: List[_core.FrequencyFilter]
    arguments: List[str]


Peak.frequency.__doc__ = "In cycles per pixel."
Peak.angle.__doc__ = "Across its stripes, in radians, above -pi / 2 and at most pi / 2; y goes down."
Peak.strength.__doc__ = "Its amplitude in grey levels."
Peak.decibels.__doc__ = "How far it stands above the spectrum around it."
Peak.group.__doc__ = "Counts waves from 0; overtones are in the group of their wave."
Peak.order.__doc__ = "1, or of an overtone how many times the frequency of its wave it has."
Peak.filters.__doc__ = "What removes it: two filters for filter_image()."
Peak.arguments.__doc__ = "What stands between mvfreq and the names of input and output."


def suggest(
    images: Any, *, radii: Sequence[float] = RADII, direction: Optional[float] = None
) -> List[Suggestion]:
    """Proposes a filter for soft spots of each radius, from good pictures alone.

    images is a picture of the surface without defects, or a list of them: arrays of uint8, uint16,
    float32 or float64, or PelBuffers. A soft spot of radius r is a bump exp(-d**2 / (2 * r**2)). The
    filter is the ring whose answer to it stands out most from the 99.9 % quantile of what the
    surface itself answers, behind rejected lobes where waves of the surface drown it. direction, in radians as the angle of a lobe, proposes lobes for
    scratches across it: 0 for vertical ones, pi / 2 for horizontal ones.

    Raises ValueError for pictures that show no surface: flat, tiny, overexposed. Warns of radii that
    are left out, since the picture is too small for them, and of what else should be known.

    >>> import numpy as np
    >>> cloth = np.random.default_rng(1).normal(128, 5, (64, 64)).round().astype(np.uint8)
    >>> found = suggest(cloth, radii=[2])
    >>> found[0].radius, filter_image(cloth, found[0].filter).shape
    (2.0, (64, 64))
    """
    pictures = list(images) if isinstance(images, (list, tuple)) else [images]
    degrees = None if direction is None else math.degrees(direction)
    found, refusal, remarks = _core._suggest(pictures, [float(radius) for radius in radii], degrees)
    if refusal:
        raise ValueError(refusal)
    for remark in remarks:
        warnings.warn(remark, stacklevel=2)
    return [
        Suggestion(radius, levels, filters if len(filters) > 1 else filters[0], arguments)
        for radius, levels, filters, arguments in found
    ]


def peaks(image: Any, *, most: int = 12) -> List[Peak]:
    """The strongest waves of a picture, most of them at most, overtones behind their wave.

    >>> import numpy as np
    >>> x = np.arange(256)
    >>> waves = peaks(np.tile(100 + 50 * np.cos(2 * np.pi * x / 8), (256, 1)))
    >>> round(1 / waves[0].frequency, 2), round(abs(waves[0].angle), 2), len(waves[0].filters)
    (8.0, 0.0, 2)
    """
    return [
        Peak(frequency, math.radians(degrees), *rest)
        for frequency, degrees, *rest in _core._peaks(image, most)
    ]
