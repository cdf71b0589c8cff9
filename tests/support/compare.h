// Comparison by bits and by error, with a report of where and how much.
#pragma once

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <type_traits>

#include "reference/fft/image.h"
#include "reference/fft/plane.h"

namespace support {

template <class T>
auto printable(T value) {
    if constexpr (std::is_integral_v<T>) {
        return static_cast<long>(value);
    } else {
        return value;
    }
}

/// True when `expected` and `actual` hold the same bits; `width` values make one row of the report.
/// With `nanIsNan` a NaN matches every other NaN, whatever its sign and payload are.
template <class T>
testing::AssertionResult sameBits(std::span<const T> expected, std::span<const T> actual,
                                  std::size_t width, bool nanIsNan = false) {
    if (expected.size() != actual.size()) {
        return testing::AssertionFailure()
               << expected.size() << " values expected, " << actual.size() << " found";
    }
    if (std::memcmp(expected.data(), actual.data(), expected.size_bytes()) == 0) {
        return testing::AssertionSuccess();
    }
    std::size_t count = 0;
    std::size_t first = 0;
    for (std::size_t i = expected.size(); i-- > 0;) {
        const T a = expected[i];
        const T b = actual[i];
        if (std::memcmp(&a, &b, sizeof(T)) == 0) continue;
        if (nanIsNan && a != a && b != b) continue;
        first = i;
        ++count;
    }
    if (count == 0) return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << count << " of " << expected.size() << " values differ, the first at row "
           << first / width << ", value " << first % width << ": " << std::hexfloat
           << printable(expected[first]) << " expected, " << printable(actual[first]) << " found";
}

/// The planes by bits. Where NaNs occur their signs and payloads do not count.
inline testing::AssertionResult samePlane(const reference::Plane& expected,
                                          const reference::Plane& actual, bool nanIsNan = false) {
    if (expected.width != actual.width || expected.height != actual.height) {
        return testing::AssertionFailure()
               << expected.width << " x " << expected.height << " expected, " << actual.width
               << " x " << actual.height << " found";
    }
    const auto width = 2 * static_cast<std::size_t>(expected.width);
    return sameBits<float>({expected.floats(), expected.floatCount()},
                           {actual.floats(), actual.floatCount()}, width, nanIsNan);
}

/// Size, offset and pels.
template <class T>
testing::AssertionResult sameImage(const reference::Image<T>& expected,
                                   const reference::Image<T>& actual) {
    if (expected.width != actual.width || expected.height != actual.height) {
        return testing::AssertionFailure()
               << expected.width << " x " << expected.height << " pels expected, " << actual.width
               << " x " << actual.height << " found";
    }
    if (expected.x != actual.x || expected.y != actual.y) {
        return testing::AssertionFailure()
               << "offset (" << expected.x << ", " << expected.y << ") expected, (" << actual.x
               << ", " << actual.y << ") found";
    }
    return sameBits<T>(expected.pels, actual.pels, static_cast<std::size_t>(expected.width), true);
}

}  // namespace support
