// The gains of a filter on half a plane, as far as it leaves anything.
#pragma once

#include <filt/platform.h>

#include <cstdint>
#include <limits>
#include <vector>

namespace mvi {

/// The gain that clears, also what is infinite.
inline constexpr float kClearedGain = std::numeric_limits<float>::quiet_NaN();

/// Real gains of the frequencies of a plane, kept for the columns 0 to W/2 only: what a real image
/// has opposite of them are the conjugates.
///
/// The element (x, y) of the plane has the direct gain of column x and row y. The element opposite
/// of it, (W - x, H - y), 0 < x < W/2, has the mirrored gain of x and y; gains without mirrored
/// ones are the same on both sides.
class SpectrumGains {
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

    /// The plane's columns and rows.
    mvPair<long> size() const { return size_; }

    /// The columns begin() .. end() - 1 of 0 to W/2 hold all that is left, directly or mirrored.
    long begin() const { return begin_; }
    long end() const { return end_; }

    /// The rows of the plane that hold anything after the filter, in ascending order.
    const std::vector<std::int32_t>& rows() const { return rows_; }

    /// The gains of column x, to be indexed by the entry of a row; behind the last column there is
    /// room for a vector.
    const float* gains(long x) const { return gains_.data() + x; }

    /// By rows of the plane: where the row's gains are; negative where all are cleared.
    const std::int32_t* direct() const { return direct_.data(); }
    const std::int32_t* mirrored() const { return mirrored_.data(); }
    bool hasMirrored() const { return !mirrored_.empty(); }

  private:
    std::int32_t add(const std::vector<float>& row);
    std::size_t opposite(std::size_t y) const { return y == 0 ? 0 : direct_.size() - y; }

    mvPair<long> size_;
    long columns_;
    long begin_, end_ = 0;
    std::vector<std::int32_t> rows_, direct_, mirrored_;
    std::vector<float> gains_;
};

}  // namespace mvi
