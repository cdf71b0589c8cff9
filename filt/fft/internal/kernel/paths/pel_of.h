// The pel of a value.
#pragma once

namespace mvi {

/// That it depends on the vector type V keeps the code of different instruction sets apart.
template <class V>
struct PelOf {
    /// A double takes any value. Integers are rounded half up, as if the half were added without
    /// rounding: twice the value is exact, and so are its whole part h and (h + 1) / 2 rounded
    /// down. The steps have no branch.
    template <class T>
    static T rounded(float value) {
        if constexpr (T(0.5) != T(0)) {
            return value;
        } else {
            constexpr float kFull = static_cast<T>(-1);
            const float positive = value > 0.0f ? value : 0.0f;
            const float held = positive < kFull ? positive : kFull;
            return static_cast<T>((static_cast<int>(held + held) + 1) >> 1);
        }
    }
};

}  // namespace mvi
