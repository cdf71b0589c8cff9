// Pictures that other filters are tried on.
#pragma once

#include <vector>

#include "../filter_step.h"
#include "images.h"

namespace mvi {

/// What filters leave of pictures, with its signs. A margin of -1 is the filters' reach.
std::vector<DoubleView> filtered(const std::vector<DoubleView>& pictures,
                                 const std::vector<mvFilterStep>& steps, mvPair<long> plane,
                                 mvPair<long> margin = {-1, -1});

}  // namespace mvi
