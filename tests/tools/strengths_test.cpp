// How far the pels of a result stand out, and the medians behind that.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "tools/median.h"
#include "tools/spots.h"
#include "tools/strengths.h"

namespace {

using Values = mvPelBuffer<double>;

Values row(const std::vector<double>& levels) {
    Values values(static_cast<long>(levels.size()), 1);
    std::copy(levels.begin(), levels.end(), values.pointToRow(0));
    return values;
}

TEST(Median, IsTheValueInTheMiddle) {
    EXPECT_EQ(median(row({10, 12, 9, 50, 11})), 11);
    EXPECT_EQ(median(row({3})), 3);
    EXPECT_EQ(median(row({1, 2, 3, 4})), 3) << "the upper one of two";
    EXPECT_EQ(median(row({-1e300, -2, -1e-300, 0, 7})), -1e-300);
    EXPECT_EQ(median(row({5, 5, 5, 1, 9})), 5);
    EXPECT_EQ(medianDistance(row({10, 12, 9, 50, 11}), 11), 1);
}

TEST(Median, IsThatOfSortedValues) {
    std::mt19937 random{3};
    for (const long side : {1L, 2L, 7L, 40L}) {
        Values values(side, side + 1);
        std::vector<double> sorted;
        for (long y = 0; y < values.height(); ++y) {
            for (long x = 0; x < side; ++x) {
                values.pointToRow(y)[x] = std::ldexp(static_cast<double>(random()) - 2e9,
                                                     static_cast<int>(random() % 60) - 30);
                sorted.push_back(values.pel(x, y));
            }
        }
        std::vector<double> few = sorted;
        std::sort(sorted.begin(), sorted.end());
        EXPECT_EQ(median(values), sorted[sorted.size() / 2]);
        EXPECT_EQ(median(few), sorted[sorted.size() / 2]);
    }
}

TEST(Strengths, AreDistancesFromTheMedianInSpreads) {
    Values values = row({10, 12, 9, 50, 11});
    toStrengths(values, {0, 0});
    // The median is 11; the distances are 1, 1, 2, 39 and 0, their median is 1.
    EXPECT_DOUBLE_EQ(values.pel(3, 0), 39 / 1.4826);
    EXPECT_DOUBLE_EQ(values.pel(2, 0), 2 / 1.4826);
    EXPECT_EQ(values.pel(4, 0), 0);
}

TEST(Strengths, OfAnEvenPictureAreThoseOfAThousandth) {
    Values values(40, 30);
    values.pointToRow(0)[0] = 0.5;
    toStrengths(values, {10, 7});
    EXPECT_DOUBLE_EQ(values.pel(0, 0), 500);
    EXPECT_EQ(values.pel(1, 0), 0);
}

// Noise, and what a wave leaves that is cut by the left edge and by the lower one.
Values cutWave() {
    std::mt19937 random{4};
    Values values(80, 60);
    for (long y = 0; y < 60; ++y) {
        for (long x = 0; x < 80; ++x) {
            const auto u = static_cast<double>(x), v = static_cast<double>(y);
            const double left = 40 * std::exp(-u / 2), below = 40 * std::exp(-(59 - v) / 2);
            values.pointToRow(y)[x] = 5 + static_cast<double>(random() % 100) / 100 +
                                      left * std::abs(std::cos(v)) + below * std::abs(std::cos(u));
        }
    }
    return values;
}

TEST(Strengths, NearAnEdgeAreMeasuredByItsOwnPels) {
    Values near = cutWave(), far = cutWave();
    toStrengths(near, {12, 12});
    EXPECT_TRUE(findSpots(near, 10).empty());
    toStrengths(far, {0, 0});
    EXPECT_FALSE(findSpots(far, 10).empty());
}

TEST(Strengths, ShowADefectBesideACutWave) {
    Values values = cutWave();
    values.pointToRow(30)[1] += 400;
    values.pointToRow(20)[40] += 20;
    toStrengths(values, {12, 12});
    const std::vector<Spot> spots = findSpots(values, 10);
    ASSERT_EQ(spots.size(), 2u);
    EXPECT_EQ(spots[0].x, 40);
    EXPECT_EQ(spots[1].x, 1);
}

// What lies further inside than the reach, or than a quarter of the picture, is not the edge's.
TEST(Strengths, FarFromTheEdgesAreThoseOfAllPels) {
    for (const mvPair<long> reach : {mvPair<long>(10, 10), mvPair<long>(1000, 1000)}) {
        Values edges = cutWave(), all = cutWave();
        toStrengths(edges, reach);
        toStrengths(all, {0, 0});
        const long x = std::min(reach.x, 20L), y = std::min(reach.y, 15L);
        for (long v = y; v < 60 - y; ++v) {
            for (long u = x; u < 80 - x; ++u) ASSERT_EQ(edges.pel(u, v), all.pel(u, v));
        }
        EXPECT_LT(edges.pel(0, 30), all.pel(0, 30));
        EXPECT_LT(edges.pel(40, 59), all.pel(40, 59));
    }
}

}  // namespace
