// The passes of a filtered picture.
#include <filt/fft/internal/kernel/filtered_plane.h>

namespace mvi {

namespace {

// Panels whose addresses are a multiple of 128 KiB apart compete for the same places in the caches.
long panelPitch(const KernelPath& path, long rows) {
    return 2 * path.lanes * (rows % 256 == 0 ? rows + 17 : rows);
}

long panelCount(const KernelPath& path, long columns) {
    return (columns + path.lanes - 1) / path.lanes;
}

long floatsOf(const KernelPath& path, long columns, long rows) {
    return panelPitch(path, rows) * panelCount(path, columns);
}

long rowsLeft(const SpectrumFilter& filter) {
    return static_cast<long>(filter.rows().size());
}

}  // namespace

// Few blocks: allocators keep two from call to call, but give many back.
FilteredPlane::FilteredPlane(const SpectrumFilter& filter, const KernelPath& path)
    : filter_(filter), path_(path), columnRows_(static_cast<std::size_t>(filter.size().y)) {
    const mvPair<long> size = filter.size();
    const auto scratch = static_cast<long>(panelScratchFloats(size.x, size.y));
    const long magnitudes = path.lanes * size.y;
    const long half = floatsOf(path, filter.end() - filter.begin(), size.y);
    memory_ = makeFloats(static_cast<std::size_t>(scratch + magnitudes + half));
    scratch_ = memory_.get();
    magnitudes_ = scratch_ + scratch;
    float* const spectrum = magnitudes_ + magnitudes;
    spectrum_ = {spectrum, panelPitch(path, size.y), filter.begin(), filter.end()};
    makeColumns();
    fillColumnRows();
}

// The columns need room for the rows that hold anything and one row of zeros.
void FilteredPlane::makeColumns() {
    const long pitch = panelPitch(path_, rowsLeft(filter_) + 1);
    const auto fitting = static_cast<long>(kLargestBlock / sizeof(float)) / pitch;
    panelsPerBlock_ = std::max(fitting, 1L);
    for (long left = panelCount(path_, filter_.size().x); left > 0; left -= panelsPerBlock_) {
        const long panels = std::min(left, panelsPerBlock_);
        columnBlocks_.push_back(makeFloats(static_cast<std::size_t>(pitch * panels)));
        columns_.push_back({columnBlocks_.back().get(), pitch, 0, 0});
    }
}

// The rows that hold anything are packed; all others are the row of zeros behind them.
void FilteredPlane::fillColumnRows() {
    const auto rowFloats = static_cast<std::int32_t>(2 * path_.lanes);
    const auto zeros = static_cast<std::int32_t>(rowFloats * rowsLeft(filter_));
    std::fill(columnRows_.begin(), columnRows_.end(), zeros);
    std::int32_t next = 0;
    for (const std::int32_t row : filter_.rows()) {
        columnRows_[static_cast<std::size_t>(row)] = next;
        next += rowFloats;
    }
}

// The three calls ask before every sixteenth line, and this does at least as often.
void FilteredPlane::pollLines(long begin, long end) {
    const long first = (begin + kLinesPerPoll - 1) / kLinesPerPoll * kLinesPerPoll;
    for (long line = first; line < end; line += kLinesPerPoll) pollAttention();
}

// The forward column pass, and the filter.
void FilteredPlane::passColumns(long filled) {
    for (long x = spectrum_.begin; x < spectrum_.end; x += path_.lanes) {
        const long column = x - spectrum_.begin, panel = column / path_.lanes;
        pollLines(column, column + path_.lanes);
        filter_.passColumns(path_, x, spectrum_.first + spectrum_.pitch * panel, filled, scratch_);
    }
    // The polls of the columns that the filter does not leave, of two transpositions and of the
    // mirrored half.
    pollLines(0, filter_.size().x / 2 + 1);
    for (int i = 0; i < 3; ++i) pollAttention();
}

// The inverse row pass over the rows that hold anything.
void FilteredPlane::prepareColumns(long begin, long end) {
    for (Panels& columns : columns_) {
        columns.begin = std::min(begin, end);
        begin += path_.lanes * panelsPerBlock_;
        columns.end = std::min(begin, end);
    }
    const long rows = rowsLeft(filter_);
    const PanelBlocks to{columns_.data(), static_cast<long>(columns_.size())};
    const HalfSpectrum half{spectrum_, filter_.size().x, filter_.size().y};
    for (long i = 0; i < rows; i += path_.lanes) {
        const long count = std::min(path_.lanes, rows - i);
        pollLines(i, i + count);
        filter_.passRows(path_, half, filter_.rows().data() + i, count, to, i, scratch_);
    }
    pollLines(rows, filter_.size().y);
    const long rowFloats = 2 * path_.lanes;
    for (const Panels& columns : columns_) {
        const long panels = panelCount(path_, columns.end - columns.begin);
        for (long panel = 0; panel < panels; ++panel) {
            std::fill_n(columns.first + columns.pitch * panel + rowFloats * rows, rowFloats, 0.0f);
        }
    }
    for (int i = 0; i < 3; ++i) pollAttention();
}

// The columns from `index` on of those that were prepared.
void FilteredPlane::finishColumns(long index, bool squared) {
    pollLines(index, index + path_.lanes);
    const long panel = index / path_.lanes;
    const Panels& columns = columns_[static_cast<std::size_t>(panel / panelsPerBlock_)];
    path_.columnsToMagnitudes(columns.first + columns.pitch * (panel % panelsPerBlock_),
                              columnRows_.data(), filter_.size().y, squared, magnitudes_, scratch_);
}

}  // namespace mvi
