// The magnitude that all but a thousandth of the pels stay below.
#pragma once

#include <base/pel_buffer.h>

#include <cstdint>
#include <vector>

namespace mvi {

/// The part of the magnitudes that the background may not exceed.
constexpr double kQuantile = 0.999;

/// Counts magnitudes in classes a 128th of an octave wide: fast, and exact to half a per cent.
class MagnitudeCounts {
  public:
    void add(double magnitude);

    /// The quantile of what was added since the last call; 0 of nothing. Forgets it.
    double takeQuantile();

  private:
    std::vector<std::uint32_t> counts_ = std::vector<std::uint32_t>(1u << 16);
    std::uint64_t total_ = 0;
};

/// The exact quantile: of n values the one with ceil(0.999 n) - 1 below it. Reorders them.
double quantileOf(std::vector<float>& magnitudes);

}  // namespace mvi
