// Where the results of an inverse transform go, and what they are.
#pragma once

#include <filt/platform.h>

#include <cstddef>

namespace mvi {

/// The factor 1 / (W H) of the results of an inverse.
inline float inverseScale(mvPair<long> plane) {
    return static_cast<float>(1.0 / static_cast<double>(plane.x * plane.y));
}

/// Magnitudes and real parts come scaled by 1 / (W H); the squares of magnitudes, for floats, do
/// not.
enum class PlaneResult { magnitudes, realParts, squares };

/// The `size` results from the position `from` of the plane on; those of row y go to
/// `first` + y * `step`.
template <class P>
struct PlaneOutput {
    PlaneResult result;
    mvPair<long> from, size;
    P* first;
    std::ptrdiff_t step;
};

}  // namespace mvi
