// Places of a spectrum that stand out of their surroundings.
#pragma once

#include <vector>

#include "images.h"

namespace mvi {

/// A wave. Frequencies, the width of its place and the uncertainty of that are in cycles per pixel.
struct SpectrumPeak {
    double u, v;  // to the right, or straight down
    double amplitude;
    double decibels;  // above the mean of the logarithms around it
    double width;
    double uncertainty;
};

/// The strongest waves of a picture, by their amplitude, `most` of them at most.
std::vector<SpectrumPeak> spectrumPeaks(const DoubleView& picture, long most);

}  // namespace mvi
