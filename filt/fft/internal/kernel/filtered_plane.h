// Forward transform, filter and inverse transform of a picture in one go, without a plane.
#pragma once

#include <filt/fft/internal/kernel/path.h>
#include <filt/fft/internal/kernel/spectrum_gains.h>
#include <filt/fft/internal/kernel/work.h>
#include <filt/platform.h>

#include <cstdint>
#include <vector>

namespace mvi {

/// What a tile of a picture becomes: the magnitudes, bit for bit, that the forward transform of the
/// tile's pels, the gains and the inverse transform give.
///
/// Rows of pels become panels of the few columns that the gains leave, these become the few rows
/// that they leave, and these become finished columns. Nothing else of the plane is computed or
/// takes memory. The sign of a zero may differ on the way, which no magnitude shows.
class FilteredPlane {
  public:
    /// For a width of 4 and more; `gains` outlive the object.
    FilteredPlane(const SpectrumGains& gains, const KernelPath& path);

    /// Transforms the rows row(0) .. row(rows - 1) of `filled` pels each; zeros follow them.
    /// `row(y)` may give the same memory for each kMostLanes-th row.
    template <class T, class Row>
    void forward(long rows, long filled, Row row) {
        const T* pels[kMostLanes];
        for (long y = 0; y < rows; y += path_.lanes) {
            const long count = std::min(path_.lanes, rows - y);
            for (long r = 0; r < count; ++r) pels[r] = row(y + r);
            pollLines(y, y + count);
            path_.pels<T>().pelsToPanels(pels, count, filled, gains_.size().x, spectrum_, y,
                                         scratch_);
        }
        pollLines(rows, gains_.size().y);
        filter(rows);
    }

    /// Computes `columns.y` columns from column columns.x on and calls take(x, count, magnitudes)
    /// for a few of them at a time: `count` from column x on. The magnitudes, not scaled, or their
    /// squares, of the plane's row y are magnitudes[lanes y] and on.
    template <class Take>
    void inverse(mvPair<long> columns, bool squared, Take take) {
        const Panels panels = prepareColumns(columns.x, columns.y);
        for (long x = panels.begin; x < panels.end; x += path_.lanes) {
            finishColumns(panels, x, squared);
            take(x, std::min(path_.lanes, panels.end - x), magnitudes_);
        }
        pollLines(panels.end - panels.begin, gains_.size().x);
    }

  private:
    void fillColumnRows();
    void filter(long filled);
    Panels prepareColumns(long x, long width);
    void finishColumns(const Panels& columns, long x, bool squared);
    void pollLines(long begin, long end);

    const SpectrumGains& gains_;
    const KernelPath& path_;
    Floats memory_;
    float *scratch_, *magnitudes_, *columns_;
    Panels spectrum_, mirrored_;
    std::vector<std::int32_t> columnRows_;
};

}  // namespace mvi
