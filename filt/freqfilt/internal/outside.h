// What a filter does to the coefficients inside and outside its support, run by run.
#pragma once

#include <algorithm>
#include <cstdint>

namespace mvi {

/// Outside is cleared.
struct ClearOutside {
    void operator()(const float*, float* dst, std::int64_t count) const {
        std::fill_n(dst, 2 * count, 0.0f);
    }
};

/// Outside is left as it is; in place there is nothing to do.
struct KeepOutside {
    void operator()(const float* src, float* dst, std::int64_t count) const {
        if (src != dst) std::copy_n(src, 2 * count, dst);
    }
};

/// Inside, `count` elements are multiplied by one gain each.
inline void multiplyRun(const float* src, float* dst, const float* gains, std::int64_t count) {
    for (std::int64_t i = 0; i < count; ++i) {
        dst[2 * i] = src[2 * i] * gains[i];
        dst[2 * i + 1] = src[2 * i + 1] * gains[i];
    }
}

}  // namespace mvi
