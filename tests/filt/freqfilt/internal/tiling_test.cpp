// How an image is cut into tiles.
#include <filt/freqfilt/internal/tiling.h>

#include <gtest/gtest.h>

namespace {

constexpr long kLongest = 2147483647;

TEST(Tiling, CountsTheTilesOfTheLargestImages) {
    const mvi::AxisPlan axis = mvi::planAxis(kLongest, 16, 0, mvBorder::zero);
    const mvi::TilePlan plan{axis, axis, mvBorder::zero};
    constexpr long kTiles = 134217728;  // 2^27
    EXPECT_EQ(axis.tiles(), kTiles);
    EXPECT_EQ(plan.tiles(), std::int64_t{kTiles} * kTiles);
    EXPECT_EQ(plan.tile(plan.tiles() - 1), mvPair<long>(kTiles - 1, kTiles - 1));
    EXPECT_EQ(plan.tile(std::int64_t{kTiles} * 3), mvPair<long>(0, 3));
    EXPECT_EQ(axis.count(kTiles - 1), 15);
}

TEST(Tiling, MakesPlanesThatTakeImagesAndTheirBorders) {
    EXPECT_EQ(mvi::planeFor(1, mvBorder::zero), 1);
    EXPECT_EQ(mvi::planeFor(512, mvBorder::zero), 512);
    EXPECT_EQ(mvi::planeFor(512, mvBorder::mirror), 1024);
    EXPECT_EQ(mvi::planeFor(1638, mvBorder::mirror), 2048);
    EXPECT_EQ(mvi::planeFor(1639, mvBorder::mirror), 4096);
}

TEST(Tiling, MakesPlanesForTheLargestImagesThatNoTransformTakes) {
    for (const mvBorder border : {mvBorder::zero, mvBorder::mirror}) {
        EXPECT_GT(mvi::planeFor(kLongest, border), 2048);
        EXPECT_GT(mvi::planeFor(kLongest / 2 + 2, border), 2048);
    }
}

}  // namespace
