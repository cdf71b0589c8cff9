// The spectrum as a picture.
#include <cmath>
#include <numbers>

#include "support/png_file.h"
#include "support/program.h"

namespace {

class Spectrum : public ProgramTest {
  protected:
    PngFile of(const PngFile& picture) {
        writePng(path("in.png"), picture);
        succeed({"spectrum", "in.png", "out.png"});
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

}  // namespace
