// Forward transform, filter and inverse transform of a picture in one go, without a plane.
#pragma once

#include <filt/fft/internal/kernel/path.h>
#include <filt/fft/internal/kernel/spectrum_filter.h>
#include <filt/fft/internal/kernel/work.h>
#include <filt/platform.h>

#include <cstdint>
#include <vector>

namespace mvi {

/// What a tile of a picture becomes: the magnitudes, bit for bit, that the forward transform of the
/// tile's pels, the filter and the inverse transform give.
///
/// Rows of pels become panels of the few columns that the filter leaves, these become the few rows
/// that it leaves, and these become finished columns. Nothing else of the plane is computed or
/// takes memory. The sign of a zero may differ on the way, which no magnitude shows.
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
                                         scratch_);
        }
        pollLines(rows, filter_.size().y);
        passColumns(rows);
    }

    /// Computes `columns.y` columns from column columns.x on and calls take(x, count, magnitudes)
    /// for a few of them at a time: `count` from column x on. The magnitudes, not scaled, or their
    /// squares, of the plane's row y are magnitudes[lanes y] and on.
    template <class Take>
    void inverse(mvPair<long> columns, bool squared, Take take) {
        prepareColumns(columns.x, columns.x + columns.y);
        for (long i = 0; i < columns.y; i += path_.lanes) {
            finishColumns(i, squared);
            take(columns.x + i, std::min(path_.lanes, columns.y - i), magnitudes_);
        }
        pollLines(columns.y, filter_.size().x);
    }

  private:
    void fillColumnRows();
    void passColumns(long filled);
    void makeColumns();
    void prepareColumns(long begin, long end);
    void finishColumns(long index, bool squared);
    static void pollLines(long begin, long end);

    const SpectrumFilter& filter_;
    const KernelPath& path_;
    Floats memory_;
    float *scratch_, *magnitudes_;
    Panels spectrum_;
    // The columns of the inverse: panels in a few blocks, each of as many panels.
    std::vector<Floats> columnBlocks_;
    std::vector<Panels> columns_;
    long panelsPerBlock_;
    std::vector<std::int32_t> columnRows_;
};

}  // namespace mvi
