// The reference's mappings against values worked out by hand.
#include <gtest/gtest.h>

#include <limits>
#include <numbers>

#include "reference/fft/map_image.h"
#include "reference/fft/truncate.h"

namespace {

using reference::mapImage;
using reference::Mapping;
using Bytes = std::vector<unsigned char>;

TEST(ReferenceMapImage, WorkedValues) {
    EXPECT_EQ(mapImage({-1, 0, 1}, Mapping::autoScale, 0, 0), (Bytes{0, 127, 255}));
    EXPECT_EQ(mapImage({2, 4}, Mapping::autoScale, 0, 0), (Bytes{127, 255}));
    EXPECT_EQ(mapImage({10, 20, 30, 9}, Mapping::range, 10, 20), (Bytes{0, 127, 255, 0}));
    EXPECT_EQ(mapImage({0, 10}, Mapping::log, 0, 0), (Bytes{0, 9}));
    EXPECT_EQ(mapImage({-std::numbers::pi / 2}, Mapping::angle, 0, 0), (Bytes{193}));
    EXPECT_EQ(mapImage({-3, 7.9, 300}, Mapping::clip, 0, 0), (Bytes{0, 7, 255}));
}

TEST(ReferenceMapImage, NaNsHaveNoPartInTheRange) {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(mapImage({kNaN, 7}, Mapping::autoScale, 0, 0), (Bytes{0, 255}));
    EXPECT_EQ(mapImage({7, kNaN}, Mapping::autoScale, 0, 0), (Bytes{255, 0}));
    EXPECT_EQ(mapImage({kNaN}, Mapping::autoScale, 0, 0), (Bytes{0}));
}

TEST(ReferenceTruncate, HoldsAtTheEnds) {
    EXPECT_EQ(reference::truncate32(1e300), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(reference::truncate32(-1e300), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(reference::truncate32(-1.9), -1);
    EXPECT_EQ(reference::lowByte(265.7), 9);
    EXPECT_EQ(reference::lowByte(-63.9), 193);
    EXPECT_EQ(reference::lowByte(1e19), 0);
    EXPECT_EQ(reference::oddSide(34.9), 35);
    EXPECT_EQ(reference::oddSide(33.1), 33);
}

}  // namespace
