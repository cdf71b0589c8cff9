// Two values of one type that belong together.
#pragma once

#include <base/export.h>  // IWYU pragma: keep

/// An x and a y of one type: a size, an offset, a complex number. Zero by default.
template <class T>
struct mvPair {
    /// The first value.
    T x{};
    /// The second value.
    T y{};

    /// Both zero.
    constexpr mvPair() = default;

    /// x, then y.
    constexpr mvPair(T first, T second) : x(first), y(second) {}

    /// Equal when both members are.
    friend constexpr bool operator==(const mvPair&, const mvPair&) = default;
};
