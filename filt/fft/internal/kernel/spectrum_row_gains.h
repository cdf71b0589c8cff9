// The gains of a filter without symmetry, row by row.
#pragma once

#include <filt/fft/internal/kernel/cleared_gain.h>
#include <filt/fft/internal/kernel/spectrum_row_filter.h>

#include <cstddef>

namespace mvi {

/// Real gains of whole rows of a plane.
class SpectrumRowGains : public SpectrumRowFilter {
  public:
    /// For a plane of `size`; all gains are cleared, and only those of the columns `begin` ..
    /// `end` - 1 of 0 to W/2, and of the ones opposite, can be entered.
    SpectrumRowGains(mvPair<long> size, long begin, long end)
        : SpectrumRowFilter(size, begin, end), rowGains_(static_cast<std::size_t>(size.y), 0) {}

    /// Gives row y the gains of `row`, one for each of W columns. Rows come in ascending order.
    void enter(long y, const std::vector<float>& row) {
        gains_.insert(gains_.end(), row.begin(), row.end());
        repeat(y);
    }

    /// Gives row y the gains that were entered last.
    void repeat(long y) {
        const auto latest = static_cast<std::ptrdiff_t>(gains_.size()) - size_.x;
        rowGains_[static_cast<std::size_t>(y)] = static_cast<std::int32_t>(latest);
        addRow(y);
    }

    void passRows(const KernelPath& path, const HalfSpectrum& from, const std::int32_t* rows,
                  long count, const PanelBlocks& to, long y, float* scratch) const override {
        path.panelsToGainedRows(from, {gains_.data(), rowGains_.data()}, rows, count, to, y,
                                scratch);
    }

  private:
    std::vector<std::int32_t> rowGains_;
    std::vector<float> gains_;
};

}  // namespace mvi
