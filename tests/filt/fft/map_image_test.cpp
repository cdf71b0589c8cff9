// The display mapping: worked values, wrap-arounds, and the definition over many images.
#include <filt/fft.h>

#include <gtest/gtest.h>

#include <limits>
#include <numbers>
#include <vector>

#include "reference/fft/map_image.h"
#include "support/pel_images.h"
#include "support/random_planes.h"
#include "support/thrown.h"

namespace {

using Defs = mvFrequencyDefs;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

// A row of values mapped to a row of bytes.
struct Worked {
    const char* name;
    Defs::FrequencyMapping mapping;
    double low, high;
    std::vector<double> values;
    std::vector<int> bytes;
};

const Worked kWorked[] = {
    {"ClipHolds",
     Defs::eMapClip,
     0,
     0,
     {-1e300, -1, -0.0, 0.9, 1, 254.99, 255, 256, 1e300},
     {0, 0, 0, 0, 1, 254, 255, 255, 255}},
    {"ClipTakesNaNForZero", Defs::eMapClip, 0, 0, {kNaN, kInfinity, -kInfinity}, {0, 255, 0}},
    {"AutoScaleOfZeros", Defs::eMapAutoScale, 9, 9, {0, 0, 0}, {0, 0, 0}},
    {"AutoScaleAroundZero", Defs::eMapAutoScale, 9, 9, {-1, 0, 1}, {0, 127, 255}},
    {"AutoScaleAboveZeroIsNotShifted", Defs::eMapAutoScale, 9, 9, {2, 4}, {127, 255}},
    {"AutoScaleOfNegatives", Defs::eMapAutoScale, 9, 9, {-4, -2, -3}, {0, 255, 127}},
    {"AutoScaleOfOneNegative", Defs::eMapAutoScale, 9, 9, {-4}, {0}},
    {"AutoScaleBeyondTheStartValues", Defs::eMapAutoScale, 9, 9, {0x1p68, 0x1p69}, {127, 255}},
    {"AutoScaleFarBelowTheStartValues", Defs::eMapAutoScale, 9, 9, {-0x1p69, -0x1p68}, {0, 255}},
    {"RangeAboveZero",
     Defs::eMapRange,
     10,
     20,
     {10, 20, 30, 31, 1e300, 9.99, -5},
     {0, 127, 255, 255, 255, 0, 0}},
    {"RangeAroundZero", Defs::eMapRange, -10, 10, {-10, 0, 10, 11}, {0, 127, 255, 255}},
    {"RangeTakesNaNForZero",
     Defs::eMapRange,
     0,
     255,
     {kNaN, kInfinity, -kInfinity, 7},
     {0, 255, 0, 7}},
    {"RangeWithoutExtentIsOneWide", Defs::eMapRange, -3, -3, {-3, -2.5, -2}, {0, 127, 255}},
    {"RangeUpsideDownIsOneWide", Defs::eMapRange, 5, -5, {5, 5.5, 6, 7}, {0, 127, 255, 255}},
    {"RangeFromNaN", Defs::eMapRange, kNaN, 10, {0, 5, 100}, {0, 0, 0}},
    {"RangeToNaNIsOneWide", Defs::eMapRange, 0, kNaN, {0, 0.5, 1}, {0, 127, 255}},
    {"LogOfUnitRange", Defs::eMapLog, 9, 9, {0, 1}, {0, 255}},
    {"LogWrapsAtTheTop", Defs::eMapLog, 9, 9, {0, 10}, {0, 9}},
    {"LogOfNegativesIsShifted", Defs::eMapLog, 9, 9, {-10, 0}, {0, 9}},
    {"LogOfZeros", Defs::eMapLog, 9, 9, {0, 0}, {0, 0}},
    {"AngleOnTheCircle",
     Defs::eMapAngle,
     9,
     9,
     {0, std::numbers::pi, 2 * std::numbers::pi - 0.01, -std::numbers::pi / 2},
     {0, 127, 254, 193}},
    {"AngleBeyond64BitsIsZero",
     Defs::eMapAngle,
     9,
     9,
     {1e300, -1e300, kNaN, kInfinity, -kInfinity, 7.0},
     {0, 0, 0, 0, 0, 28}},
    {"UnknownMapping", static_cast<Defs::FrequencyMapping>(5), 0, 1, {1, 2, 3}, {0, 0, 0}},
    {"FarMapping", static_cast<Defs::FrequencyMapping>(99), 0, 1, {1, 2, 3}, {0, 0, 0}},
    {"NegativeMapping", static_cast<Defs::FrequencyMapping>(-1), 0, 1, {1, 2, 3}, {0, 0, 0}},
};

mvPelBuffer<double> rowOf(std::vector<double>& values) {
    const long width = static_cast<long>(values.size());
    return mvPelBuffer<double>(values.data(), width, 1, width);
}

struct MapImage : testing::TestWithParam<Worked> {};
INSTANTIATE_TEST_SUITE_P(Worked, MapImage, testing::ValuesIn(kWorked),
                         [](const auto& test) { return test.param.name; });

TEST_P(MapImage, GivesTheseBytes) {
    const Worked& worked = GetParam();
    std::vector<double> values = worked.values;
    const auto image = mfFrequencyMapImage(rowOf(values), worked.mapping, worked.low, worked.high);
    ASSERT_EQ(image.width(), static_cast<long>(values.size()));
    for (long x = 0; x < image.width(); ++x) {
        EXPECT_EQ(image.pel(x, 0), worked.bytes[static_cast<std::size_t>(x)])
            << worked.values[static_cast<std::size_t>(x)];
    }
}

TEST(MapImageResult, HasTheSizeAndTransformButNoOffset) {
    mvPelBuffer<double> src(7, 5);
    src.offset(3, 4);
    src.copyXforms(support::someXformCache());
    const auto image = mfFrequencyMapImage(src, Defs::eMapClip, 0, 0);
    EXPECT_EQ(image.width(), 7);
    EXPECT_EQ(image.height(), 5);
    EXPECT_EQ(image.rowUpdate(), 32);
    EXPECT_EQ(image.offset(), mvPair<long>(0, 0));
    EXPECT_EQ(image.xformCache(), support::someXformCache());
}

TEST(MapImageResult, AnUnboundSourceIsRefused) {
    for (int mapping = 0; mapping < 6; ++mapping) {
        EXPECT_EQ(support::thrownBy([&] {
                      mfFrequencyMapImage(mvPelBuffer<double>(),
                                          static_cast<Defs::FrequencyMapping>(mapping), 0, 1);
                  }),
                  support::kUnbound);
    }
}

// Images of many magnitudes, some negative, some not.
reference::Image<double> someImage(long width, long height, unsigned seed) {
    support::Random random(seed);
    reference::Image<double> image(width, height);
    const double scale = std::pow(10.0, static_cast<double>(seed % 25) - 2.0);
    for (double& pel : image.pels) {
        const double value = random.symmetric();
        pel = scale * (seed % 2 == 0 ? std::abs(value) : value);
    }
    return image;
}

TEST(MapImageDefinition, HoldsForImagesOfAllSizes) {
    unsigned seed = 0;
    for (long width = 1; width <= 21; ++width) {
        for (long height = 1; height <= 5; ++height) {
            const auto image = someImage(width, height, ++seed);
            const mvPelBuffer<double> src = support::pelBufferOf(image);
            for (int m = 0; m < 5; ++m) {
                const double low = static_cast<double>(seed % 7) - 3.0;
                const auto expected =
                    reference::mapImage(image.pels, static_cast<reference::Mapping>(m), low, 5.0);
                const auto actual =
                    mfFrequencyMapImage(src, static_cast<Defs::FrequencyMapping>(m), low, 5.0);
                EXPECT_EQ(support::imageOf(actual).pels, expected)
                    << width << " x " << height << ", mapping " << m;
            }
        }
    }
}

TEST(MapImageDefinition, HoldsForExtremeValues) {
    reference::Image<double> image(6, 2);
    image.pels = {-1e308, 1e308, 0.0, -0.0, 5e-324, 1e19, -1e19, 3.0, 9.3e18, -9.3e18, 1.0, 1e20};
    const mvPelBuffer<double> src = support::pelBufferOf(image);
    for (int m = 0; m < 5; ++m) {
        const auto expected =
            reference::mapImage(image.pels, static_cast<reference::Mapping>(m), 0.0, 1e-3);
        const auto actual =
            mfFrequencyMapImage(src, static_cast<Defs::FrequencyMapping>(m), 0.0, 1e-3);
        EXPECT_EQ(support::imageOf(actual).pels, expected) << "mapping " << m;
    }
}

TEST(MapImageDefinition, NaNsAndInfinitiesDoNoHarm) {
    reference::Image<double> image(3, 3);
    image.pels = {kNaN, kInfinity, -kInfinity, 0, 1, -1, kNaN, 1e300, 2};
    const mvPelBuffer<double> src = support::pelBufferOf(image);
    for (int m = 0; m < 5; ++m) {
        EXPECT_EQ(support::thrownBy([&] {
                      mfFrequencyMapImage(src, static_cast<Defs::FrequencyMapping>(m), kNaN, 1);
                  }),
                  "nothing");
    }
}

}  // namespace
