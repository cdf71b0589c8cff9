// Pictures in memory, and the pels beyond them.
#pragma once

#include <base/pel_buffer.h>

#include <algorithm>
#include <cmath>

namespace mvi {

using DoubleImage = mvPelBuffer<double>;
using DoubleView = mvPelBuffer_const<double>;

/// The position that a position beyond an image of n pels stands for: each edge pel counts twice.
constexpr long reflected(long at, long n) {
    const long within = (at % (2 * n) + 2 * n) % (2 * n);
    return within < n ? within : 2 * n - 1 - within;
}

/// The largest absolute value of an image.
inline double largestSize(const DoubleView& image) {
    double most = 0;
    for (long y = 0; y < image.height(); ++y) {
        const double* row = image.pointToRow(y);
        for (long x = 0; x < image.width(); ++x) most = std::max(most, std::abs(row[x]));
    }
    return most;
}

}  // namespace mvi
