// What stands out in the result of a filter.
#pragma once

#include <base/pel_buffer.h>

#include <vector>

/// Pels that belong together: their box, and the strongest of them.
struct Spot {
    long x, y;  // of the strongest pel
    long left, top, width, height;
    long pels;
    double strength;
};

/// The spots whose strongest pel is above `threshold`. Pels above half of it belong to a spot; gaps
/// of up to three pels, as between the waves around a defect, do not part it. The strongest spot
/// comes first, of equal ones the upper, then the left one. Leaves nothing of `strengths` that
/// could be of use.
std::vector<Spot> findSpots(mvPelBuffer<double>& strengths, double threshold);
