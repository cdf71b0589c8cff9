// A filter that multiplies by a plane of complex factors.
#pragma once

#include <filt/fft/internal/kernel/spectrum_filter.h>

#include <numeric>

namespace mvi {

/// The factors of a whole plane, which need no symmetry.
class SpectrumFactors : public SpectrumFilter {
  public:
    /// `factors` outlive the object.
    SpectrumFactors(const float* factors, mvPair<long> size)
        : SpectrumFilter(size, 0, size.x / 2 + 1),
          factors_(factors),
          ones_(static_cast<std::size_t>(end_ + kMostLanes), 1.0f),
          onesOfRow_(static_cast<std::size_t>(size.y), 0) {
        rows_.resize(static_cast<std::size_t>(size.y));
        std::iota(rows_.begin(), rows_.end(), 0);
    }

    bool hasMirrored() const override { return false; }

    void passColumns(const KernelPath& path, long x, float* panel, long filled,
                     float* mirroredPanel, float* scratch) const override {
        const ColumnGains ones{ones_.data() + x, onesOfRow_.data()};
        path.gainColumns(panel, filled, size_.y, ones, mirroredPanel, ones, scratch);
    }

    // Here the factors are read as they stand, row by row.
    void passRows(const KernelPath& path, const HalfSpectrum& from, const std::int32_t* rows,
                  long count, const PanelBlocks& to, long y, float* scratch) const override {
        path.panelsToProductRows(from, factors_, rows, count, to, y, scratch);
    }

  private:
    const float* factors_;
    std::vector<float> ones_;
    std::vector<std::int32_t> onesOfRow_;
};

}  // namespace mvi
