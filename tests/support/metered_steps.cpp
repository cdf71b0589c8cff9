// Operations whose memory and work are bounded by what they work on.
#include "support/metered_steps.h"

#include <gtest/gtest.h>

#include "support/allocation_meter.h"
#include "support/attention.h"
#include "support/work_meter.h"

namespace archive {
namespace {

// Whatever an operation works on: its scratch, a stream, an exception.
constexpr double kMemoryOfAny = 1 << 20;
constexpr double kWorkOfAny = 1 << 15;

// The dearest elements are the pels of narrow images, whose rows begin at multiples of 32 bytes: an
// operation has no more than four images at once, beside a plane or two.
constexpr double kMemoryOfAnElement = 160;

// Eleven stages of a transform in each direction, and a conversion.
constexpr double kWorkOfAnElement = 256;

struct Cost {
    double memory, work;
};

Cost costOf(const Operation& operation) {
    const AllocationMeter memory;
    const support::WorkMeter work;
    const support::AttentionCounter attention;
    tolerate(operation);
    return {static_cast<double>(memory.peak()),
            static_cast<double>(work.work()) + static_cast<double>(attention.polls())};
}

}  // namespace

void MeteredSteps::run(const char* name, double elements, const Operation& operation) {
    const Cost cost = costOf(operation);
    const auto bytes = static_cast<double>(bytes_);
    EXPECT_LE(cost.memory, kMemoryOfAny + 4 * bytes + kMemoryOfAnElement * elements) << name;
    EXPECT_LE(cost.work, kWorkOfAny + bytes + kWorkOfAnElement * elements) << name;
}

}  // namespace archive
