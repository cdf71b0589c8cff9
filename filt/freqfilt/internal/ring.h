// The ring: its radial profile and the walk over the plane that applies it.
#pragma once

#include <filt/freqfilt/internal/outside.h>
#include <filt/freqfilt/response.h>
#include <filt/freqfilt/ring_filter.h>
#include <cmath>
#include <cstdint>

/// Gains per frequency bin in a profile.
inline constexpr std::int32_t mf_kSamplesPerBin = 32;

/// The length of the profile in bins: four sigmas, the plateau and a twentieth of the width. Throws
/// std::length_error when it does not fit.
std::int32_t mf_RingSupport(const mvRingParameters& ring);

/// Gain i is that at i / 32 bins from the ring: exp(-(distance - plateau)^2 / (2 sigma^2)) beyond
/// the plateau, or its complement to 1.
void mf_FillRingProfile(const mvRingParameters& ring, bool complement, mvFilterResponse& profile);

/// The ring on a plane of one size. Distances from DC are in x bins, so that the ring is round in
/// cycles per pixel.
class mf_Ring {
  public:
    mf_Ring(const mvRingParameters& ring, const mvFilterResponse& profile);

    long width() const { return width_; }
    long height() const { return height_; }

    /// True for the rows that lie beyond the ring as a whole. The limit is the ring's radius in y
    /// bins plus the support, not both scaled: on planes that are taller than wide it clears rows
    /// that the outer flank still reaches.
    bool isRowBeyond(long y) const { return (y < height_ / 2 ? y : height_ - y) > rowLimit_; }

    /// The part of the squared distance that the row contributes, truncated.
    std::int64_t rowTerm(long y) const;

    /// Where an element of squared distance r2 finds its gain; may lie behind the profile.
    std::int64_t index(std::int64_t r2) const;

    /// The gain there: the zero behind the profile's last one when there is none.
    float gain(std::int64_t r2) const { return gains_[std::min(index(r2), count_)]; }

    /// Inside by squared distance: between the truncated squares of the ring's inner and outer
    /// radius.
    bool isInsideBySquares(std::int64_t r2) const { return r2 > inner2_ && r2 < outer2_; }

    /// Inside by profile: wherever there is a gain.
    bool isInsideByProfile(std::int64_t r2) const { return index(r2) < count_; }

  private:
    long width_, height_;
    const float* gains_;
    std::int64_t count_;
    float radius_;
    float samplesPerBin_;
    double rowScale_;
    std::int64_t rowLimit_, outer2_, inner2_;
};

/// Writes src times the ring's gains to dst, which may be src; outside the ring goes through
/// `outside`.
template <class IsInside, class Outside>
void mf_ApplyRing(const mf_Ring& ring, const float* src, float* dst, IsInside isInside,
                  Outside outside) {
    const long width = ring.width();
    for (long y = 0; y < ring.height(); ++y, src += 2 * width, dst += 2 * width) {
        if (ring.isRowBeyond(y)) {
            outside(src, dst, width);
            continue;
        }
        const std::int64_t rowTerm = ring.rowTerm(y);
        for (long x = 0; x < width; ++x) {
            const std::int64_t dx = x < width / 2 ? x : x - width;
            const std::int64_t r2 = dx * dx + rowTerm;
            if (isInside(r2)) {
                const float gain = ring.gain(r2);
                dst[2 * x] = src[2 * x] * gain;
                dst[2 * x + 1] = src[2 * x + 1] * gain;
            } else {
                outside(src + 2 * x, dst + 2 * x, 1);
            }
        }
    }
}
