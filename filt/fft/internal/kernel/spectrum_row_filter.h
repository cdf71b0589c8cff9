// Filters that do their work in the inverse row pass.
#pragma once

#include <filt/fft/internal/kernel/spectrum_filter.h>

namespace mvi {

/// A filter without any symmetry: a value and the one opposite of it go different ways, and part
/// only when rows are loaded. There, what belongs to a row stands in a row.
class SpectrumRowFilter : public SpectrumFilter {
  public:
    void passColumns(const KernelPath& path, long x, float* panel, long filled,
                     float* scratch) const override {
        path.gainColumns(panel, filled, size_.y, {ones_.data() + x, onesOfRow_.data()}, scratch);
    }

  protected:
    SpectrumRowFilter(mvPair<long> size, long begin, long end)
        : SpectrumFilter(size, begin, end),
          ones_(static_cast<std::size_t>(end + kMostLanes), 1.0f),
          onesOfRow_(static_cast<std::size_t>(size.y), -1) {}

    /// Adds row y to those that hold anything; it is made of this one and the opposite one.
    void addRow(long y) {
        const auto row = static_cast<std::size_t>(y);
        rows_.push_back(static_cast<std::int32_t>(y));
        onesOfRow_[row] = onesOfRow_[opposite(row)] = 0;
    }

  private:
    std::vector<float> ones_;
    std::vector<std::int32_t> onesOfRow_;
};

}  // namespace mvi
