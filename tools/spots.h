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

/// How far each value is from the median of all, in spreads. The spread is 1.4826 times the median
/// of the distances, the standard deviation where values are spread normally: what stands out
/// hardly changes it. A spread below 0.001 grey levels counts as that, so that the rounding of an
/// even picture does not stand out.
void toStrengths(mvPelBuffer<double>& values);

/// The spots whose strongest pel is above `threshold`. Pels above half of it belong to a spot; gaps
/// of up to three pels, as between the waves around a defect, do not part it. The strongest spot
/// comes first, of equal ones the upper, then the left one. Leaves nothing of `strengths` that
/// could be of use.
std::vector<Spot> findSpots(mvPelBuffer<double>& strengths, double threshold);
