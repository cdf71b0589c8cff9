// Floating values as integers: toward zero, clamped to the ends of the type, NaN as 0.
#pragma once

#include <cstdint>
#include <limits>

namespace reference {

inline std::int32_t truncate32(double value) {
    if (value != value) return 0;
    if (value <= -2147483648.0) return std::numeric_limits<std::int32_t>::min();
    if (value >= 2147483647.0) return std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(value);
}

/// The low byte of the value truncated to 64 bits; 0 for what 64 bits do not hold.
inline unsigned char lowByte(double value) {
    if (!(value >= -9223372036854775808.0 && value < 9223372036854775808.0)) return 0;
    return static_cast<unsigned char>(static_cast<std::int64_t>(value) & 0xFF);
}

/// A support side: truncated, then made odd.
inline std::int32_t oddSide(double length) {
    const std::int32_t side = truncate32(length);
    return side % 2 == 0 ? side + 1 : side;
}

}  // namespace reference
