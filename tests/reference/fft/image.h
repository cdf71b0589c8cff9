// Plain images with an offset, and the periodic copy that places them.
#pragma once

#include <algorithm>
#include <cstddef>
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

/// Copies the pels that lie in both windows, matched through the offsets.
template <class T>
void pelCopy(const Image<T>& src, Image<T>& dst) {
    const long left = std::max(src.x, dst.x);
    const long top = std::max(src.y, dst.y);
    const long right = std::min(src.x + src.width, dst.x + dst.width);
    const long bottom = std::min(src.y + src.height, dst.y + dst.height);
    for (long y = top; y < bottom; ++y) {
        for (long x = left; x < right; ++x) {
            dst.at(x - dst.x, y - dst.y) = src.at(x - src.x, y - src.y);
        }
    }
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
    Image<T> view = src;
    const auto copyAt = [&](long x, long y) {
        view.x = x;
        view.y = y;
        pelCopy(view, dst);
    };
    copyAt(src.x - periodX, src.y - periodY);
    copyAt(src.x, src.y - periodY);
    copyAt(src.x - periodX, src.y);
    copyAt(src.x, src.y);
}

}  // namespace reference
