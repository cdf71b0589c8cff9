// The stored response of a filter.
#pragma once

#include <filt/export.h>
#include <filt/fft/float_array.h>
#include <filt/platform.h>

#include <cstddef>
#include <cstdint>

/// A table of width x height gains, or none.
///
/// The gains start on a 16-byte boundary, and at least three floats stand behind them: zeros,
/// unless a loaded record had more floats than its size says; these then follow the gains, and
/// three zeros follow them.
///
/// Internal: the filters have a member of this type, which is why it is installed and exported.
/// Only they use it, and it may change with any release.
class MVFREQ_API mvFilterResponse {
  public:
    mvFilterResponse() noexcept = default;
    mvFilterResponse(const mvFilterResponse& other) = delete;

    /// Copies and moves gains; the other response must have some.
    mvFilterResponse& operator=(const mvFilterResponse& other);
    mvFilterResponse& operator=(mvFilterResponse&& other) noexcept;
    ~mvFilterResponse() = default;

    /// True when there are gains.
    bool isSet() const noexcept { return data_ != nullptr; }

    /// Throws mvFrequencyDefs::Uninitialized "FrequencyFilter has not been initialized" when there
    /// are no gains.
    void requireSet() const;

    /// The table's columns and rows.
    long width() const noexcept { return width_; }
    long height() const noexcept { return height_; }

    /// The number of gains.
    std::size_t size() const noexcept;

    /// The number of gains, if there are any, and of the floats that a loaded record had behind
    /// them.
    std::size_t floats() const noexcept { return storage_.size() - kSlackFloats; }

    /// The gains row by row; null when there are none.
    float* data() const noexcept { return data_; }

    /// Forgets the gains and nothing else: the size and the block stay.
    void drop() noexcept { data_ = nullptr; }

    /// Makes room for width x height gains, to be written by the caller; the block is kept when
    /// their number stays the same. Throws std::bad_alloc and then changes nothing.
    void allocate(std::int32_t width, std::int32_t height);

    /// Exchanges width and height; loading drops the gains.
    void exchangeSize(mvArchive& ar);

    /// Exchanges whether there are gains, and the gains. Loaded gains that are fewer than the size
    /// says are padded with zeros; mvArchive::BadValue when there would be too many of those.
    void exchangeGains(mvArchive& ar);

  private:
    /// The zeros behind all others.
    static constexpr std::size_t kSlackFloats = 3;

    std::int32_t width_ = 0;
    std::int32_t height_ = 0;
    mvFloatArray storage_;
    float* data_ = nullptr;
};
