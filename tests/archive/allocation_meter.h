// How much memory a call holds at most, whatever allocates it.
#pragma once

#include <cstddef>

namespace archive {

/// Counts from its construction on; one at a time, in one thread. Blocks that were there before do
/// not count, also when they are freed.
class AllocationMeter {
  public:
    AllocationMeter();
    ~AllocationMeter();
    AllocationMeter(const AllocationMeter&) = delete;
    AllocationMeter& operator=(const AllocationMeter&) = delete;

    /// The largest number of bytes that were held at once since the construction.
    std::size_t peak() const;
};

}  // namespace archive
