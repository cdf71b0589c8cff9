// The waves of good pictures that filters are proposed without.
#pragma once

#include <vector>

#include "../filter_step.h"
#include "images.h"

namespace mvi {

/// What removes the strongest waves of a picture that stand in the way of spots of these radii.
std::vector<mvFilterStep> strongWaves(const DoubleView& picture, const std::vector<double>& radii);

/// The steps that a ring behind them needs: waves that it clears by itself are left to it.
std::vector<mvFilterStep> wavesWithin(const std::vector<mvFilterStep>& waves,
                                      const mvFilterStep& ring);

}  // namespace mvi
