// What a filter does to half a plane of frequencies.
#pragma once

#include <filt/fft/internal/kernel/path.h>
#include <filt/platform.h>

#include <cstdint>
#include <vector>

namespace mvi {

/// A filter for the spectrum of a real image, of which the columns 0 to W/2 are kept: what is
/// opposite of them, (W - x, H - y), are the conjugates. It does its work where values are stored
/// in the forward column pass, or where they are loaded in the inverse row pass.
class SpectrumFilter {
  public:
    virtual ~SpectrumFilter() = default;

    /// True when nothing is left.
    bool isEmpty() const { return rows_.empty(); }

    /// The plane's columns and rows.
    mvPair<long> size() const { return size_; }

    /// The columns begin() .. end() - 1 of 0 to W/2, and those opposite, hold all that is left.
    long begin() const { return begin_; }
    long end() const { return end_; }

    /// The rows of the plane that hold anything after the filter, in ascending order.
    const std::vector<std::int32_t>& rows() const { return rows_; }

    /// The forward column pass over the panel of column x, in place; its rows from `filled` on
    /// count as zeros.
    virtual void passColumns(const KernelPath& path, long x, float* panel, long filled,
                             float* scratch) const = 0;

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

    std::size_t opposite(std::size_t y) const {
        return y == 0 ? 0 : static_cast<std::size_t>(size_.y) - y;
    }

    mvPair<long> size_;
    long begin_, end_;
    std::vector<std::int32_t> rows_;
};

}  // namespace mvi
