// A filter that multiplies by a plane of complex factors.
#pragma once

#include <filt/fft/internal/kernel/spectrum_row_filter.h>

namespace mvi {

/// The factors of a whole plane.
class SpectrumFactors : public SpectrumRowFilter {
  public:
    /// For planes of 16 columns and more; `factors` outlive the object.
    SpectrumFactors(const float* factors, mvPair<long> size)
        : SpectrumRowFilter(size, 0, size.x / 2 + 1), factors_(factors) {
        for (long y = 0; y < size.y; ++y) addRow(y);
    }

    void passRows(const KernelPath& path, const HalfSpectrum& from, const std::int32_t* rows,
                  long count, const PanelBlocks& to, long y, float* scratch) const override {
        path.panelsToProductRows(from, factors_, rows, count, to, y, scratch);
    }

  private:
    const float* factors_;
};

}  // namespace mvi
