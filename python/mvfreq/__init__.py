"""Frequency-domain image processing for machine vision.

Images are two-dimensional numpy arrays of uint8, uint16 or float64, or PelBuffers; frequencies and
widths are in cycles per pixel, angles in radians, sizes and offsets are (x, y). Names are those of
the C++ library without their prefix, functions in snake case: mfForwardFFT is forward_fft.

>>> import numpy as np
>>> image = np.random.default_rng(1).integers(0, 256, (100, 200), dtype=np.uint8)
>>> spectrum = forward_fft(image)
>>> spectrum
<FrequencyBuffer 256 x 128>
>>> ring = FrequencyFilterBandPass(
...     sigma=0.012, plateau=0.0, frequency=0.03, size=spectrum.size, dc_removal_radius=1)
>>> ring.apply(spectrum)
>>> inverse_fft(spectrum, np.uint8, rescale=True).shape
(100, 200)

Picture in, picture out, for pictures of any size:

>>> filter_image(image, ring, rescale=True).shape
(100, 200)
"""

from . import _calls, _core

_calls.improve(_core)

from ._core import (  # noqa: E402
    FrequencyBuffer,
    FrequencyFilter,
    FrequencyFilterBandPass,
    FrequencyFilterBandReject,
    FrequencyFilterGabor,
    FrequencyFilterGaborReject,
    FrequencyFilterImage,
    LobeParameters,
    PelBuffer,
    RingParameters,
    Xform,
    __version__,
    compute_angle_image,
    compute_quadrant_image,
    dumps,
    filter_image,
    filter_plane,
    filter_reach,
    forward_fft,
    frequency_add,
    frequency_conjugate,
    frequency_map_image,
    frequency_multiply,
    frequency_subtract,
    inverse_fft,
    inverse_fft_angle,
    inverse_fft_complex,
    inverse_fft_quadrant,
    loads,
    loads_buffer,
    pel_clone,
    pel_copy,
    pel_set,
)
from .attention import cancel_when
from .errors import (
    BadCoord,
    BadValue,
    Errors,
    InvalidArgument,
    InvalidBuffer,
    InvalidSize,
    Truncated,
    UnboundWindow,
    Uninitialized,
    UnknownClass,
    UnknownVersion,
    WriteFailed,
    mvException,
    mvExceptionWithString,
    mvStatusException,
)
from .files import load, load_buffer, save
from .mapping import FrequencyMapping
from .proposals import Peak, Suggestion, peaks, suggest

__all__ = [
    "BadCoord",
    "BadValue",
    "Errors",
    "FrequencyBuffer",
    "FrequencyFilter",
    "FrequencyFilterBandPass",
    "FrequencyFilterBandReject",
    "FrequencyFilterGabor",
    "FrequencyFilterGaborReject",
    "FrequencyFilterImage",
    "FrequencyMapping",
    "InvalidArgument",
    "InvalidBuffer",
    "InvalidSize",
    "LobeParameters",
    "Peak",
    "PelBuffer",
    "RingParameters",
    "Suggestion",
    "Truncated",
    "UnboundWindow",
    "Uninitialized",
    "UnknownClass",
    "UnknownVersion",
    "WriteFailed",
    "Xform",
    "cancel_when",
    "compute_angle_image",
    "compute_quadrant_image",
    "dumps",
    "filter_image",
    "filter_plane",
    "filter_reach",
    "forward_fft",
    "frequency_add",
    "frequency_conjugate",
    "frequency_map_image",
    "frequency_multiply",
    "frequency_subtract",
    "inverse_fft",
    "inverse_fft_angle",
    "inverse_fft_complex",
    "inverse_fft_quadrant",
    "load",
    "load_buffer",
    "loads",
    "loads_buffer",
    "mvException",
    "mvExceptionWithString",
    "mvStatusException",
    "peaks",
    "pel_clone",
    "pel_copy",
    "pel_set",
    "save",
    "suggest",
]
