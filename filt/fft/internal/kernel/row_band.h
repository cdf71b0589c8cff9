// The band of rows that hold data.
#pragma once

#include <algorithm>
#include <cstdint>

namespace mvi {

/// Inclusive limits in shifted coordinates, where the row 0 stands in the middle. Archives make
/// any, so that sums are of 64 bits everywhere.
class RowBand {
  public:
    RowBand(std::int64_t height, std::int64_t low, std::int64_t high)
        : height_(height), half_(height / 2), low_(low), high_(high) {}

    /// Every row.
    explicit RowBand(std::int64_t height) : RowBand(height, 0, height) {}

    bool contains(std::int64_t row) const {
        const std::int64_t shifted = row < half_ ? row + half_ : row - half_;
        return shifted >= low_ && shifted <= high_;
    }

    /// How many rows it holds.
    long rowCount() const {
        const std::int64_t first = std::max<std::int64_t>(low_, 0);
        const std::int64_t last = std::min(high_, height_ - 1);
        return static_cast<long>(std::max<std::int64_t>(last - first + 1, 0));
    }

    bool isFull() const { return low_ <= 0 && high_ >= height_; }

    /// Whether the tile of four rows from `base` on is outside, by the coarse rule of
    /// exchangeUnmovedTiles.
    bool excludesTile(std::int64_t base) const {
        const std::int64_t toStored = base < half_ ? -half_ : half_;
        return base + 4 < low_ + toStored || base > high_ + toStored;
    }

  private:
    std::int64_t height_, half_, low_, high_;
};

/// True when all floats are +0, as in the rows that a filter clears. A -0 counts as data.
bool isAllZero(const float* floats, long count);

/// Between the passes a square plane used to be transposed by tiles of 4 x 4, and the contract
/// keeps its coarse rule for a band: pairs of tiles whose rows and columns both lie outside stay
/// where they are. What such tiles hold enters the second pass with rows and columns exchanged.
void exchangeUnmovedTiles(float* data, long n, const RowBand& band);

}  // namespace mvi
