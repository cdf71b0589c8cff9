// The square of 2 R - 1 frequencies a side around DC that filters clear or keep.
#pragma once

#include <filt/fft/frequency_buffer.h>

#include <cstdint>
#include <vector>

namespace mvi {

/// Clears the square through the buffer's element access, whose errors end it part-way; nothing for
/// a radius of 0 or less.
void clearDcSquare(mvFrequencyBuffer& buf, std::int64_t radius);

/// Throws std::length_error when no list can have radius x radius entries.
void requireList(std::int64_t radius);

/// The square's values, taken through the buffer's element access, to be put back later; none for
/// a radius of 0 or less.
class DcSquare {
  public:
    /// Makes room for the square of a buffer like `buf`.
    DcSquare(const mvFrequencyBuffer& buf, std::int64_t radius);

    void save(const mvFrequencyBuffer& buf);
    void restore(mvFrequencyBuffer& buf) const;

  private:
    std::int64_t radius_;
    std::vector<mvPair<double>> values_;
};

}  // namespace mvi
