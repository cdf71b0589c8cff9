// One filter as numbers: what a proposal consists of.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "filter_chain.h"

/// The commands of the program that build a filter from numbers.
enum class mvFilterKind { bandPass, bandReject, gabor, gaborReject };

/// A filter without its plane. Frequencies and widths are in cycles per pixel, the angle in
/// degrees, as on the command line. Rings have no angle and nothing across.
struct mvFilterStep {
    mvFilterKind kind = mvFilterKind::bandPass;
    double frequency = 0;
    double sigma = 0;
    double plateau = 0;
    double degrees = 0;
    double sigmaAcross = 0;
    double plateauAcross = 0;
    long dcRadius = 0;
    bool bothSides = false;  ///< of a lobe: with its mirror lobe, so that the result is real

    friend bool operator==(const mvFilterStep&, const mvFilterStep&) = default;
};

/// The steps that are one filter each: a step with both sides becomes its two lobes.
std::vector<mvFilterStep> mfSingleSteps(const std::vector<mvFilterStep>& steps);

/// The filter of a single step for planes of a padded size. Throws what its constructor throws.
std::unique_ptr<mvFrequencyFilter> mfBuildFilter(const mvFilterStep& step, mvPair<long> plane);

/// The filters of all single steps, in the order in which they are applied.
mvFilterChain mfBuildFilters(const std::vector<mvFilterStep>& steps, mvPair<long> plane);

/// How far the filters reach in a picture, in pels, one after the other, as mfFilterReach says; the
/// plane changes nothing in it. (0, 0) without filters. Throws for parameters that no plane takes.
mvPair<long> mfFiltersReach(const std::vector<mvFilterStep>& steps);

/// What stands between `mvfreq` and the names of input and output: commands and their options, with
/// numbers that give the very same filters.
std::vector<std::string> mfFilterArguments(const std::vector<mvFilterStep>& steps);

/// The value rounded to three significant digits, and such a value as a text without exponent.
double mfRoundedNumber(double value);
std::string mfNumberText(double value);
