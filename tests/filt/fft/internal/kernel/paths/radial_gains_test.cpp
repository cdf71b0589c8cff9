// Gains by distance from a ring.
#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "support/kernel_paths.h"

namespace {

using Gains = std::vector<float>;

// Three gains, and what stands behind them.
const Gains kProfile = {0.5f, 0.25f, 0.125f, 0.75f};

// Those of the columns begin .. 9 of the row at `rowTerm`; the others are left at -1.
Gains gainsOf(const mvi::KernelPath& path, double radius, std::int64_t rowTerm, long begin) {
    Gains gains(10, -1.0f);
    path.radialGains({kProfile.data(), 3, radius, 1.0}, rowTerm, begin, 10, gains.data());
    return gains;
}

TEST(RadialGains, CountFromTheRingInBothDirections) {
    support::onEveryPath([](const mvi::KernelPath& path) {
        EXPECT_EQ(gainsOf(path, 5.0, 0, 3),
                  (Gains{-1, -1, -1, 0.125f, 0.25f, 0.5f, 0.25f, 0.125f, 0.75f, 0.75f}));
        // 3, 4, 5: column 4 of the row with the term 9 is on the ring.
        EXPECT_EQ(gainsOf(path, 5.0, 9, 4).at(4), 0.5f);
    });
}

TEST(RadialGains, BeyondTheProfileAreWhatStandsBehindIt) {
    support::onEveryPath([](const mvi::KernelPath& path) {
        EXPECT_EQ(gainsOf(path, 4.0, 0, 0),
                  (Gains{0.75f, 0.75f, 0.125f, 0.25f, 0.5f, 0.25f, 0.125f, 0.75f, 0.75f, 0.75f}));
        for (const double radius : {1e300, std::numeric_limits<double>::infinity()}) {
            EXPECT_EQ(gainsOf(path, radius, 0, 0), Gains(10, 0.75f)) << radius;
        }
    });
}

TEST(RadialGains, OfARadiusThatIsNoNumberAreTheFirst) {
    support::onEveryPath([](const mvi::KernelPath& path) {
        const double nan = std::numeric_limits<double>::quiet_NaN();
        EXPECT_EQ(gainsOf(path, nan, 0, 0), Gains(10, 0.5f));
    });
}

}  // namespace
