// The band-pass filter's own behaviour, case by case.
#include "support/buffer_record.h"
#include "support/filter_cases.h"
#include "support/longs.h"
#include "support/random_planes.h"
#include "support/spectra.h"

namespace {

using cases::Open;
using support::thrownBy;
using Filter = mvFrequencyFilterBandPass;
using Size = mvPair<long>;

mvFrequencyBuffer onesOf(int width, int height) {
    return support::bufferOf(support::constantPlane(width, height, {1.0F, 0.0F}));
}

TEST(BandPass, AcceptsTheEndsOfEveryRange) {
    EXPECT_EQ(Filter(0.05, 0.0, 0.0, Size(8, 8), 0).frequency(), 0.0);
    EXPECT_EQ(Filter(0.05, 0.0, 0.5, Size(8, 8), 0).frequency(), 0.5);
    EXPECT_EQ(Filter(0.05, 0.0, 0.5, Size(1, 1), 0).size(), Size(1, 1));
    EXPECT_EQ(Filter(5e-324, 0.0, 0.5, Size(8, 8), 0).sigma(), 5e-324);
}

TEST(BandPass, MakesItsSupportOdd) {
    EXPECT_EQ(Filter(0.05, 0.0, 0.25, Size(64, 64), 0).supportWidth(), 17);
    EXPECT_EQ(Filter(0.05, 0.0, 0.25, Size(64, 1), 0).supportWidth(), 17);
    EXPECT_EQ(Filter(0.05, 1.0 / 64, 0.25, Size(64, 64), 0).supportWidth(), 17);
    EXPECT_EQ(Filter(0.05, 2.5 / 64, 0.25, Size(64, 64), 0).supportWidth(), 19);
    EXPECT_EQ(Filter(1e-9, 0.0, 0.25, Size(1, 1), 0).supportWidth(), 1);
}

// Squares of distances of 2^32 and more are squares.
TEST(BandPass, PassesTheFarthestRowOfATallPlane) {
    constexpr long kHeight = 131072;
    const Filter filter(0.05, 0.0, 0.5, Size(4, kHeight), 0);
    const mvFrequencyBuffer before = support::loaded(support::recordOf(4, kHeight));
    mvFrequencyBuffer after(before);
    filter.apply(after);
    EXPECT_EQ(after.get(0, kHeight / 2, false), before.get(0, kHeight / 2, false));
    EXPECT_EQ(after.get(0, 0, false), mvPair<double>(0, 0));
}

TEST(BandPass, ProfileStartsAtOneAndFallsAsAGaussian) {
    const Open<Filter> filter(0.05, 0.0, 0.25, Size(64, 64), 0);
    EXPECT_EQ(filter.data()[0], 1.0F);
    // One sigma is 3.2 bins, or 102.4 entries: entry 102 stands at 3.1875 bins.
    EXPECT_NEAR(filter.data()[102], std::exp(-3.1875 * 3.1875 / (2 * 3.2 * 3.2)), 1e-7);
    EXPECT_LT(filter.data()[543], 1e-5F);
}

TEST(BandPass, PlateauIsFlat) {
    const Open<Filter> filter(0.05, 2.0 / 64, 0.25, Size(64, 64), 0);
    for (int i = 0; i <= 64; ++i) EXPECT_EQ(filter.data()[i], 1.0F) << i;
    EXPECT_LT(filter.data()[65], 1.0F);
}

TEST(BandPass, LowPassKeepsDC) {
    const Filter filter(0.05, 0.0, 0.0, Size(64, 64), 0);
    mvFrequencyBuffer buffer = onesOf(64, 64);
    filter.apply(buffer);
    EXPECT_EQ(buffer.get(0, 0, true), mvPair(1.0, 0.0));
}

TEST(BandPass, RadiusOneClearsDCAlone) {
    const Filter filter(0.05, 0.0, 0.0, Size(64, 64), 1);
    mvFrequencyBuffer buffer = onesOf(64, 64);
    filter.apply(buffer);
    EXPECT_EQ(buffer.get(0, 0, true), mvPair(0.0, 0.0));
    EXPECT_GT(buffer.getReal(1, 0, true), 0.5);
    EXPECT_GT(buffer.getReal(-1, -1, true), 0.5);
}

TEST(BandPass, RadiusTwoClearsThreeByThree) {
    const Filter filter(0.05, 0.0, 0.0, Size(64, 64), 2);
    mvFrequencyBuffer buffer = onesOf(64, 64);
    filter.apply(buffer);
    for (long v = -2; v <= 2; ++v) {
        for (long u = -2; u <= 2; ++u) {
            const bool inside = std::abs(u) < 2 && std::abs(v) < 2;
            EXPECT_EQ(buffer.getReal(u, v, true) == 0.0, inside) << u << ", " << v;
        }
    }
}

TEST(BandPass, KeepsTheRingAndClearsTheRest) {
    const Filter filter(0.01, 0.0, 0.25, Size(64, 64), 0);
    mvFrequencyBuffer buffer = onesOf(64, 64);
    filter.apply(buffer);
    EXPECT_EQ(buffer.getReal(16, 0, true), 1.0);
    EXPECT_EQ(buffer.getReal(0, -16, true), 1.0);
    EXPECT_EQ(buffer.getReal(-16, 0, true), 1.0);
    EXPECT_EQ(buffer.getReal(0, 0, true), 0.0);
    EXPECT_EQ(buffer.getReal(-32, -32, true), 0.0);
    EXPECT_GT(buffer.getReal(15, 0, true), 0.0);
}

TEST(BandPass, IsRoundInCyclesPerPixel) {
    // 0.25 cycles per pixel are 16 columns, and 32 rows of a plane twice as tall.
    const Filter filter(0.01, 0.0, 0.25, Size(64, 128), 0);
    mvFrequencyBuffer buffer = onesOf(64, 128);
    filter.apply(buffer);
    EXPECT_EQ(buffer.getReal(16, 0, true), 1.0);
    EXPECT_EQ(buffer.getReal(0, 32, true), 1.0);
    EXPECT_EQ(buffer.getReal(0, 16, true), 0.0);
}

TEST(BandPass, ClearsRowsBeyondTheRowLimitOnATallPlane) {
    // Support 5, ring at 16 bins, so the limit is 16 * 4 + 5 = 69 rows, although the flank would
    // reach to (16 + 5) * 4 = 84.
    const Filter filter(0.01, 0.0, 0.25, Size(64, 256), 0);
    ASSERT_EQ(filter.supportWidth(), 5);
    mvFrequencyBuffer buffer = onesOf(64, 256);
    filter.apply(buffer);
    EXPECT_GT(buffer.getReal(0, 69, true), 0.0);
    EXPECT_EQ(buffer.getReal(0, 70, true), 0.0);
    EXPECT_GT(buffer.getReal(0, -69, true), 0.0);
    EXPECT_EQ(buffer.getReal(0, -70, true), 0.0);
    // The same distance in the row direction, were it not for the limit: 17.5 bins.
    EXPECT_GT(buffer.getReal(17, 1, true), 0.0);
}

TEST(BandPass, AOneRowPlaneLiesAtDistanceOne) {
    // The only row stands for -1, which is W bins away in a plane of W columns.
    const Filter filter(0.1, 0.0, 0.5, Size(64, 1), 0);
    mvFrequencyBuffer buffer = onesOf(64, 1);
    filter.apply(buffer);
    // Row distance 64, ring at 32, support 28 + 1: (64 - 32) is beyond it.
    ASSERT_EQ(filter.supportWidth(), 29);
    for (long x = 0; x < 64; ++x) EXPECT_EQ(buffer.getReal(x, 0, false), 0.0) << x;
}

TEST(BandPass, AOneColumnPlaneLiesAtDistanceOne) {
    const Filter filter(1.0, 0.0, 0.0, Size(1, 1), 0);
    mvFrequencyBuffer buffer = onesOf(1, 1);
    filter.apply(buffer);
    // Column and row distance 1: the square root of 2, or entry 45, one sigma being 32 entries.
    const double d = 45 * 0.03125;
    EXPECT_EQ(buffer.getReal(0, 0, false),
              static_cast<double>(static_cast<float>(std::exp(d * d * (1 / -2.0)))));
}

TEST(BandPass, ClearedElementsArePositiveZeros) {
    const Filter filter(0.01, 0.0, 0.25, Size(16, 16), 0);
    mvFrequencyBuffer buffer = support::bufferOf(
        support::constantPlane(16, 16, {-1.0F, -std::numeric_limits<float>::infinity()}));
    filter.apply(buffer);
    EXPECT_FALSE(std::signbit(buffer.getReal(-8, -8, true)));
    EXPECT_EQ(buffer.get(-8, -8, true), mvPair(0.0, 0.0));
    EXPECT_FALSE(std::signbit(buffer.getImaginary(-8, -8, true)));
}

TEST(BandPass, ARemovalSquareThatReachesOutIsFoundOnTheWay) {
    // Side 8: signed frequencies -4 .. 3. Radius 5 starts at -4 and fails at column 4.
    const Filter filter(1.0, 0.0, 0.0, Size(8, 8), 5);
    mvFrequencyBuffer buffer = onesOf(8, 8);
    EXPECT_EQ(thrownBy([&] { filter.apply(buffer); }), support::kOutOfBounds);
    for (long u = -4; u < 4; ++u) {
        EXPECT_EQ(buffer.getReal(u, -4, true), 0.0);
        EXPECT_GT(buffer.getReal(u, -3, true), 0.0);
    }
}

TEST(BandPass, ASquareThatJustFits) {
    const Filter filter(1.0, 0.0, 0.0, Size(8, 8), 4);
    mvFrequencyBuffer buffer = onesOf(8, 8);
    EXPECT_EQ(thrownBy([&] { filter.apply(buffer); }), "nothing");
    EXPECT_GT(buffer.getReal(-4, -4, true), 0.0);
    EXPECT_EQ(buffer.getReal(-3, 3, true), 0.0);
}

TEST(BandPass, ASpentBufferIsFilteredUnlessASquareIsToBeRemoved) {
    mvFrequencyBuffer buffer = onesOf(8, 8);
    mvi::BufferAccess::setInverseComputed(buffer, true);
    EXPECT_EQ(thrownBy([&] { Filter(1.0, 0.0, 0.0, Size(8, 8), 0).apply(buffer); }), "nothing");
    EXPECT_EQ(thrownBy([&] { Filter(1.0, 0.0, 0.0, Size(8, 8), 1).apply(buffer); }),
              support::kSpent);
    EXPECT_TRUE(mvi::BufferAccess::inverseComputed(buffer));
    // Sizing the destination makes it frequency data again.
    EXPECT_EQ(thrownBy([&] { Filter(1.0, 0.0, 0.0, Size(8, 8), 1).apply(buffer, buffer); }),
              "nothing");
    EXPECT_FALSE(mvi::BufferAccess::inverseComputed(buffer));
}

TEST(BandPass, ASideThatPassesTheChecksIsHeldTo32Bits) {
    if (!support::kLongIsWide) GTEST_SKIP() << "every long has 32 bits";
    // Only the width enters the profile.
    const Filter filter(0.05, 0.0, 0.25, Size(8, support::powerOfTwo(40)), 0);
    EXPECT_EQ(filter.size(), Size(8, std::numeric_limits<std::int32_t>::max()));
}

TEST(BandPass, AVanishingSigmaGivesAProfileOfOnes) {
    // The square of sigma underflows; the exponent is then taken as 0.
    const Open<Filter> filter(1e-200, 0.0, 0.25, Size(64, 64), 0);
    for (long i = 0; i < filter.supportWidth() * 32; ++i) ASSERT_EQ(filter.data()[i], 1.0F);
}

}  // namespace
