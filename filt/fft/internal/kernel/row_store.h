// Rows between the passes that need no plane.
#pragma once

#include <filt/fft/internal/kernel/work.h>

#include <cstddef>
#include <vector>

namespace mvi {

/// Room for up to `rows` rows of `rowFloats` floats.
class RowStore {
  public:
    RowStore(long rowFloats, long rows)
        : rowFloats_(static_cast<std::size_t>(rowFloats)),
          rows_(static_cast<std::size_t>(rows)),
          rowsPerBlock_(std::max(kLargestBlock / sizeof(float) / rowFloats_, std::size_t{1})) {
        for (std::size_t first = 0; first < rows_; first += rowsPerBlock_) {
            blocks_.push_back(makeFloats(rowFloats_ * std::min(rows_ - first, rowsPerBlock_)));
        }
    }

    float* row(long index) {
        const auto i = static_cast<std::size_t>(index);
        return blocks_[i / rowsPerBlock_].get() + rowFloats_ * (i % rowsPerBlock_);
    }

  private:
    std::size_t rowFloats_, rows_, rowsPerBlock_;
    std::vector<Floats> blocks_;
};

}  // namespace mvi
