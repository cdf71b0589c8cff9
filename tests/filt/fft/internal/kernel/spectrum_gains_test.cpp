// Which columns and rows a set of gains leaves.
#include <filt/fft/internal/kernel/spectrum_gains.h>
#include <filt/fft/internal/kernel/spectrum_row_gains.h>

#include <gtest/gtest.h>

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
    EXPECT_EQ(1.0f, gains.gains(2).first[gains.gains(2).row[0]]);
    EXPECT_EQ(0.0f, gains.gains(1).first[gains.gains(1).row[3]]);
    EXPECT_LT(gains.gains(0).row[2], 0);
}

TEST(SpectrumRowGains, ListTheRowsThatWereEntered) {
    mvi::SpectrumRowGains gains({16, 8}, 3, 5);
    EXPECT_TRUE(gains.isEmpty());
    gains.enter(2, std::vector<float>(16, 0.5f));
    gains.repeat(3);
    gains.enter(7, std::vector<float>(16, kClearedGain));
    EXPECT_FALSE(gains.isEmpty());
    EXPECT_EQ((Rows{2, 3, 7}), gains.rows());
    EXPECT_EQ(3, gains.begin());
    EXPECT_EQ(5, gains.end());
}

}  // namespace
