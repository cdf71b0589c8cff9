// What filters make of whole pictures.
#pragma once

#include <vector>

#include "../filter_step.h"
#include "images.h"
#include "spot_answer.h"

namespace mvi {

/// Filters pictures as the program does. The filters' plane is the one that the program takes for a
/// picture of size `first`.
class WholePictures {
  public:
    WholePictures(std::vector<DoubleView> pictures, mvPair<long> first);

    /// How many filters are worth being measured for one defect: more of small pictures.
    std::size_t finalists() const;

    /// The 99.9 % quantile of the magnitudes of all pictures. Remembers what it has measured.
    double background(const std::vector<mvFilterStep>& steps);

    /// The largest magnitude that is made of a bump in the middle of a black picture, or of a tile
    /// where the first picture is cut into tiles.
    double answer(const std::vector<mvFilterStep>& steps, const Bump& bump, double degrees) const;

  private:
    double measured(const std::vector<mvFilterStep>& steps) const;

    std::vector<DoubleView> pictures_;
    mvPair<long> first_;
    std::size_t pels_ = 0;
    std::vector<std::pair<std::vector<mvFilterStep>, double>> known_;
};

}  // namespace mvi
