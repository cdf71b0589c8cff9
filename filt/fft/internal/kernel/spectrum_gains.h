// The gains of a filter that treats a frequency and its mirror images alike.
#pragma once

#include <filt/fft/internal/kernel/cleared_gain.h>
#include <filt/fft/internal/kernel/spectrum_filter.h>

namespace mvi {

/// Real gains of the columns 0 to W/2, which hold for the columns opposite of them as well.
class SpectrumGains : public SpectrumFilter {
  public:
    /// For a plane of `size`; all gains are cleared, and those from column `columns` on, at most
    /// W/2 + 1, stay so.
    SpectrumGains(mvPair<long> size, long columns);

    /// Gives row y of the plane, and row `twin`, the gains of `row`, as many as there are columns.
    void enter(long y, long twin, const std::vector<float>& row);

    /// To be called when all gains are entered.
    void finish();

    /// The gains of the panel of column x; behind the last gain of a row there is room for a
    /// vector.
    ColumnGains gains(long x) const { return {gains_.data() + x, rowGains_.data()}; }

    void passColumns(const KernelPath& path, long x, float* panel, long filled,
                     float* scratch) const override;
    void passRows(const KernelPath& path, const HalfSpectrum& from, const std::int32_t* rows,
                  long count, const PanelBlocks& to, long y, float* scratch) const override;

  private:
    std::int32_t add(const std::vector<float>& row);

    std::vector<std::int32_t> rowGains_;
    std::vector<float> gains_;
};

}  // namespace mvi
