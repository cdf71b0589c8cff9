// Equality by order: two values differ only when one is less than the other.
#pragma once

#include <filt/platform.h>
#include <cstddef>

/// True also when either is a NaN, and for zeros of both signs.
template <class T>
constexpr bool mf_SameValue(T a, T b) {
    return !(a < b || a > b);
}

template <class T>
constexpr bool mf_SameValue(const mvPair<T>& a, const mvPair<T>& b) {
    return mf_SameValue(a.x, b.x) && mf_SameValue(a.y, b.y);
}

/// True when no pair of the `count` values differs.
inline bool mf_SameFloats(const float* a, const float* b, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        if (!mf_SameValue(a[i], b[i])) return false;
    }
    return true;
}
