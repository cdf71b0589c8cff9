// The nearest whole number, the same on all machines.
#pragma once

#include <cmath>

/// std::round step by step, each of them exact: MinGW's library makes 1 of the last double below
/// 0.5.
inline double mfNearest(double value) {
    const double whole = std::trunc(value);
    return std::abs(value - whole) < 0.5 ? whole : whole + std::copysign(1.0, value);
}

/// std::lround likewise.
inline long mfNearestLong(double value) {
    return std::lround(mfNearest(value));
}
