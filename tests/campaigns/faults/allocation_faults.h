// Makes chosen allocations fail, and counts the blocks that are in use.
#pragma once

#include <cstddef>
#include <vector>

namespace faults {

/// Which allocations fail: one of them, or that one and all that follow.
enum class Extent { kOnlyThis, kThisAndLater };

/// Whose allocations count: those of the thread that asks, or all.
enum class Threads { kThis, kAll };

/// While it lives, allocations are counted from 1 on and the one numbered `failAt` fails; none for
/// 0. One at a time.
class AllocationFaults {
  public:
    explicit AllocationFaults(long failAt, Extent extent = Extent::kOnlyThis,
                              Threads threads = Threads::kThis);
    ~AllocationFaults();
    AllocationFaults(const AllocationFaults&) = delete;
    AllocationFaults& operator=(const AllocationFaults&) = delete;

    /// How many there were so far, those that failed included.
    long count() const;
    /// Whether one has failed.
    bool hasFailed() const;
    /// From now on all fail.
    void failAll();
};

/// The blocks that were allocated, by whatever function, and not freed yet.
std::size_t liveBlocks();

/// Where the allocations stand that were made to fail: the offsets in this program of what follows
/// each call.
std::vector<std::size_t> failedSites();

}  // namespace faults
