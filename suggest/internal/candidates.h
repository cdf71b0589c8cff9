// The filters that are tried.
#pragma once

#include <optional>
#include <vector>

#include "../filter_step.h"

namespace mvi {

/// What is asked for: the radii, and the direction of lobes; rings without one. The pictures have
/// been through the filters `before` already, which the program applies in the same plane.
struct SearchedFor {
    std::vector<double> radii;
    std::optional<double> direction{};
    std::vector<mvFilterStep> before{};
};

/// Filters spread over frequencies, widths and plateaus that may suit one of the radii, with a DC
/// radius of 1. All numbers have three significant digits.
std::vector<mvFilterStep> coarseFilters(const SearchedFor& wanted);

/// The neighbours of a filter along each of its numbers, `ratio` times as large or as small.
std::vector<mvFilterStep> neighbours(const mvFilterStep& step, double ratio);

/// The DC radii that make a difference for the filter in a plane of that side.
std::vector<long> dcRadii(const mvFilterStep& step, long side);

/// The frequency above which hardly anything passes.
double upperEdge(const mvFilterStep& step);

/// Whether the filter may suit a spot of that radius: its frequency is not beyond what the spot
/// has.
bool isWithinReach(const mvFilterStep& step, double radius);

}  // namespace mvi
