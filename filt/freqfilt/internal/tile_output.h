// Where the results of a tile go, and what they are.
#pragma once

#include <filt/platform.h>

#include <cstddef>

namespace mvi {

/// Magnitudes and real parts come scaled by 1 / (W H); the squares of magnitudes, for floats, do
/// not.
enum class TileResult { magnitudes, realParts, squares };

/// The `size` results from the position `from` of the plane on; those of row y go to
/// `first` + y * `step`.
template <class P>
struct TileOutput {
    TileResult result;
    mvPair<long> from, size;
    P* first;
    std::ptrdiff_t step;
};

}  // namespace mvi
