// The strongest waves of a picture.
#include <gtest/gtest.h>
#include <suggest/peaks.h>

#include <cmath>
#include <random>

#include "images.h"

namespace {

using suggested::Image;
using suggested::imageOf;
using suggested::kTurn;

struct Wave {
    double frequency, degrees, amplitude;

    double at(double x, double y) const {
        const double turn = degrees * kTurn / 360;
        return amplitude * std::cos(kTurn * frequency * (x * std::cos(turn) + y * std::sin(turn)));
    }
};

Image picture(const std::vector<Wave>& waves, double noise = 3) {
    std::mt19937 random{3};
    return imageOf(400, 300, [&](double x, double y) {
        double pel = 128 + noise * (static_cast<double>(random() >> 8 & 0xffff) / 0x8000 - 1);
        for (const Wave& wave : waves) pel += wave.at(x, y);
        return std::round(pel);
    });
}

TEST(Peaks, AreTheWavesThatWerePutIn) {
    const Wave waves[] = {{0.11, 25, 30}, {0.23, -60, 12}, {0.31, 90, 4}};
    const std::vector<mvPeak> peaks = mfPeaks(picture({waves[0], waves[1], waves[2]}));
    ASSERT_EQ(peaks.size(), 3u);
    for (std::size_t i = 0; i < peaks.size(); ++i) {
        EXPECT_NEAR(peaks[i].frequency, waves[i].frequency, 0.0005);
        EXPECT_NEAR(peaks[i].degrees, waves[i].degrees, 0.3);
        EXPECT_NEAR(peaks[i].amplitude / waves[i].amplitude, 1, 0.1);
        EXPECT_NEAR(peaks[i].period() * waves[i].frequency, 1, 0.01);
        EXPECT_EQ(peaks[i].group, static_cast<long>(i));
        EXPECT_EQ(peaks[i].order, 1);
    }
}

TEST(Peaks, AreGroupedWithTheirOvertones) {
    const std::vector<mvPeak> peaks =
        mfPeaks(picture({{0.07, 10, 20}, {0.2, -45, 15}, {0.14, 10, 8}, {0.21, 10, 5}}));
    ASSERT_EQ(peaks.size(), 4u);
    const long orders[] = {1, 2, 3, 1}, groups[] = {0, 0, 0, 1};
    for (std::size_t i = 0; i < peaks.size(); ++i) {
        EXPECT_EQ(peaks[i].order, orders[i]);
        EXPECT_EQ(peaks[i].group, groups[i]);
    }
}

TEST(Peaks, AreRemovedByTheirFilters) {
    const Image before = picture({{0.11, 25, 30}}, 0);
    const mvPeak peak = mfPeaks(before).front();
    Image after;
    mfFilterImage(before, mfBuildFilters(peak.steps, {512, 512}).list(), after);
    double most = 0;
    for (long y = 40; y < 260; ++y) {
        for (long x = 40; x < 360; ++x) most = std::max(most, std::abs(after.pel(x, y) - 128));
    }
    EXPECT_LT(most, 2);
    EXPECT_EQ(peak.arguments.front(), "gaborreject");
}

TEST(Peaks, OfWhatHasNoWavesAreNone) {
    EXPECT_TRUE(mfPeaks(picture({})).empty());
    EXPECT_TRUE(mfPeaks(imageOf(1, 1, [](double, double) { return 7.0; })).empty());
    EXPECT_TRUE(mfPeaks(imageOf(64, 64, [](double, double) { return 7.0; })).empty());
    EXPECT_TRUE(mfPeaks(imageOf(64, 48, [](double x, double) { return 2 * x; })).empty());
}

TEST(Peaks, AreNoMoreThanAskedFor) {
    const std::vector<mvPeak> peaks = mfPeaks(picture({{0.11, 25, 30}, {0.23, -60, 12}}), 1);
    ASSERT_EQ(peaks.size(), 1u);
    EXPECT_NEAR(peaks.front().frequency, 0.11, 0.001);
    EXPECT_THROW(mfPeaks(Image()), mvFrequencyDefs::UnboundWindow);
}

}  // namespace
