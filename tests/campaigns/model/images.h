// The life of an image in the model: views of shared pels.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

#include "campaigns/model/state.h"
#include "reference/fft/image.h"

namespace model {

inline constexpr const char* kBaseError = "mvException";

/// Sizes and offsets agree.
template <class T>
bool hasSamePlace(const Image<T>& a, const Image<T>& b) {
    return a.width == b.width && a.height == b.height && a.x == b.x && a.y == b.y;
}

/// A new image of zeros, at the origin.
template <class T>
Image<T> newImage(long width, long height) {
    if (width < 1 || height < 1) throw Thrown{kBaseError};
    Image<T> image;
    image.width = width;
    image.height = height;
    image.pels = std::make_shared<Pels<T>>();
    image.pels->step = width;
    image.pels->values.resize(static_cast<std::size_t>(width * height));
    return image;
}

/// The pels, the size and the place of a view.
template <class T>
reference::Image<T> contentOf(const Image<T>& image) {
    reference::Image<T> content(image.width, image.height);
    content.x = image.x;
    content.y = image.y;
    for (long y = 0; y < image.height; ++y) {
        for (long x = 0; x < image.width; ++x) content.at(x, y) = image.at(x, y);
    }
    return content;
}

/// A new image with that content and no transform.
template <class T>
Image<T> imageOf(const reference::Image<T>& content) {
    Image<T> image = newImage<T>(content.width, content.height);
    image.x = content.x;
    image.y = content.y;
    image.pels->values = content.pels;
    return image;
}

/// Copies where the windows overlap, as if through a temporary.
template <class T>
void copyInto(const reference::Image<T>& src, Image<T>& dst) {
    for (long y = 0; y < dst.height; ++y) {
        for (long x = 0; x < dst.width; ++x) {
            const std::int64_t column = std::int64_t{dst.x} + x - src.x;
            const std::int64_t row = std::int64_t{dst.y} + y - src.y;
            const bool overlaps = column >= 0 && column < src.width && row >= 0 && row < src.height;
            if (overlaps) dst.at(x, y) = src.at(static_cast<long>(column), static_cast<long>(row));
        }
    }
}

template <class T>
void copyPels(const Image<T>& src, Image<T>& dst) {
    if (!src.isBound() || !dst.isBound()) throw Thrown{kBaseError};
    copyInto(contentOf(src), dst);
}

/// Offsets are clamped to 32 bits.
inline long placeOf(std::int64_t value) {
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<long>(std::clamp<std::int64_t>(value, Limits::min(), Limits::max()));
}

template <class T>
Image<T> windowOf(const Image<T>& image, long x, long y, long width, long height) {
    const bool fits = image.isBound() && x >= 0 && y >= 0 && width >= 1 && height >= 1 &&
                      x + width <= image.width && y + height <= image.height;
    if (!fits) throw Thrown{kBaseError};
    Image<T> part = image;
    part.left += x;
    part.top += y;
    part.width = width;
    part.height = height;
    part.x = placeOf(std::int64_t{part.x} + x);
    part.y = placeOf(std::int64_t{part.y} + y);
    return part;
}

/// Numbers from a seed; doubles hold now and then what is hard to calculate with.
template <class T>
T valueOf(std::uint64_t& seed) {
    seed = seed * std::uint64_t{6364136223846793005} + std::uint64_t{1442695040888963407};
    const std::uint64_t bits = seed >> 33;
    if constexpr (std::is_integral_v<T>) {
        return static_cast<T>(bits);
    } else {
        constexpr double kOdd[] = {0.0,
                                   -0.0,
                                   1e-42,
                                   3e38,
                                   1e300,
                                   -1e300,
                                   std::numeric_limits<double>::infinity(),
                                   std::numeric_limits<double>::quiet_NaN()};
        if (bits % 101 == 0) return kOdd[bits / 101 % std::size(kOdd)];
        return static_cast<double>(bits % 20001) / 100.0 - 100.0;
    }
}

template <class T>
reference::Image<T> contentFrom(long seed, long width, long height) {
    reference::Image<T> content(width, height);
    auto state = static_cast<std::uint64_t>(seed);
    for (T& pel : content.pels) pel = valueOf<T>(state);
    return content;
}

}  // namespace model
