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

/// The integer pel of a value: half up, as if the half were added without rounding, held to the
/// range of T; NaN gives 0. The steps have no branch, so that loops over them become vector code.
template <class T>
T mf_RoundToPel(float value) {
    constexpr float kFull = std::numeric_limits<T>::max();
    const float positive = value > 0.0f ? value : 0.0f;
    const float held = positive < kFull ? positive : kFull;
    const auto whole = static_cast<std::int32_t>(held);
    const bool up = held - static_cast<float>(whole) >= 0.5f;
    return static_cast<T>(whole + (up ? 1 : 0));
}

/// A linear map of magnitudes onto the whole range of integer pels.
struct mf_PelScale {
    float low = 0.0f;
    float factor = 1.0f;
};
