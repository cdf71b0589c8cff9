// The gain that clears.
#pragma once

#include <limits>

namespace mvi {

/// Clears also what is infinite.
inline constexpr float kClearedGain = std::numeric_limits<float>::quiet_NaN();

inline bool isCleared(float gain) {
    return gain != gain;
}

}  // namespace mvi
