// Filters proposed from pictures of a good surface.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "filter_step.h"

/// A filter for defects of one size.
///
/// A soft spot of radius r is a bump exp(-d^2 / (2 r^2)), its height being its contrast; a scratch
/// is a bump that is eight times as long as it is wide.
struct mvSuggestion {
    double radius = 0;      ///< of the spot, or of the scratch across, in pels
    double levels = 0;      ///< the contrast, in grey levels, at which it stands out threefold
    double answer = 0;      ///< peak of the filtered spot of contrast 1
    double background = 0;  ///< 99.9 % quantile of the good pictures' filtered magnitudes
    std::vector<mvFilterStep> steps;  ///< one filter, or several that are applied in turn
    mvPair<long> plane;               ///< the plane that the program takes for the first picture

    /// What stands between `mvfreq` and the names of input and output.
    std::vector<std::string> arguments;
};

/// How mfSuggest goes about it.
struct mvSuggestOptions {
    /// The radii to propose filters for, in pels.
    std::vector<double> radii{1.5, 2, 3, 4, 6, 8, 12, 16, 24, 32, 48};

    /// Proposes lobes for scratches instead of rings for spots: the angle of the lobes in degrees,
    /// which is the direction across the scratches: 0 for vertical ones, 90 for horizontal ones.
    std::optional<double> direction{};

    /// The largest pel there is, such as 255; 0 when there is none. Pictures in which half of the
    /// pels are there, or 0, are refused.
    double white = 0;

    /// Called with the part that is done, 0 to 1, some hundred times; what it throws leaves
    /// mfSuggest.
    std::function<void(double)> progress{};
};

/// What mfSuggest has found.
struct mvSuggestions {
    /// In the order of the radii; empty when the pictures were refused.
    std::vector<mvSuggestion> filters;

    /// Why the pictures were refused, as a sentence; else empty.
    std::string refusal;

    /// What should be known besides, as sentences: radii that were left out, and the like.
    std::vector<std::string> remarks;
};

/// Proposes, for each radius, the filter whose answer to such a spot stands out most from what the
/// good surface itself answers: the peak of the filtered spot over the 99.9 % quantile of the
/// filtered magnitudes of all pictures.
///
/// Rings, or lobes, of many frequencies, widths, plateaus and DC radii are tried on tiles of the
/// pictures; the best are refined there, and what comes out is measured by mfFilterImage on whole
/// pictures, in the planes that the program takes. Where the first picture has strong waves, all
/// that is tried again on the pictures without them, and what rejects the waves comes first in
/// `steps` where that saves a fifth of the levels. Of a picture above 2048 pels a side, windows of
/// 1024 pels are looked at instead. The same pictures give the same filters; building filters rests
/// on the C library's functions, so that other machines may differ in the last digits of `levels`.
///
/// Pictures are in grey levels, all of one depth. Throws mvFrequencyDefs::UnboundWindow for a
/// picture that is not bound, what `progress` throws, what a failing attention poll throws.
mvSuggestions mfSuggest(const std::vector<mvPelBuffer_const<double>>& pictures,
                        const mvSuggestOptions& options = {});
