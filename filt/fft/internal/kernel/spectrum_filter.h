// What a filter does to half a plane of frequencies.
#pragma once

#include <filt/fft/internal/kernel/path.h>
#include <filt/platform.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace mvi {

/// A filter for the columns 0 to W/2 of a plane; what a real image has opposite of them are the
/// conjugates. It does its work in the forward column pass or in the inverse row pass.
///
/// The element opposite of (x, y), 0 < x < W/2, is (W - x, H - y). What the filter makes of it is
/// called the mirrored value of (x, y), and is handled as its conjugate.
class SpectrumFilter {
  public:
    virtual ~SpectrumFilter() = default;

    /// The plane's columns and rows.
    mvPair<long> size() const { return size_; }

    /// The columns begin() .. end() - 1 of 0 to W/2 hold all that is left, directly or mirrored.
    long begin() const { return begin_; }
    long end() const { return end_; }

    /// The rows of the plane that hold anything after the filter, in ascending order.
    const std::vector<std::int32_t>& rows() const { return rows_; }

    /// Whether the column pass makes mirrored values; without them they are the direct ones.
    virtual bool hasMirrored() const = 0;

    /// The forward column pass over the panel of column x, of which the rows from `filled` on count
    /// as zeros: in place, and into a panel of mirrored values if there are such.
    virtual void passColumns(const KernelPath& path, long x, float* panel, long filled,
                             float* mirroredPanel, float* scratch) const = 0;

    /// The inverse row pass over `count` rows of what the column pass left, as
    /// KernelPath::panelsToRows.
    virtual void passRows(const KernelPath& path, const HalfSpectrum& from,
                          const std::int32_t* rows, long count, const PanelBlocks& to, long y,
                          float* scratch) const = 0;

  protected:
    SpectrumFilter(mvPair<long> size, long begin, long end)
        : size_(size), begin_(begin), end_(end) {}
    SpectrumFilter(const SpectrumFilter&) = default;
    SpectrumFilter(SpectrumFilter&&) = default;
    SpectrumFilter& operator=(const SpectrumFilter&) = default;
    SpectrumFilter& operator=(SpectrumFilter&&) = default;

    mvPair<long> size_;
    long begin_, end_;
    std::vector<std::int32_t> rows_;
};

}  // namespace mvi
