// The ring: its radial profile and the walk over the plane that applies it.
#pragma once

#include <filt/fft/internal/kernel/path.h>
#include <filt/fft/internal/kernel/spectrum_gains.h>
#include <filt/freqfilt/internal/outside.h>
#include <filt/freqfilt/response.h>
#include <filt/freqfilt/ring_filter.h>

#include <cstdint>
#include <vector>

namespace mvi {

/// Gains per frequency bin in a profile.
inline constexpr std::int32_t kSamplesPerBin = 32;

/// The length of the profile in bins: four sigmas, the plateau and a twentieth of the width. Throws
/// std::length_error when it does not fit.
std::int32_t ringSupport(const mvRingParameters& ring);

/// Gain i is that at i / 32 bins from the ring: exp(-(distance - plateau)^2 / (2 sigma^2)) beyond
/// the plateau, or its complement to 1.
void fillRingProfile(const mvRingParameters& ring, bool complement, mvFilterResponse& profile);

/// The ring on a plane of one size. Distances from DC are in x bins, so that the ring is round in
/// cycles per pixel.
///
/// A gain depends only on the squares of both coordinates, so one line of gains serves the two
/// rows at the same distance from DC, and mirrors itself left and right. On such a line the squared
/// distance grows with the distance of the column: inside and outside are runs.
class Ring {
  public:
    /// How the two forms of a filter distinguish inside and outside.
    enum class Inside {
        bySquares,  ///< between the truncated squares of the ring's inner and outer radius
        byProfile   ///< wherever the profile has a gain
    };

    Ring(const mvRingParameters& ring, const mvFilterResponse& profile, Inside inside);

    std::int64_t width() const { return width_; }
    std::int64_t height() const { return height_; }

    /// True when the plane has no element, however long its other side is; archives make such.
    bool isEmpty() const { return width_ == 0 || height_ == 0; }

    /// True for the rows at this distance from DC that lie beyond the ring as a whole. The limit is
    /// the ring's radius in y bins plus the support, not both scaled: on planes that are taller
    /// than wide it clears rows that the outer flank still reaches.
    bool isBeyond(std::int64_t rowDistance) const { return rowDistance > rowLimit_; }

    /// Columns `begin` to `end` - 1 of the first and of the second half of a row.
    struct Runs {
        std::int64_t firstBegin, firstEnd, secondBegin, secondEnd;
    };

    /// Prepares the gains of the rows at this distance from DC; returns which columns have one.
    Runs prepareLine(std::int64_t rowDistance);

    /// The gains of the prepared line by column.
    const float* gains() const { return line_.data(); }

  private:
    bool isInside(std::int64_t r2) const;
    bool isBelow(std::int64_t r2) const;
    std::int64_t rowTerm(std::int64_t rowDistance) const;
    double beyondRadius(std::int64_t r2) const;

    std::int64_t width_, height_;
    RadialProfile profile_;
    std::int64_t entries_;  // of the profile that count as gains
    Inside inside_;
    float radius_;
    double rowScale_;
    std::int64_t rowLimit_, outer2_, inner2_;
    std::vector<float> line_, byDistance_;
};

/// The ring's gains on half a plane, cleared or 1 outside, and cleared or 1 on the square of
/// 2 `dcRadius` - 1 frequencies a side around DC.
SpectrumGains spectrumGains(Ring& ring, bool keepsOutside, std::int64_t dcRadius);

/// Writes src times the ring's gains to dst, which may be src; outside the ring goes through
/// `outside`.
template <class Outside>
void applyRing(Ring& ring, const float* src, float* dst, Outside outside) {
    if (ring.isEmpty()) return;
    const std::int64_t width = ring.width(), height = ring.height();

    const auto applyHalf = [&](std::int64_t offset, std::int64_t low, std::int64_t begin,
                               std::int64_t end, std::int64_t high) {
        outside(src + offset + 2 * low, dst + offset + 2 * low, begin - low);
        multiplyRun(src + offset + 2 * begin, dst + offset + 2 * begin, ring.gains() + begin,
                    end - begin);
        outside(src + offset + 2 * end, dst + offset + 2 * end, high - end);
    };
    const auto applyRow = [&](std::int64_t y, const Ring::Runs& runs) {
        const std::int64_t offset = 2 * width * y;
        applyHalf(offset, 0, runs.firstBegin, runs.firstEnd, width / 2);
        applyHalf(offset, width / 2, runs.secondBegin, runs.secondEnd, width);
    };

    // Row `distance` of the first half and row `height - distance` of the second.
    for (std::int64_t distance = 0; distance <= height - height / 2; ++distance) {
        const bool hasFirst = distance < height / 2;
        const bool hasSecond = distance > 0;
        if (ring.isBeyond(distance)) {
            const std::int64_t first = 2 * width * distance;
            const std::int64_t second = 2 * width * (height - distance);
            if (hasFirst) outside(src + first, dst + first, width);
            if (hasSecond) outside(src + second, dst + second, width);
            continue;
        }
        const Ring::Runs runs = ring.prepareLine(distance);
        if (hasFirst) applyRow(distance, runs);
        if (hasSecond) applyRow(height - distance, runs);
    }
}

}  // namespace mvi
