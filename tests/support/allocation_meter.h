// How much memory a call holds at most, whatever allocates it. Programs that link this get no block
// of more than 256 MiB.
#pragma once

#include <cstddef>

namespace archive {

/// What a load from that many bytes may hold at once, besides a little for the objects themselves.
constexpr std::size_t largestLoad(std::size_t bytes) {
    return 4 * bytes + (std::size_t{64} << 20) + 4096;
}

/// Filters that were loaded may ask for any size when a parameter is set; what is refused is never
/// cleared, which would take the time of all other work together.
inline constexpr std::size_t kLargestBlock = std::size_t{256} << 20;

/// While it lives, larger blocks are refused. They count as if they had been given.
class BlockLimit {
  public:
    explicit BlockLimit(std::size_t bytes);
    ~BlockLimit();
    BlockLimit(const BlockLimit&) = delete;
    BlockLimit& operator=(const BlockLimit&) = delete;
};

/// Counts from its construction on; one at a time, in one thread. Blocks that were there before do
/// not count, also when they are freed.
class AllocationMeter {
  public:
    /// With `failAt` above 0 that block, counted from 1, is refused.
    explicit AllocationMeter(long failAt = 0);
    ~AllocationMeter();
    AllocationMeter(const AllocationMeter&) = delete;
    AllocationMeter& operator=(const AllocationMeter&) = delete;

    /// The largest number of bytes that were in use at once since the construction.
    std::size_t peak() const;
};

/// The largest number of bytes that a call holds at once.
template <class Call>
std::size_t peakOf(Call call) {
    const AllocationMeter meter;
    call();
    return meter.peak();
}

}  // namespace archive
