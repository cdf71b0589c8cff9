// How strong the frequencies of a picture are.
#pragma once

#include <base/pel_buffer.h>

/// The magnitude of each frequency, on a square plane with the zero frequency in the middle: its
/// side is the power of two that takes the picture, 2048 at most.
///
/// The mean is taken off, and a window of Blackman and Harris fades the edges out: what it makes of
/// a wave besides the wave is 92 dB below, less than the rounding to 8 bits makes, while a line is
/// eight bins wide. A larger picture is cut into pieces that overlap by half, whose powers are
/// averaged.
template <class T>
mvPelBuffer<double> windowedSpectrum(const mvPelBuffer_const<T>& picture);

/// About how often that polls.
long windowedSpectrumPolls(const mv_PelBuffer& picture);
