// Equality by order: two values differ only when one is less than the other.
#pragma once

#include <filt/platform.h>

#include <cstddef>

namespace mvi {

/// True also when either is a NaN, and for zeros of both signs.
template <class T>
constexpr bool sameValue(T a, T b) {
    return !(a < b || a > b);
}

template <class T>
constexpr bool sameValue(const mvPair<T>& a, const mvPair<T>& b) {
    return sameValue(a.x, b.x) && sameValue(a.y, b.y);
}

/// True when no pair of the `count` values differs. Runs are compared as a whole, so that the loop
/// over them becomes vector code.
inline bool sameFloats(const float* a, const float* b, std::size_t count) {
    constexpr std::size_t kRun = 1024;
    for (std::size_t first = 0; first < count; first += kRun) {
        const std::size_t end = first + kRun < count ? first + kRun : count;
        int differences = 0;
        for (std::size_t i = first; i < end; ++i) {
            differences |= static_cast<int>(a[i] < b[i]) | static_cast<int>(a[i] > b[i]);
        }
        if (differences != 0) return false;
    }
    return true;
}

}  // namespace mvi
