// The ring: its radial profile and its geometry.
#include <filt/fft/internal/integers.h>
#include <filt/freqfilt/internal/ring.h>
#include <filt/freqfilt/internal/support.h>
#include <algorithm>
#include <cstdlib>

std::int32_t mf_RingSupport(const mvRingParameters& ring) {
    const auto width = static_cast<double>(ring.size.x);
    return mf_OddSide(width * ring.sigma * 4.0 + width * ring.plateau + width * 0.05);
}

void mf_FillRingProfile(const mvRingParameters& ring, bool complement, mvFilterResponse& profile) {
    const auto width = static_cast<double>(ring.size.x);
    const double sigmaBins = width * ring.sigma;
    const double plateauBins = width * ring.plateau;
    const double divisor = -2.0 * (sigmaBins * sigmaBins);
    const double c = divisor == 0.0 ? 0.0 : 1.0 / divisor;
    float* gain = profile.data();
    float* const end = gain + profile.size();
    for (double i = 0.0; gain != end; ++gain, ++i) {
        const double d = std::max(i * 0.03125 - plateauBins, 0.0);
        const double falloff = std::exp(d * d * c);
        *gain = static_cast<float>(complement ? 1.0 - falloff : falloff);
    }
}

mf_Ring::mf_Ring(const mvRingParameters& ring, const mvFilterResponse& profile)
    : width_(ring.size.x),
      height_(ring.size.y),
      gains_(profile.data()),
      count_(static_cast<std::int64_t>(profile.size())),
      radius_(static_cast<float>(static_cast<double>(width_) * ring.frequency)),
      samplesPerBin_(static_cast<float>(profile.height())) {
    const double aspect = static_cast<double>(height_) * (1.0 / static_cast<double>(width_));
    rowScale_ = 1.0 / (aspect * aspect);
    rowLimit_ = mf_Truncate<std::int32_t>(static_cast<double>(radius_) * aspect +
                                          static_cast<double>(profile.width()));
    const float support = static_cast<float>(profile.width());
    const float outer = support + radius_;
    const float inner = radius_ - support;
    outer2_ = mf_Truncate<std::int32_t>(outer * outer);
    inner2_ = inner >= 0.0f ? mf_Truncate<std::int32_t>(inner * inner) : -1;
}

std::int64_t mf_Ring::rowTerm(long y) const {
    const long dy = y < height_ / 2 ? y : y - height_;
    return mf_Truncate<std::int32_t>(static_cast<double>(dy * dy) * rowScale_);
}

std::int64_t mf_Ring::index(std::int64_t r2) const {
    const double distance = std::sqrt(static_cast<double>(r2)) - static_cast<double>(radius_);
    return std::abs(static_cast<std::int64_t>(
        mf_Truncate<std::int32_t>(distance * static_cast<double>(samplesPerBin_))));
}
