// Plain images with an offset, and the periodic copy that places them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "reference/fft/plane.h"

namespace reference {

/// `width` by `height` pels without gaps; the first one stands at the offset (x, y).
template <class T>
struct Image {
    long width = 0;
    long height = 0;
    long x = 0;
    long y = 0;
    std::vector<T> pels;

    Image() = default;
    Image(long w, long h, T value = T{})
        : width(w), height(h), pels(static_cast<std::size_t>(w * h), value) {}

    /// Column and row count from the image's own corner, whatever the offset is.
    T& at(long column, long row) { return pels[static_cast<std::size_t>(row * width + column)]; }
    const T& at(long column, long row) const {
        return pels[static_cast<std::size_t>(row * width + column)];
    }
    bool hasOffset() const { return x != 0 || y != 0; }
};

/// Copies the pels that lie in both windows, matched through the offsets, where `src` has that of x
/// and y. Sums of offsets have more bits than a long of some machines.
template <class T>
void pelCopy(const Image<T>& src, std::int64_t x, std::int64_t y, Image<T>& dst) {
    const std::int64_t toX = dst.x, toY = dst.y;
    const std::int64_t left = std::max(x, toX);
    const std::int64_t top = std::max(y, toY);
    const std::int64_t right = std::min(x + src.width, toX + dst.width);
    const std::int64_t bottom = std::min(y + src.height, toY + dst.height);
    for (std::int64_t row = top; row < bottom; ++row) {
        for (std::int64_t column = left; column < right; ++column) {
            dst.at(static_cast<long>(column - toX), static_cast<long>(row - toY)) =
                src.at(static_cast<long>(column - x), static_cast<long>(row - y));
        }
    }
}

/// Copies the pels that lie in both windows, matched through the offsets.
template <class T>
void pelCopy(const Image<T>& src, Image<T>& dst) {
    pelCopy(src, src.x, src.y, dst);
}

/// Copies `src` into `dst` four times: at its offset less one period in both directions, in y, in
/// x, and at its offset itself. The period is the larger of the two sizes, with `negate` minus
/// that.
template <class T>
void wrapCopy(const Image<T>& src, Image<T>& dst, bool negate, const Poll& poll) {
    poll();
    const long sign = negate ? -1 : 1;
    const long periodX = sign * std::max(dst.width, src.width);
    const long periodY = sign * std::max(dst.height, src.height);
    const std::int64_t x = src.x, y = src.y;
    pelCopy(src, x - periodX, y - periodY, dst);
    pelCopy(src, x, y - periodY, dst);
    pelCopy(src, x - periodX, y, dst);
    pelCopy(src, x, y, dst);
}

}  // namespace reference
