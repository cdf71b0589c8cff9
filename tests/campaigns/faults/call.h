// Calls an operation while chosen events fail.
#pragma once

#include <string>

#include "campaigns/faults/allocation_faults.h"
#include "campaigns/faults/operations.h"

namespace faults {

enum class Event { kNone, kAllocation, kPoll, kChange };

/// What goes wrong during a call, and where the call stands. Events are counted from 1; 0: none
/// fails.
struct Trouble {
    long allocation = 0;  ///< that fails
    Extent extent = Extent::kOnlyThis;
    Threads threads = Threads::kThis;  ///< whose allocations count
    long poll = 0;                     ///< that fails, with the status 77 or an Interrupted
    bool pollThrows = false;
    bool pollStarves = false;  ///< no allocation succeeds behind the poll that fails
    long change = 0;           ///< of a filter, whose watcher throws an Interrupted
    bool isBusy = false;       ///< the handler of polls calls the library itself
    bool isUnwinding = false;  ///< a destructor makes the call while another exception is thrown
};

struct Outcome {
    std::string thrown;  ///< as support::thrownBy names it, or "bad_alloc"
    long allocations;
    long polls;
    long changes;
    Event first = Event::kNone;     ///< of the events that failed
    const char* toThrow = nullptr;  ///< what that one throws
    bool hasAllocationFailed = false;
    bool hasPollFailed = false;
};

Outcome call(const Operation& operation, Operands& operands, const Trouble& trouble);

}  // namespace faults
