// The linear map of magnitudes onto the whole range of integer pels.
#pragma once

#include <filt/fft/internal/kernel/path.h>
#include <internal/product.h>

#include <cmath>

namespace mvi {

/// pel = (magnitude - low) * factor, magnitudes being scaled already.
struct PelMap {
    PelMap(const SquareRange& range, float scale, float full)
        : low(product(std::sqrt(range.least), scale)) {
        const float high = product(std::sqrt(range.greatest), scale);
        factor = high == low ? full : full / (high - low);
    }
    float low, factor;
};

}  // namespace mvi
