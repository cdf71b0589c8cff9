// Mapping of a double image to a byte image.
#pragma once

#include <filt/export.h>
#include <filt/fft/errors.h>
#include <filt/platform.h>

/// An 8-bit image of `src` for display or further processing, with the same size and client
/// transform and the offset (0, 0). Only eMapRange reads `low` and `high`.
///
/// With lo and hi the image's minimum and maximum (eMapRange: the caller's), and the scale range
/// r = hi - lo when lo is negative, else hi itself, or 1 when that is not positive:
/// - eMapClip: the value, clamped to 0 .. 255;
/// - eMapAutoScale: 255 / r times the value, less lo when lo is negative;
/// - eMapRange: 255 / r times (value - low), clamped to 0 .. 255. For a `low` that is not negative,
/// r
///   is `high` itself, so `low` .. `low` + `high` spans the bytes;
/// - eMapLog: 255 / log(max(r, 2)) times log(value + 1), of (value - lo + 1) when lo is negative;
/// - eMapAngle: radians times 40.58451.
///
/// Values are truncated. eMapAutoScale, eMapLog and eMapAngle keep the low eight bits of the
/// result and so wrap around: an angle stays on the byte circle, but the top of a logarithmic image
/// wraps as well where r lies between 1 and about 61. Values that do not fit 64 bits, and NaNs,
/// give 0 there. For any other `mapping` the pels stay 0.
///
/// Throws mvFrequencyDefs::UnboundWindow when `src` is not bound.
MVFREQ_API mvPelBuffer<unsigned char> mfFrequencyMapImage(const mvPelBuffer_const<double>& src,
                                                          mvFrequencyDefs::FrequencyMapping mapping,
                                                          double low, double high);
