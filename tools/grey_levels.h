// The grey levels of a result, and how they are spread.
#pragma once

#include <base/pel_buffer.h>

/// True when the pels have fewer than ten different values.
template <class T>
bool hasFewLevels(const mvPelBuffer_const<T>& picture);

/// Magnitudes spread over the range of T: the least one becomes 0, the quantile and what is above
/// it the largest pel. The quantile is the value that `percent` of the pels do not exceed.
template <class T>
mvPelBuffer<T> spreadMagnitudes(const mvPelBuffer_const<double>& magnitudes, double percent);

/// Real parts in grey levels as pels of 16 bits: 32768 is zero, what is beyond the range is
/// clamped.
mvPelBuffer<unsigned short> signedPels(const mvPelBuffer_const<double>& real);

/// The same with the quantile of the swings to either side at the ends of the range.
mvPelBuffer<unsigned short> spreadSigned(const mvPelBuffer_const<double>& real, double percent);
