// The waves of good pictures that filters are proposed without.
#include "strong_waves.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "../peaks.h"

namespace {

// More make a line that nobody reads, and what stands out less is no wave of the surface.
constexpr long kMost = 4;
constexpr double kLeastDecibels = 30;

// Of a spot of radius r hardly anything is beyond this multiple of 1 / r.
constexpr double kHighest = 0.5;

// A ring clears what lies so many of its sigmas beside it: less than a thousandth passes.
constexpr double kCleared = 3.7;

bool isInTheWay(const mvPeak& wave, const std::vector<double>& radii) {
    const double least = *std::min_element(radii.begin(), radii.end());
    return wave.decibels >= kLeastDecibels && wave.frequency * least <= kHighest;
}

bool isCleared(const mvFilterStep& wave, const mvFilterStep& ring) {
    const double distance = std::abs(wave.frequency - ring.frequency) - wave.sigma - ring.plateau;
    return distance > kCleared * ring.sigma;
}

}  // namespace

std::vector<mvFilterStep> mvi::strongWaves(const DoubleView& picture,
                                           const std::vector<double>& radii) {
    std::vector<mvFilterStep> steps;
    for (const mvPeak& wave : mfPeaks(picture, kMost)) {
        if (!isInTheWay(wave, radii)) continue;
        steps.insert(steps.end(), wave.steps.begin(), wave.steps.end());
    }
    return steps;
}

std::vector<mvFilterStep> mvi::wavesWithin(const std::vector<mvFilterStep>& waves,
                                           const mvFilterStep& ring) {
    std::vector<mvFilterStep> within;
    std::copy_if(waves.begin(), waves.end(), std::back_inserter(within),
                 [&](const mvFilterStep& wave) { return !isCleared(wave, ring); });
    return within;
}
