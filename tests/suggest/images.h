// Pictures by formula.
#pragma once

#include <base/pel_buffer.h>

#include <numbers>

namespace suggested {

using Image = mvPelBuffer<double>;

constexpr double kTurn = 2 * std::numbers::pi;

/// Each pel is pel(x, y).
template <class Pel>
Image imageOf(long width, long height, Pel pel) {
    Image image(width, height);
    for (long y = 0; y < height; ++y) {
        for (long x = 0; x < width; ++x) {
            image.pointToRow(y)[x] = pel(static_cast<double>(x), static_cast<double>(y));
        }
    }
    return image;
}

}  // namespace suggested
