// The passes of a filtered picture.
#include <filt/fft/internal/kernel/filtered_plane.h>

namespace mvi {

namespace {

// Panels whose addresses are a multiple of 128 KiB apart compete for the same places in the caches.
long panelRows(long rows) {
    return rows % 256 == 0 ? rows + 17 : rows;
}

long panelCount(const KernelPath& path, long columns) {
    return (columns + path.lanes - 1) / path.lanes;
}

long floatsOf(const KernelPath& path, long columns, long rows) {
    return 2 * path.lanes * panelRows(rows) * panelCount(path, columns);
}

long rowsLeft(const SpectrumGains& gains) {
    return static_cast<long>(gains.rows().size());
}

}  // namespace

// All memory is one block: allocators keep one from call to call, but give several back.
FilteredPlane::FilteredPlane(const SpectrumGains& gains, const KernelPath& path)
    : gains_(gains), path_(path), columnRows_(static_cast<std::size_t>(gains.size().y)) {
    const mvPair<long> size = gains.size();
    const auto scratch = static_cast<long>(panelScratchFloats(size.x, size.y));
    const long magnitudes = path.lanes * size.y;
    const long half = floatsOf(path, gains.end() - gains.begin(), size.y);
    const long mirrored = gains.hasMirrored() ? half : 0;
    const long columns = floatsOf(path, size.x, rowsLeft(gains) + 1);
    memory_ =
        makeFloats(static_cast<std::size_t>(scratch + magnitudes + half + mirrored + columns));
    scratch_ = memory_.get();
    magnitudes_ = scratch_ + scratch;
    float* const spectrum = magnitudes_ + magnitudes;
    spectrum_ = {spectrum, 2 * path.lanes * panelRows(size.y), gains.begin(), gains.end()};
    mirrored_ = spectrum_;
    mirrored_.first += mirrored;
    columns_ = spectrum + half + mirrored;
    fillColumnRows();
}

// The rows that hold anything are packed; all others are the row of zeros behind them.
void FilteredPlane::fillColumnRows() {
    const auto rowFloats = static_cast<std::int32_t>(2 * path_.lanes);
    const auto zeros = static_cast<std::int32_t>(rowFloats * rowsLeft(gains_));
    std::fill(columnRows_.begin(), columnRows_.end(), zeros);
    std::int32_t next = 0;
    for (const std::int32_t row : gains_.rows()) {
        columnRows_[static_cast<std::size_t>(row)] = next;
        next += rowFloats;
    }
}

// The three calls ask before every sixteenth line, and this does at least as often.
void FilteredPlane::pollLines(long begin, long end) {
    const long first = (begin + kLinesPerPoll - 1) / kLinesPerPoll * kLinesPerPoll;
    for (long line = first; line < end; line += kLinesPerPoll) pollAttention();
}

// The forward column pass; gains are applied as columns are stored.
void FilteredPlane::filter(long filled) {
    for (long x = spectrum_.begin; x < spectrum_.end; x += path_.lanes) {
        const long column = x - spectrum_.begin, panel = column / path_.lanes;
        const ColumnGains direct{gains_.gains(x), gains_.direct()};
        const ColumnGains mirrored{gains_.gains(x), gains_.mirrored()};
        pollLines(column, column + path_.lanes);
        path_.gainColumns(
            spectrum_.first + spectrum_.pitch * panel, filled, gains_.size().y, direct,
            gains_.hasMirrored() ? mirrored_.first + mirrored_.pitch * panel : nullptr, mirrored,
            scratch_);
    }
    // The polls of the columns that no gain leaves, of two transpositions and of the mirrored half.
    pollLines(0, gains_.size().x / 2 + 1);
    for (int i = 0; i < 3; ++i) pollAttention();
}

// The inverse row pass over the rows that hold anything.
Panels FilteredPlane::prepareColumns(long x, long width) {
    const long rows = rowsLeft(gains_);
    const Panels columns{columns_, 2 * path_.lanes * panelRows(rows + 1), x, x + width};
    const HalfSpectrum half{spectrum_, mirrored_, gains_.size().x, gains_.size().y};
    for (long i = 0; i < rows; i += path_.lanes) {
        const long count = std::min(path_.lanes, rows - i);
        pollLines(i, i + count);
        path_.panelsToRows(half, gains_.rows().data() + i, count, columns, i, scratch_);
    }
    pollLines(rows, gains_.size().y);
    const long rowFloats = 2 * path_.lanes;
    for (long panel = 0; panel < panelCount(path_, width); ++panel) {
        std::fill_n(columns.first + columns.pitch * panel + rowFloats * rows, rowFloats, 0.0f);
    }
    for (int i = 0; i < 3; ++i) pollAttention();
    return columns;
}

void FilteredPlane::finishColumns(const Panels& columns, long x, bool squared) {
    const long column = x - columns.begin;
    pollLines(column, column + path_.lanes);
    path_.columnsToMagnitudes(columns.first + columns.pitch * (column / path_.lanes),
                              columnRows_.data(), gains_.size().y, squared, magnitudes_, scratch_);
}

}  // namespace mvi
