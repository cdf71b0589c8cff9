// Forward transform, filter and inverse transform of a picture in one go, without a plane.
#pragma once

#include <filt/fft/internal/kernel/inverse_columns.h>
#include <filt/fft/internal/kernel/path.h>
#include <filt/fft/internal/kernel/plane_output.h>
#include <filt/fft/internal/kernel/spectrum_filter.h>

namespace mvi {

/// What a tile of a picture becomes: the magnitudes, bit for bit, that the forward transform of the
/// tile's pels, the filter and the inverse transform give.
///
/// Rows of pels become panels of the few columns that the filter leaves, these become the few rows
/// that it leaves, and these become finished columns. Nothing else of the plane is computed or
/// takes memory. The sign of a zero may differ on the way, which no magnitude shows. Attention is
/// polled at least as often as by the three calls.
class FilteredPlane {
  public:
    /// For a width of 4 and more; `filter` outlives the object.
    FilteredPlane(const SpectrumFilter& filter, const KernelPath& path);

    /// Transforms the rows row(0) .. row(rows - 1) of `filled` pels each; zeros follow them.
    /// `row(y)` may give the same memory for each kMostLanes-th row.
    template <class T, class Row>
    void forward(long rows, long filled, Row row) {
        const T* pels[kMostLanes];
        for (long y = 0; y < rows; y += path_.lanes) {
            const long count = std::min(path_.lanes, rows - y);
            for (long r = 0; r < count; ++r) pels[r] = row(y + r);
            pollLines(y, y + count);
            path_.pels<T>().pelsToPanels(pels, count, filled, filter_.size().x, spectrum_, y,
                                         columns_.scratch());
        }
        pollLines(rows, filter_.size().y);
        passColumns(rows);
    }

    /// Writes the results that `out` asks for: magnitudes, or their squares to floats.
    template <class P>
    void inverse(const PlaneOutput<P>& out) {
        passRows(out.from.x, out.from.x + out.size.x);
        columns_.write(out);
    }

  private:
    void passColumns(long filled);
    void passRows(long begin, long end);

    const SpectrumFilter& filter_;
    const KernelPath& path_;
    InverseColumns columns_;
    Panels spectrum_;
};

}  // namespace mvi
