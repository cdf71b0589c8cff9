// The spectrum as a picture.
#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "support/png_file.h"
#include "support/program.h"

namespace {

class Spectrum : public ProgramTest {
  protected:
    PngFile of(const PngFile& picture, const Arguments& options = {}) {
        writePng(path("in.png"), picture);
        Arguments arguments{"spectrum", "in.png", "out.png"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        succeed(arguments);
        return readPng(path("out.png"));
    }
};

TEST_F(Spectrum, IsAnEightBitPictureOfThePaddedSize) {
    const PngFile spectrum = of(noisePng(100, 33, 16));
    EXPECT_EQ(spectrum.width, 128);
    EXPECT_EQ(spectrum.height, 64);
    EXPECT_EQ(spectrum.depth, 8);
    EXPECT_EQ(spectrum.colourType, PNG_COLOR_TYPE_GRAY);
}

TEST_F(Spectrum, ShowsAWaveAsTwoWhiteDotsAroundTheMiddle) {
    const PngFile spectrum = of(greyPng(64, 32, 8, [](long x, long y) {
        const double turns = static_cast<double>(x) * 5 / 64 + static_cast<double>(y) * 3 / 32;
        return std::lround(128 + 100 * std::cos(2 * std::numbers::pi * turns));
    }));
    EXPECT_EQ(spectrum.at(32 + 5, 16 + 3), 255u);
    EXPECT_EQ(spectrum.at(32 - 5, 16 - 3), 255u);
    EXPECT_EQ(spectrum.at(32, 16), 255u);
    EXPECT_LT(spectrum.at(32 + 5, 16 - 3), 200u);
}

// The mean is thousands of times as strong as the wave; neither goes dark, nor does the wave wrap.
TEST_F(Spectrum, IsNotOutshoneByTheMean) {
    const PngFile spectrum =
        of(greyPng(64, 64, 16, [](long x, long) { return 60000 + (x % 4 == 0); }));
    EXPECT_EQ(spectrum.at(32, 32), 255u);
    EXPECT_EQ(spectrum.at(32 + 16, 32), 255u);
}

TEST_F(Spectrum, OfASinglePelIsASinglePel) {
    const PngFile spectrum = of(noisePng(1, 1, 8));
    EXPECT_EQ(spectrum.samples.size(), 1u);
}

using Size = std::pair<long, long>;
class Axes : public Spectrum, public ::testing::WithParamInterface<Size> {};

// The plane stands, unchanged but for a whole factor, within a white margin.
TEST_P(Axes, StandAroundThePlane) {
    const auto [width, height] = GetParam();
    const PngFile picture = noisePng(width, height, 8);
    const PngFile plane = of(picture);
    const PngFile plot = of(picture, {"--axes"});
    const long zoom = std::max(256 / std::max(plane.width, plane.height), 1l);
    const long letter = std::max(std::max(plane.width, plane.height) / 512, 1l);
    const long left = 34 * letter, top = 6 * letter;
    ASSERT_GE(plot.width, left + zoom * plane.width);
    ASSERT_GE(plot.height, top + zoom * plane.height);
    for (long y = 0; y < zoom * plane.height; ++y) {
        for (long x = 0; x < zoom * plane.width; ++x) {
            ASSERT_EQ(plot.at(left + x, top + y), plane.at(x / zoom, y / zoom)) << x << ", " << y;
        }
    }
    for (const long x : {0l, plot.width - 1}) EXPECT_EQ(plot.at(x, 0), 255u);
}

INSTANTIATE_TEST_SUITE_P(Sizes, Axes,
                         ::testing::Values(Size{1, 1}, Size{2, 1}, Size{8, 8}, Size{256, 256},
                                           Size{512, 16}, Size{4, 1024}, Size{2048, 2}),
                         [](const auto& test) {
                             return std::to_string(test.param.first) + "x" +
                                    std::to_string(test.param.second);
                         });

TEST_F(Spectrum, HasATickAtEveryTenthOfACyclePerPixel) {
    const PngFile plot = of(noisePng(512, 512, 8), {"--axes"});
    const long left = 34, below = 6 + 512 + 1;
    for (long tenths = -5; tenths <= 5; ++tenths) {
        const long column = left + 256 + tenths * 512 / 10;
        EXPECT_EQ(plot.at(column, below + 1), 0u) << tenths;
        EXPECT_EQ(plot.at(column + 5, below + 1), 255u) << tenths;
        const long row = 6 + 256 + tenths * 512 / 10;
        EXPECT_EQ(plot.at(left - 3, row), 0u) << tenths;
    }
}

}  // namespace
