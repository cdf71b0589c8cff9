// Loading and then using a record, with an eye on what both cost.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "support/allocation_meter.h"
#include "support/loading.h"
#include "support/metered_steps.h"
#include "support/use.h"

namespace archive {

/// What loading throws, in the words of loadingThrows(). Whatever came of it is used.
template <class T>
std::string loadAndUse(const std::string& bytes, T& value, long largestArea = kLargestArea) {
    std::string thrown;
    std::size_t peak = 0;
    {
        Loading loading(bytes);
        const AllocationMeter meter;
        thrown = loadingThrows([&] { loading.archive() || value; });
        peak = meter.peak();
    }
    EXPECT_LE(peak, largestLoad(bytes.size()));
    MeteredSteps steps(bytes.size());
    use(value, steps, largestArea);
    return thrown;
}

}  // namespace archive
