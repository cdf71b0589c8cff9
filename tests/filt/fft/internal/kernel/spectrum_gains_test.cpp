// Which columns and rows a set of gains leaves.
#include <filt/fft/internal/kernel/spectrum_gains.h>

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace {

using mvi::kClearedGain;
using Rows = std::vector<std::int32_t>;

TEST(SpectrumGains, AreEmptyWithoutAnyGain) {
    mvi::SpectrumGains gains({8, 4}, 5);
    gains.enter(1, 3, std::vector<float>(5, kClearedGain));
    gains.finish();
    EXPECT_TRUE(gains.isEmpty());
}

TEST(SpectrumGains, SpanTheColumnsThatAnyRowLeaves) {
    mvi::SpectrumGains gains({8, 4}, 5);
    gains.enter(0, 0, {kClearedGain, kClearedGain, 1.0f, kClearedGain, kClearedGain});
    gains.enter(1, 3, {kClearedGain, 0.0f, kClearedGain, kClearedGain, kClearedGain});
    gains.finish();
    EXPECT_EQ(1, gains.begin());
    EXPECT_EQ(3, gains.end());
    EXPECT_EQ((Rows{0, 1, 3}), gains.rows());
    EXPECT_EQ(1.0f, gains.direct(2).first[gains.direct(2).row[0]]);
    EXPECT_EQ(0.0f, gains.direct(1).first[gains.direct(1).row[3]]);
    EXPECT_LT(gains.direct(0).row[2], 0);
    EXPECT_FALSE(gains.hasMirrored());
}

TEST(SpectrumGains, ClearTheHalfOfARowThatNothingIsLeftOf) {
    mvi::SpectrumGains gains({8, 4}, 3);
    const std::vector<float> none(3, kClearedGain), some = {kClearedGain, 0.5f, kClearedGain};
    gains.enterBoth(0, none, none);
    gains.enterBoth(1, none, some);
    gains.enterBoth(2, none, none);
    gains.enterBoth(3, none, none);
    gains.finish();
    // What row 1 mirrors is left of row 3.
    EXPECT_EQ((Rows{3}), gains.rows());
    ASSERT_GE(gains.direct(0).row[3], 0);
    for (long x = 0; x < 3; ++x)
        EXPECT_TRUE(std::isnan(gains.direct(x).first[gains.direct(x).row[3]]));
    EXPECT_EQ(0.5f, gains.mirrored(1).first[gains.mirrored(1).row[1]]);
    EXPECT_LT(gains.direct(0).row[1], 0);
}

}  // namespace
