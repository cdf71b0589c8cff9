// A tile by the way that needs no plane.
#pragma once

#include <filt/fft/internal/kernel/filtered_plane.h>
#include <filt/fft/internal/kernel/plane_output.h>
#include <filt/freqfilt/internal/border.h>

#include <vector>

namespace mvi {

/// One object for each thread; it keeps its memory from tile to tile. For magnitudes and squares.
template <class T>
class PlanelessTile {
  public:
    /// `filter` outlives the object.
    explicit PlanelessTile(const SpectrumFilter& filter)
        : size_(filter.size()),
          plane_(filter, bestKernelPath()),
          rows_(static_cast<std::size_t>(kMostLanes * size_.x)) {}

    /// Filters the image of a tile and writes the part of it that `out` asks for. All rows are read
    /// before anything is written.
    template <class P>
    void compute(TileImage<T>& image, const PlaneOutput<P>& out);

  private:
    mvPair<long> size_;
    FilteredPlane plane_;
    std::vector<T> rows_;
};

}  // namespace mvi
