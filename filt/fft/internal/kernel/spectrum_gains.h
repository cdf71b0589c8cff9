// The gains of a filter on half a plane, as far as it leaves anything.
#pragma once

#include <filt/fft/internal/kernel/spectrum_filter.h>

#include <cstdint>
#include <limits>
#include <vector>

namespace mvi {

/// The gain that clears, also what is infinite.
inline constexpr float kClearedGain = std::numeric_limits<float>::quiet_NaN();

/// Real gains of the frequencies of a plane. Gains without mirrored ones are the same on both
/// sides.
class SpectrumGains : public SpectrumFilter {
  public:
    /// For a plane of `size`; all gains are cleared, and those from column `columns` on, at most
    /// W/2 + 1, stay so.
    SpectrumGains(mvPair<long> size, long columns);

    /// Gives row y of the plane, and row `twin`, the gains of `row`, as many as there are columns.
    void enter(long y, long twin, const std::vector<float>& row);

    /// The same with mirrored gains; all rows have them or none.
    void enterBoth(long y, const std::vector<float>& direct, const std::vector<float>& mirrored);

    /// To be called when all gains are entered.
    void finish();

    /// True when nothing is left.
    bool isEmpty() const { return rows_.empty(); }

    /// The gains of the panel of column x; behind the last gain of a row there is room for a
    /// vector.
    ColumnGains direct(long x) const { return {gains_.data() + x, direct_.data()}; }
    ColumnGains mirrored(long x) const { return {gains_.data() + x, mirrored_.data()}; }

    bool hasMirrored() const override { return !mirrored_.empty(); }

    void passColumns(const KernelPath& path, long x, float* panel, long filled,
                     float* mirroredPanel, float* scratch) const override;
    void passRows(const KernelPath& path, const HalfSpectrum& from, const std::int32_t* rows,
                  long count, const PanelBlocks& to, long y, float* scratch) const override;

  private:
    std::int32_t add(const std::vector<float>& row);
    std::size_t opposite(std::size_t y) const { return y == 0 ? 0 : direct_.size() - y; }

    long columns_;
    std::vector<std::int32_t> direct_, mirrored_;
    std::vector<float> gains_;
};

}  // namespace mvi
