// The pictures that filters are proposed from: what is wrong with them, what is looked at of them.
#pragma once

#include <string>
#include <vector>

#include "images.h"

namespace mvi {

/// Why no filters can be proposed from the pictures, as a sentence; empty when they can be.
std::string refusalOf(const std::vector<DoubleView>& pictures, double white);

/// The pictures themselves, or windows of those that are longer than a plane: as many as have about
/// the pels of one plane of 2048 x 2048, evenly spread.
std::vector<DoubleView> lookedAt(const std::vector<DoubleView>& pictures);

/// The radii that fit eight times into the shorter side of every picture.
std::vector<double> fittingRadii(const std::vector<DoubleView>& pictures,
                                 const std::vector<double>& radii);

}  // namespace mvi
