// A tile by the way that serves every filter: forward transform, filter, inverse transform.
#pragma once

#include <filt/freqfilt/internal/border.h>
#include <filt/freqfilt/internal/tile_output.h>

namespace mvi {

/// One object for each thread; it keeps its plane from tile to tile.
class ThreeCalls {
  public:
    /// `filter` outlives the object.
    ThreeCalls(const mvFrequencyFilter& filter, mvPair<long> plane)
        : filter_(filter), plane_(plane) {}

    /// Filters the image of a tile and writes the part of it that `out` asks for. All rows are read
    /// before anything is written.
    template <class T, class P>
    void compute(TileImage<T>& image, const TileOutput<P>& out);

  private:
    template <class T>
    void transform(TileImage<T>& image);
    void requireSamePlane() const;

    const mvFrequencyFilter& filter_;
    mvPair<long> plane_;
    mvFrequencyBuffer buffer_;
};

}  // namespace mvi
