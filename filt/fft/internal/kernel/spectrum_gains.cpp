// Collecting the gains of a filter that treats a frequency and its mirror images alike.
#include <filt/fft/internal/kernel/spectrum_gains.h>

#include <algorithm>
#include <cstddef>

namespace mvi {

namespace {

constexpr std::int32_t kNone = -1;

bool isLeft(float gain) {
    return !isCleared(gain);
}

}  // namespace

SpectrumGains::SpectrumGains(mvPair<long> size, long columns)
    : SpectrumFilter(size, columns, 0), rowGains_(static_cast<std::size_t>(size.y), kNone) {
    gains_.reserve(static_cast<std::size_t>((columns + kMostLanes) * (size.y / 2 + 1)));
}

// Where the gains stand; nowhere when all of them are cleared.
std::int32_t SpectrumGains::add(const std::vector<float>& row) {
    const auto first = std::find_if(row.begin(), row.end(), isLeft);
    if (first == row.end()) return kNone;
    const auto last = std::find_if(row.rbegin(), row.rend(), isLeft).base();
    begin_ = std::min(begin_, static_cast<long>(first - row.begin()));
    end_ = std::max(end_, static_cast<long>(last - row.begin()));
    const std::size_t at = gains_.size();
    gains_.resize(at + row.size() + kMostLanes, kClearedGain);
    std::copy(row.begin(), row.end(), gains_.begin() + static_cast<std::ptrdiff_t>(at));
    return static_cast<std::int32_t>(at);
}

void SpectrumGains::enter(long y, long twin, const std::vector<float>& row) {
    rowGains_[static_cast<std::size_t>(y)] = rowGains_[static_cast<std::size_t>(twin)] = add(row);
}

void SpectrumGains::finish() {
    for (std::size_t y = 0; y < rowGains_.size(); ++y) {
        if (rowGains_[y] != kNone) rows_.push_back(static_cast<std::int32_t>(y));
    }
}

void SpectrumGains::passColumns(const KernelPath& path, long x, float* panel, long filled,
                                float* scratch) const {
    path.gainColumns(panel, filled, size_.y, gains(x), scratch);
}

void SpectrumGains::passRows(const KernelPath& path, const HalfSpectrum& from,
                             const std::int32_t* rows, long count, const PanelBlocks& to, long y,
                             float* scratch) const {
    path.panelsToRows(from, rows, count, to, y, scratch);
}

}  // namespace mvi
