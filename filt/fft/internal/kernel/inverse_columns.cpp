// The memory of the column pass of an inverse.
#include <filt/fft/internal/kernel/inverse_columns.h>

namespace mvi {

namespace {

constexpr long kCacheLine = 64, kLongestResult = sizeof(double), kFloat = sizeof(float);
constexpr long kBlockFloats = kLargestBlock / sizeof(float);

long panelCount(const KernelPath& path, long columns) {
    return (columns + path.lanes - 1) / path.lanes;
}

}  // namespace

void pollLines(long begin, long end) {
    const long first = (begin + kLinesPerPoll - 1) / kLinesPerPoll * kLinesPerPoll;
    for (long line = first; line < end; line += kLinesPerPoll) pollAttention();
}

// Panels whose addresses are a multiple of 128 KiB apart compete for the same places in the caches.
long panelPitch(const KernelPath& path, long rows) {
    return 2 * path.lanes * (rows % 256 == 0 ? rows + 17 : rows);
}

long panelFloats(const KernelPath& path, long columns, long rows) {
    return panelPitch(path, rows) * panelCount(path, columns);
}

// Few blocks, one if it can be: allocators keep twice the size of the largest one from call to
// call, and give more back.
InverseColumns::InverseColumns(mvPair<long> size, const std::vector<std::int32_t>& rows,
                               const KernelPath& path, long more)
    : size_(size), rows_(rows), path_(path), rowStarts_(static_cast<std::size_t>(size.y)) {
    const auto passes = static_cast<long>(panelScratchFloats(size.x, size.y));
    const long strips = size.y * std::max(kCacheLine, path.lanes * kLongestResult) / kFloat;
    const long columns = panelFloats(path, size.x, static_cast<long>(rows.size()) + 1);
    const long first = passes + strips + more;
    const bool isOneBlock = first + columns <= kBlockFloats;
    memory_ = makeFloats(static_cast<std::size_t>(isOneBlock ? first + columns : first));
    strips_ = memory_.get() + passes;
    more_ = strips_ + strips;
    makeColumns(isOneBlock ? more_ + more : nullptr);
    fillRowStarts();
}

// The columns need room for the rows that hold data and one row of zeros.
void InverseColumns::makeColumns(float* room) {
    const long pitch = panelPitch(path_, static_cast<long>(rows_.size()) + 1);
    const long panels = panelCount(path_, size_.x);
    panelsPerBlock_ = room ? panels : std::max(kBlockFloats / pitch, 1L);
    for (long left = panels; left > 0; left -= panelsPerBlock_) {
        if (!room) {
            const long count = pitch * std::min(left, panelsPerBlock_);
            blocks_.push_back(makeFloats(static_cast<std::size_t>(count)));
        }
        columns_.push_back({room ? room : blocks_.back().get(), pitch, 0, 0});
    }
}

// The rows that hold data are packed; all others are the row of zeros behind them.
void InverseColumns::fillRowStarts() {
    const auto rowFloats = static_cast<std::int32_t>(2 * path_.lanes);
    std::int32_t next = 0;
    std::fill(rowStarts_.begin(), rowStarts_.end(),
              rowFloats * static_cast<std::int32_t>(rows_.size()));
    for (const std::int32_t row : rows_) {
        rowStarts_[static_cast<std::size_t>(row)] = next;
        next += rowFloats;
    }
}

// Says which columns the panels hold, and fills the row of zeros.
void InverseColumns::prepare(long begin, long end) {
    const long rowFloats = 2 * path_.lanes, zeros = rowFloats * static_cast<long>(rows_.size());
    for (Panels& columns : columns_) {
        columns.begin = std::min(begin, end);
        begin += path_.lanes * panelsPerBlock_;
        columns.end = std::min(begin, end);
        const long panels = panelCount(path_, columns.end - columns.begin);
        for (long i = 0; i < panels; ++i) {
            std::fill_n(columns.first + columns.pitch * i + zeros, rowFloats, 0.0f);
        }
    }
}

// Panels are counted through all blocks.
const float* InverseColumns::panel(long index) const {
    const Panels& columns = columns_[static_cast<std::size_t>(index / panelsPerBlock_)];
    return columns.first + columns.pitch * (index % panelsPerBlock_);
}

// Rows of an output are written in whole cache lines.
long InverseColumns::stripsPerStep(std::size_t resultBytes) const {
    return std::max(kCacheLine / (path_.lanes * static_cast<long>(resultBytes)), 1L);
}

}  // namespace mvi
