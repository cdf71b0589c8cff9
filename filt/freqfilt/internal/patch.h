// The patch: a lobe's stored gains and the walk over the plane that applies them.
#pragma once

#include <filt/fft/internal/kernel/spectrum_row_gains.h>
#include <filt/freqfilt/internal/outside.h>
#include <filt/freqfilt/lobe_filter.h>
#include <filt/freqfilt/response.h>

#include <algorithm>
#include <cstdint>

namespace mvi {

/// The columns and rows of the patch. Throws std::length_error when one of them does not fit.
mvPair<std::int32_t> lobeSupport(const mvLobeParameters& lobe);

/// Fills the patch row by row with exp(-du^2 / (2 sx^2) - dv^2 / (2 sy^2)), du and dv being the
/// distances beyond the flat top along and across the lobe, or with its complement to 1.
void fillLobePatch(const mvLobeParameters& lobe, bool complement, mvFilterResponse& patch);

/// Where the patch lies on the plane, in shifted coordinates.
struct PatchPlacement {
    PatchPlacement(const mvLobeParameters& lobe, const mvFilterResponse& patch);

    /// True when the plane has no element, however long its other side is; archives make such.
    bool isEmpty() const { return width == 0 || height == 0; }

    std::int64_t width, height;   // of the plane
    std::int64_t colMin, rowMin;  // of the patch, which may begin outside of the plane
    std::int64_t rowMax;          // of the patch, inclusive
    std::int64_t colEnd, rowEnd;  // of its gains on the plane; its last column has none
};

/// The patch's gains row by row, cleared or 1 outside, and cleared or 1 on the square of
/// 2 `dcRadius` - 1 frequencies a side around DC.
SpectrumRowGains spectrumGains(const PatchPlacement& at, const mvFilterResponse& patch,
                               bool keepsOutside, std::int64_t dcRadius);

/// Writes src times the patch's gains to dst, which may be src; outside the patch goes through
/// `outside`. Gains outside the plane are dropped, elements without a gain are outside.
template <class Outside>
void applyPatch(const PatchPlacement& at, const mvFilterResponse& patch, const float* src,
                float* dst, Outside outside) {
    if (at.isEmpty()) return;
    const std::int64_t colBegin = std::max<std::int64_t>(at.colMin, 0);
    const std::int64_t middle = at.width / 2;

    // Shifted columns low .. high - 1 of one row, which stand side by side in storage as well.
    const auto applyRun = [&](std::int64_t low, std::int64_t high, std::int64_t firstGain,
                              const float* from, float* to) {
        const std::int64_t begin = std::clamp(colBegin, low, high);
        const std::int64_t end = std::clamp(at.colEnd, begin, high);
        outside(from, to, begin - low);
        if (begin < end) {
            multiplyRun(from + 2 * (begin - low), to + 2 * (begin - low),
                        patch.data() + firstGain + begin - at.colMin, end - begin);
        }
        outside(from + 2 * (end - low), to + 2 * (end - low), high - end);
    };

    for (std::int64_t y = 0; y < at.height; ++y, src += 2 * at.width, dst += 2 * at.width) {
        const std::int64_t row = (y + at.height / 2) % at.height;
        if (row < at.rowMin || row >= at.rowEnd) {
            outside(src, dst, at.width);
            continue;
        }
        const std::int64_t gains = (row - at.rowMin) * patch.width();
        const std::int64_t firstHalf = 2 * (at.width - middle);
        applyRun(middle, at.width, gains, src, dst);
        applyRun(0, middle, gains, src + firstHalf, dst + firstHalf);
    }
}

}  // namespace mvi
