// Tiles of the good pictures, transformed once and filtered often.
#pragma once

#include <filt/fft.h>

#include <memory>
#include <vector>

#include "../filter_step.h"
#include "images.h"
#include "magnitude_quantile.h"

namespace mvi {

/// What becomes of a tile: a ring leaves real tiles real, so that two of them share a plane, one as
/// the real part and one as the imaginary part; behind a lobe each tile is complex.
enum class Answers { real, complex };

/// One axis of the planes that tiles lie in.
struct TileAxis {
    long side;    ///< of the plane
    long margin;  ///< pels at either end that do not count
    bool
        isWhole;  ///< the whole picture lies at 0, and its mirror image fades into itself behind it

    // NOLINTNEXTLINE(modernize-use-nullptr): reports what the compiler writes.
    friend auto operator<=>(const TileAxis&, const TileAxis&) = default;
};

/// How tiles are laid and looked at: with `scale` above 1 only the lowest frequencies are kept,
/// which makes the filtered tiles so many times smaller.
struct TileLayout {
    TileAxis x, y;
    long scale;

    // NOLINTNEXTLINE(modernize-use-nullptr): reports what the compiler writes.
    friend auto operator<=>(const TileLayout&, const TileLayout&) = default;
};

/// Spectra of tiles that lie spread over pictures.
class SearchTiles {
  public:
    /// About `most` tiles in all.
    SearchTiles(const std::vector<DoubleView>& pictures, const TileLayout& layout, long most,
                Answers answers);

    /// The background behind a filter. Its DC radius counts bins of planes as large as the
    /// layout's.
    double background(const mvFilterStep& step);

    /// The largest magnitude behind it.
    double peak(const mvFilterStep& step);

  private:
    struct Core {
        long x, y, width, height;  // the pels of a filtered tile that count
    };
    struct Plane {
        mvFrequencyBuffer spectrum;
        std::vector<Core> cores;  // of the tiles in it: one, or two
    };

    void addPicture(const DoubleView& picture, long most);
    void addTile(const DoubleView& picture, mvPair<long> first);
    void finishPlane();
    Core coreOf(const DoubleView& picture) const;
    double unscaled(double magnitude) const;
    template <class Each>
    void visit(const mvFilterStep& step, Each each);
    template <class Each>
    void visit(const Plane& plane, Each each) const;

    TileLayout layout_;
    Answers answers_;
    std::vector<Plane> planes_;
    DoubleImage parts_[2];  // of the plane that is being filled
    std::vector<Core> filled_;
    MagnitudeCounts counts_;

    // Kept from filter to filter, since fresh memory costs more than a small transform.
    mvFrequencyBuffer filtered_;
    DoubleImage results_[2];
};

}  // namespace mvi
