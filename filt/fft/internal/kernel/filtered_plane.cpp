// The passes of a filtered picture.
#include <filt/fft/internal/kernel/filtered_plane.h>

namespace mvi {

FilteredPlane::FilteredPlane(const SpectrumFilter& filter, const KernelPath& path)
    : filter_(filter),
      path_(path),
      columns_(filter.size(), filter.rows(), path,
               panelFloats(path, filter.end() - filter.begin(), filter.size().y)),
      spectrum_{columns_.more(), panelPitch(path, filter.size().y), filter.begin(), filter.end()} {}

// The forward column pass, and the filter.
void FilteredPlane::passColumns(long filled) {
    for (long x = spectrum_.begin; x < spectrum_.end; x += path_.lanes) {
        const long column = x - spectrum_.begin, panel = column / path_.lanes;
        pollLines(column, column + path_.lanes);
        filter_.passColumns(path_, x, spectrum_.first + spectrum_.pitch * panel, filled,
                            columns_.scratch());
    }
    // The polls of the columns that the filter does not leave, of two transpositions and of the
    // mirrored half.
    pollLines(0, filter_.size().x / 2 + 1);
    for (int i = 0; i < 3; ++i) pollAttention();
}

// The inverse row pass over the rows that hold anything.
void FilteredPlane::passRows(long begin, long end) {
    const HalfSpectrum half{spectrum_, filter_.size().x, filter_.size().y};
    columns_.passRows(begin, end,
                      [&](const std::int32_t* rows, long count, const PanelBlocks& to, long y) {
                          pollLines(y, y + count);
                          filter_.passRows(path_, half, rows, count, to, y, columns_.scratch());
                      });
    pollLines(static_cast<long>(filter_.rows().size()), filter_.size().y);
    for (int i = 0; i < 3; ++i) pollAttention();
}

}  // namespace mvi
