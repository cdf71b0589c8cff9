// The ring filters as defined: a profile over the distance from the ring, one coefficient a time.
#pragma once

#include <cstdint>
#include <vector>

#include "reference/fft/transforms.h"

namespace reference {

/// Lengths in cycles per pixel; sides of the plane in bins; `radius` of the DC square.
struct RingParameters {
    double sigma = 0;
    double plateau = 0;
    double frequency = 0;
    long width = 1;
    long height = 1;
    long radius = 0;
};

struct Ring {
    RingParameters given;
    std::int32_t supportWidth = 0;
    std::int32_t supportHeight = 32;
    /// supportWidth * supportHeight responses, 1/32 bin apart, and three zeros behind them.
    std::vector<float> profile;

    std::int32_t entries() const { return supportWidth * supportHeight; }
};

Ring bandPass(const RingParameters& given);
Ring bandReject(const RingParameters& given);

/// In place, and from `src` to `dst`, which may be one object. They throw what the DC square
/// throws and leave the buffers as they stand then.
void applyBandPass(const Ring& ring, Spectrum& buf);
void applyBandPass(const Ring& ring, const Spectrum& src, Spectrum& dst);
void applyBandReject(const Ring& ring, Spectrum& buf);
void applyBandReject(const Ring& ring, const Spectrum& src, Spectrum& dst);

}  // namespace reference
