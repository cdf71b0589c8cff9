// The lobe filters as defined: a turned Gaussian patch, one element of the plane a time.
#pragma once

#include <cstdint>
#include <vector>

#include "reference/fft/transforms.h"

namespace reference {

/// Lengths in cycles per pixel, x along the lobe's direction and y across it; angle in radians;
/// sides of the plane in bins; `radius` of the DC square.
struct LobeParameters {
    double sigmaX = 0;
    double sigmaY = 0;
    double plateauX = 0;
    double plateauY = 0;
    double angle = 0;
    double frequency = 0;
    long width = 1;
    long height = 1;
    long radius = 0;
};

struct Lobe {
    LobeParameters given;
    std::int32_t supportWidth = 0;
    std::int32_t supportHeight = 0;
    /// supportHeight rows of supportWidth responses.
    std::vector<float> response;
};

/// The patch in shifted coordinates, all limits inclusive.
struct Placement {
    long colMin, colMax, rowMin, rowMax;
};

Lobe gabor(const LobeParameters& given);
Lobe gaborReject(const LobeParameters& given);
Placement placement(const Lobe& lobe);

/// In place, and from `src` to `dst`, which may be one object. They throw what the DC square
/// throws and leave the buffers as they stand then.
void applyGabor(const Lobe& lobe, Spectrum& buf);
void applyGabor(const Lobe& lobe, const Spectrum& src, Spectrum& dst);
void applyGaborReject(const Lobe& lobe, Spectrum& buf);
void applyGaborReject(const Lobe& lobe, const Spectrum& src, Spectrum& dst);

}  // namespace reference
