// What a filter makes of the middle of a spot.
#pragma once

#include "../filter_step.h"

namespace mvi {

/// A bump of height 1 with Gaussian half-widths across and along, in pels, its longer axis across
/// the direction of the lobe that is to find it.
struct Bump {
    double across;
    double along;
};

/// How many times a scratch is as long as it is wide.
constexpr double kScratchLength = 8;

/// The answer of a band-pass ring or of a Gabor lobe without plateau to a bump, by the filter's
/// formula: close to what a plane gives, and quick.
double spotAnswer(const mvFilterStep& step, const Bump& bump, mvPair<long> plane);

/// A bump in a picture that is black besides, in the middle or up to 31 pels above and left of it,
/// at a multiple of 32 in both directions.
mvPelBuffer<double> laidBump(const Bump& bump, double degrees, mvPair<long> size);

}  // namespace mvi
