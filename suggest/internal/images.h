// Pictures in memory, and the pels beyond them.
#pragma once

#include <base/pel_buffer.h>

namespace mvi {

using DoubleImage = mvPelBuffer<double>;
using DoubleView = mvPelBuffer_const<double>;

/// The position that a position beyond an image of n pels stands for: each edge pel counts twice.
constexpr long reflected(long at, long n) {
    const long within = (at % (2 * n) + 2 * n) % (2 * n);
    return within < n ? within : 2 * n - 1 - within;
}

}  // namespace mvi
