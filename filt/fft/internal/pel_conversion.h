// From spatial magnitudes to pels.
#pragma once

#include <filt/fft/internal/integers.h>
#include <filt/platform.h>
#include <cmath>
#include <limits>

/// The scaled magnitude of one element: the root is taken before the scaling, all in float.
inline float mf_ScaledMagnitude(float re, float im, float scale) {
    return std::sqrt(re * re + im * im) * scale;
}

/// The integer pel of a non-negative value in pels: half up, held at the top of the range. The half
/// is added in double, so that the float just below one half stays 0.
template <class T>
T mf_RoundToPel(float value) {
    constexpr int full = std::numeric_limits<T>::max();
    return static_cast<T>(mfILimit(mf_Truncate<int>(value + 0.5), 0, full));
}

/// A linear map of magnitudes onto the whole range of integer pels.
struct mf_PelScale {
    float low = 0.0f;
    float factor = 1.0f;
};
