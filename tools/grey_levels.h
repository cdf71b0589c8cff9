// The grey levels of a result, and how they are spread.
#pragma once

#include <base/pel_buffer.h>

#include <algorithm>

/// True when the pels have fewer than ten different values.
template <class T>
bool hasFewLevels(const mvPelBuffer_const<T>& picture);

/// The values that are spread over all levels.
struct LevelRange {
    double low, high;

    /// The range that holds both.
    LevelRange with(const LevelRange& other) const {
        return {std::min(low, other.low), std::max(high, other.high)};
    }
};

/// From the least magnitude to the quantile: the value that `percent` of the pels do not exceed.
LevelRange magnitudeRange(const mvPelBuffer_const<double>& magnitudes, double percent);

/// From 0 to the quantile of the swings to either side of it.
LevelRange signedRange(const mvPelBuffer_const<double>& real, double percent);

/// Magnitudes spread over the levels of T: the low end becomes 0, the high end and what is above it
/// the largest pel.
template <class T>
mvPelBuffer<T> spreadMagnitudes(const mvPelBuffer_const<double>& magnitudes,
                                const LevelRange& range);

/// Real parts in grey levels as pels of 16 bits: 32768 is zero, what is beyond the range is
/// clamped.
mvPelBuffer<unsigned short> signedPels(const mvPelBuffer_const<double>& real);

/// The same with swings of the range's high end at either end of the levels.
mvPelBuffer<unsigned short> spreadSigned(const mvPelBuffer_const<double>& real,
                                         const LevelRange& range);
