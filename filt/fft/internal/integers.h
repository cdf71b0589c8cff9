// The one way in which floating values and wide integers become narrow integers.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace mvi {

/// Toward zero, clamped to the ends of the target type; NaN gives 0.
template <class Integer, class Floating>
Integer truncate(Floating value) {
    constexpr auto kLow = std::numeric_limits<Integer>::min();
    constexpr auto kHigh = std::numeric_limits<Integer>::max();
    // 2^31 and 2^63 are exact in both floating types; the largest integers are not.
    constexpr Floating kEnd = -static_cast<Floating>(kLow);
    if (value >= kEnd) return kHigh;
    if (value < -kEnd) return kLow;
    return value == value ? static_cast<Integer>(value) : Integer{0};
}

/// The low byte of the value truncated to 64 bits; 0 for what does not fit 64 bits, and for NaN.
inline unsigned char lowByte(double value) {
    constexpr double kEnd = 9223372036854775808.0;
    const bool fits = value >= -kEnd && value < kEnd;
    return static_cast<unsigned char>(fits ? static_cast<std::int64_t>(value) : 0);
}

/// The nearest value of 32 bits.
constexpr std::int32_t hold32(std::int64_t value) {
    constexpr std::int64_t kLow = std::numeric_limits<std::int32_t>::min();
    constexpr std::int64_t kHigh = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(value < kLow ? kLow : value > kHigh ? kHigh : value);
}

/// The number, or the largest size of a block where that has fewer bits; none for what is negative.
constexpr std::size_t heldSize(std::int64_t number) {
    constexpr std::uint64_t kMost = std::numeric_limits<std::size_t>::max();
    return static_cast<std::size_t>(
        std::min(static_cast<std::uint64_t>(std::max<std::int64_t>(number, 0)), kMost));
}

/// The smallest power of two not below `value`; 1 for all values up to 1.
constexpr std::int64_t powerOfTwoAbove(std::int64_t value) {
    std::uint64_t power = 1;
    while (value > 1 && power < static_cast<std::uint64_t>(value)) power *= 2;
    return static_cast<std::int64_t>(power);
}

/// True for 1, 2, 4, ...
constexpr bool isPowerOfTwo(long value) {
    return value > 0 && (value & (value - 1)) == 0;
}

}  // namespace mvi
