// What a filter does to the coefficients inside and outside its support, run by run.
#pragma once

#include <algorithm>

/// Outside is cleared.
struct mf_ClearOutside {
    void operator()(const float*, float* dst, long count) const {
        std::fill_n(dst, 2 * count, 0.0f);
    }
};

/// Outside is left as it is; in place there is nothing to do.
struct mf_KeepOutside {
    void operator()(const float* src, float* dst, long count) const {
        if (src != dst) std::copy_n(src, 2 * count, dst);
    }
};
