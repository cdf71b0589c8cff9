// The filters that are tried.
#include "candidates.h"

#include <algorithm>
#include <cmath>

namespace {

// A spot's spectrum is exp(-2 (pi r f)^2): what is beyond these multiples of 1 / r answers it
// badly, whatever the surface is.
constexpr double kLowest = 0.06, kHighest = 0.5, kRatio = 1.25;
constexpr double kMostFrequency = 0.48;

constexpr double kSigmas[] = {0.12, 0.22, 0.36, 0.6, 1.0};
constexpr double kPlateaus[] = {0, 0.3, 0.65};
constexpr double kSigmasAcross[] = {0.05, 0.12, 0.3, 0.7};

std::vector<double> frequencies(const std::vector<double>& radii) {
    const auto [least, most] = std::minmax_element(radii.begin(), radii.end());
    std::vector<double> all;
    const double highest = std::min(kHighest / *least, kMostFrequency);
    double frequency = kLowest / *most;
    while (frequency < highest) {
        all.push_back(frequency);
        frequency *= kRatio;
    }
    return all;
}

mvFilterStep rounded(mvFilterStep step) {
    for (double* number : {&step.frequency, &step.sigma, &step.plateau, &step.sigmaAcross}) {
        *number = mfRoundedNumber(*number);
    }
    return step;
}

void addRings(double frequency, std::vector<mvFilterStep>& steps) {
    for (const double sigma : kSigmas) {
        for (const double plateau : kPlateaus) {
            steps.push_back(rounded({.frequency = frequency,
                                     .sigma = sigma * frequency,
                                     .plateau = plateau * frequency,
                                     .dcRadius = 1}));
        }
    }
    // A blur less the mean.
    steps.push_back(rounded({.sigma = 0.7 * frequency, .dcRadius = 1}));
}

void addLobes(double frequency, double degrees, std::vector<mvFilterStep>& steps) {
    for (const double sigma : kSigmas) {
        for (const double across : kSigmasAcross) {
            steps.push_back(rounded({.kind = mvFilterKind::gabor,
                                     .frequency = frequency,
                                     .sigma = sigma * frequency,
                                     .degrees = degrees,
                                     .sigmaAcross = across * frequency,
                                     .dcRadius = 1}));
        }
    }
}

bool isPossible(const mvFilterStep& step) {
    return step.frequency >= 0 && step.frequency <= 0.5 && step.sigma > 0 && step.plateau >= 0;
}

// The filter with one number changed, where that is a filter.
void addChanged(std::vector<mvFilterStep>& steps, mvFilterStep step, double mvFilterStep::*number,
                double value) {
    step.*number = mfRoundedNumber(value);
    if (isPossible(step)) steps.push_back(step);
}

void addScaled(std::vector<mvFilterStep>& steps, const mvFilterStep& step,
               double mvFilterStep::*number, double ratio) {
    addChanged(steps, step, number, step.*number * ratio);
    addChanged(steps, step, number, step.*number / ratio);
}

}  // namespace

std::vector<mvFilterStep> mvi::coarseFilters(const SearchedFor& wanted) {
    std::vector<mvFilterStep> steps;
    for (const double frequency : frequencies(wanted.radii)) {
        if (wanted.direction) {
            addLobes(frequency, *wanted.direction, steps);
        } else {
            addRings(frequency, steps);
        }
    }
    return steps;
}

std::vector<mvFilterStep> mvi::neighbours(const mvFilterStep& step, double ratio) {
    std::vector<mvFilterStep> steps;
    addScaled(steps, step, &mvFilterStep::frequency, ratio);
    addScaled(steps, step, &mvFilterStep::sigma, ratio * ratio);
    if (step.kind == mvFilterKind::gabor) {
        addScaled(steps, step, &mvFilterStep::sigmaAcross, ratio * ratio);
    }
    const double width = step.frequency + step.sigma;
    addChanged(steps, step, &mvFilterStep::plateau, step.plateau + (ratio - 1) * width);
    addChanged(steps, step, &mvFilterStep::plateau,
               std::max(step.plateau - (ratio - 1) * width, 0.0));
    // A wider ring that keeps its upper flank, and a narrower one.
    for (const double factor : {ratio, 1 / ratio}) {
        mvFilterStep moved = step;
        moved.frequency = mfRoundedNumber(step.frequency / factor);
        moved.sigma = mfRoundedNumber(step.sigma * factor);
        if (isPossible(moved)) steps.push_back(moved);
    }
    return steps;
}

// A square matters where the filter lets through what it clears.
std::vector<long> mvi::dcRadii(const mvFilterStep& step, long side) {
    std::vector<long> radii{1};
    for (const long radius : {2l, 3l, 4l, 6l, 9l}) {
        const double outermost = static_cast<double>(radius - 1) / static_cast<double>(side);
        const bool matters = step.frequency - step.plateau - 2.5 * step.sigma < outermost;
        if (matters && outermost < step.frequency + step.plateau + step.sigma) {
            radii.push_back(radius);
        }
    }
    return radii;
}

double mvi::upperEdge(const mvFilterStep& step) {
    return step.frequency + step.plateau + 3 * std::max(step.sigma, step.sigmaAcross);
}

bool mvi::isWithinReach(const mvFilterStep& step, double radius) {
    const double middle = std::max(step.frequency, step.sigma);
    return middle * radius >= kLowest / kRatio && middle * radius <= kHighest * kRatio;
}
