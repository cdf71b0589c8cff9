// A tile by the way that serves every filter: forward transform, filters, inverse transform.
#pragma once

#include <filt/fft/internal/kernel/plane_output.h>
#include <filt/freqfilt/internal/border.h>
#include <filt/freqfilt/internal/filter_list.h>

namespace mvi {

/// One object for each thread; it keeps its plane from tile to tile.
class ThreeCalls {
  public:
    /// The filters outlive the object.
    ThreeCalls(FilterList filters, mvPair<long> plane) : filters_(filters), plane_(plane) {}

    /// Filters the image of a tile and writes the part of it that `out` asks for. All rows are read
    /// before anything is written.
    template <class T, class P>
    void compute(TileImage<T>& image, const PlaneOutput<P>& out);

  private:
    template <class T>
    void transform(TileImage<T>& image);
    void applyFilters();
    void requireSamePlane() const;

    FilterList filters_;
    mvPair<long> plane_;
    mvFrequencyBuffer buffer_;
};

}  // namespace mvi
