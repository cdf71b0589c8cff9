// The filter commands against the library's own calls.
#include <filt/freqfilt.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "support/png_pels.h"
#include "support/program.h"

namespace {

using support::pelsOf;
using support::samplesOf;

template <class T>
std::vector<unsigned> filtered(const PngFile& picture, const mvFrequencyFilter& filter,
                               const mvFilterImageOptions& options = {}) {
    mvPelBuffer<T> result;
    mfFilterImage(pelsOf<T>(picture), filter, result, options);
    return samplesOf(result);
}

class Filters : public ProgramTest {
  protected:
    void expectSame(const Arguments& options, const mvFrequencyFilter& filter) {
        const PngFile picture8 = noisePng(64, 32, 8);
        const PngFile picture16 = noisePng(64, 32, 16);
        EXPECT_EQ(result(options, picture8), filtered<unsigned char>(picture8, filter));
        EXPECT_EQ(result(options, picture16), filtered<unsigned short>(picture16, filter));
        Arguments rescaled = options;
        rescaled.push_back("--rescale");
        EXPECT_EQ(result(rescaled, picture8),
                  filtered<unsigned char>(picture8, filter, {.rescale = true}));
    }

    std::vector<unsigned> result(Arguments arguments, const PngFile& picture) {
        writePng(path("in.png"), picture);
        arguments.insert(arguments.end(), {"in.png", "out.png"});
        succeed(arguments);
        return readPng(path("out.png")).samples;
    }

    // With room for the mirror beside 64 x 32 pels.
    const mvPair<long> size_{128, 64};
};

TEST_F(Filters, BandPassIsTheLibrarys) {
    expectSame({"bandpass", "--frequency", "0.2", "--sigma", "0.05", "--plateau", "0.03",
                "--dc-radius", "2"},
               mvFrequencyFilterBandPass(0.05, 0.03, 0.2, size_, 2));
}

TEST_F(Filters, BandRejectIsTheLibrarys) {
    expectSame({"bandreject", "--frequency", "0.2", "--sigma", "0.05", "--plateau", "0.03",
                "--dc-radius", "2"},
               mvFrequencyFilterBandReject(0.05, 0.03, 0.2, size_, 2));
}

TEST_F(Filters, GaborIsTheLibrarys) {
    expectSame({"gabor", "--frequency", "0.2", "--angle", "30", "--sigma", "0.05", "--sigma-across",
                "0.08", "--plateau", "0.03", "--plateau-across", "0.01", "--dc-radius", "2"},
               mvFrequencyFilterGabor({0.05, 0.08}, {0.03, 0.01}, mvRadian(std::numbers::pi / 6),
                                      0.2, size_, 2));
}

TEST_F(Filters, GaborRejectIsTheLibrarys) {
    expectSame({"gaborreject", "--frequency", "0.2", "--angle", "30", "--sigma", "0.05"},
               mvFrequencyFilterGaborReject({0.05, 0.05}, {0, 0}, mvRadian(std::numbers::pi / 6),
                                            0.2, size_, 0));
}

TEST_F(Filters, ZeroBorderIsThePaddingOfTheThreeCalls) {
    const PngFile picture = noisePng(50, 20, 8);
    mvFrequencyBuffer buffer;
    mfForwardFFT(pelsOf<unsigned char>(picture), buffer);
    mvFrequencyFilterBandPass(0.05, 0, 0.2, {64, 32}, 0).apply(buffer);
    mvPelBuffer<unsigned char> expected;
    mfInverseFFT(buffer, expected, false, true);
    EXPECT_EQ(
        result({"bandpass", "--border", "zero", "--frequency", "0.2", "--sigma", "0.05"}, picture),
        samplesOf(expected));
}

TEST_F(Filters, MirrorBorderLeavesNoEdge) {
    const PngFile flat = greyPng(50, 20, 8, [](long, long) { return 200; });
    for (const unsigned pel : result({"bandpass", "--frequency", "0.2", "--sigma", "0.02"}, flat)) {
        ASSERT_EQ(pel, 0u);
    }
}

TEST_F(Filters, RadiusOneRemovesTheMean) {
    const PngFile flat = greyPng(64, 32, 8, [](long, long) { return 200; });
    const Arguments lowPass{"bandpass", "--frequency", "0", "--sigma", "0.1"};
    Arguments withoutMean = lowPass;
    withoutMean.insert(withoutMean.end(), {"--dc-radius", "1"});
    EXPECT_EQ(result(lowPass, flat), flat.samples);
    EXPECT_EQ(result(withoutMean, flat), std::vector<unsigned>(flat.samples.size(), 0));
}

// A kernel with one white pel beside its centre moves the picture by that much.
TEST_F(Filters, ConvolutionMovesByTheKernelsPel) {
    writePng(path("kernel.png"), greyPng(3, 3, 8, [](long x, long y) { return x == 2 && y == 1; }));
    const PngFile picture = noisePng(16, 16, 8);
    const std::vector<unsigned> moved = result({"convolve", "--kernel", "kernel.png"}, picture);
    for (long y = 0; y < 16; ++y) {
        for (long x = 1; x < 16; ++x) {
            ASSERT_EQ(moved[static_cast<std::size_t>(y * 16 + x)], picture.at(x - 1, y));
        }
    }
}

TEST_F(Filters, ConvolutionKeepsTheGreyLevel) {
    writePng(path("kernel.png"), noisePng(5, 4, 16));
    const PngFile flat = greyPng(40, 30, 8, [](long, long) { return 123; });
    EXPECT_EQ(result({"convolve", "--kernel", "kernel.png"}, flat), flat.samples);
}

TEST_F(Filters, ConvolutionRefusesUselessKernels) {
    writePng(path("in.png"), noisePng(16, 16, 8));
    writePng(path("black.png"), greyPng(3, 3, 8, [](long, long) { return 0; }));
    writePng(path("wide.png"), noisePng(17, 3, 8));
    EXPECT_EQ(run({"convolve", "--kernel", "black.png", "in.png", "out.png"}).err,
              "mvfreq: black.png: a kernel needs a pel that is not black\n");
    const Outcome wide =
        run({"convolve", "--kernel", "wide.png", "--tile", "16", "in.png", "out.png"});
    EXPECT_EQ(wide.exitCode, 1);
    EXPECT_EQ(wide.err, "mvfreq: wide.png: a kernel of 17 x 3 does not fit a plane of 16 x 16\n");
}

TEST_F(Filters, ConvolutionMakesRoomForItsKernel) {
    writePng(path("kernel.png"), greyPng(40, 3, 8, [](long, long) { return 9; }));
    const PngFile flat = greyPng(8, 8, 8, [](long, long) { return 99; });
    EXPECT_EQ(result({"convolve", "--kernel", "kernel.png"}, flat), flat.samples);
}

// With zeros around the picture, the three calls give the parts.
TEST_F(Filters, PhasesAreThoseOfTheThreeCalls) {
    const PngFile picture = noisePng(100, 60, 8);
    mvFrequencyBuffer buffer;
    mfForwardFFT(pelsOf<unsigned char>(picture), buffer);
    mvFrequencyFilterGabor({0.05, 0.05}, {0, 0}, mvRadian(), 0.2, {128, 64}, 0).apply(buffer);
    mvPelBuffer<unsigned char> magnitude, quadrant;
    mvPelBuffer<double> angle;
    mfInverseFFTAngle(std::as_const(buffer), magnitude, angle, false);
    mfInverseFFTQuadrant(buffer, magnitude, quadrant, false, true);
    const mvPelBuffer<unsigned char> angles =
        mfFrequencyMapImage(angle, mvFrequencyDefs::eMapAngle, 0, 0);
    result({"gabor", "--frequency", "0.2", "--sigma", "0.05", "--border", "zero", "--angle-image",
            "angle.png", "--quadrant-image", "quadrant.png"},
           picture);
    EXPECT_EQ(readPng(path("angle.png")).samples, samplesOf(angles));
    std::vector<unsigned> codes = readPng(path("quadrant.png")).samples;
    for (unsigned& code : codes) code /= 85;
    EXPECT_EQ(codes, samplesOf(quadrant));
}

// Away from the corners of the tiles, where a wave is cut, a phase is the same in every tile.
TEST_F(Filters, PhasesGoOnFromTileToTile) {
    const PngFile wave = greyPng(600, 100, 8, [](long x, long) {
        return std::lround(128 +
                           100 * std::cos(2 * std::numbers::pi * static_cast<double>(x) / 10));
    });
    result({"gabor", "--frequency", "0.1", "--sigma", "0.03", "--dc-radius", "1", "--tile", "128",
            "--angle-image", "angle.png"},
           wave);
    const PngFile angle = readPng(path("angle.png"));
    for (long x = 50; x < 550; ++x) {
        const double expected = static_cast<double>(x % 10) * 255 / 10;
        ASSERT_NEAR(std::remainder(angle.at(x, 50) - expected, 255), 0, 3) << x;
    }
}

// The real part of the library's call, in grey levels around 32768.
TEST_F(Filters, SignsStandAround32768) {
    const PngFile picture = noisePng(64, 32, 8);
    const mvFrequencyFilterBandPass filter(0.05, 0, 0.2, size_, 1);
    mvPelBuffer<double> real;
    mfFilterImage(pelsOf<unsigned char>(picture), filter, real, {.result = mvFilterResult::real});
    const std::vector<unsigned> pels = result(
        {"bandpass", "--frequency", "0.2", "--sigma", "0.05", "--dc-radius", "1", "--signed"},
        picture);
    EXPECT_EQ(readPng(path("out.png")).depth, 16);
    for (long y = 0; y < 32; ++y) {
        for (long x = 0; x < 64; ++x) {
            ASSERT_EQ(static_cast<long>(pels[static_cast<std::size_t>(64 * y + x)]),
                      32768 + std::lround(real.pel(x, y)));
        }
    }
}

TEST_F(Filters, SignedZeroIs32768) {
    const PngFile flat = greyPng(30, 20, 8, [](long, long) { return 200; });
    const Arguments ring{"bandpass", "--frequency", "0.2", "--sigma", "0.02", "--signed"};
    EXPECT_EQ(result(ring, flat), std::vector<unsigned>(flat.samples.size(), 32768));
}

// A picture of 16 bits has twice the range on either side of zero.
TEST_F(Filters, SignsAreClampedToTheRange) {
    const PngFile steps = greyPng(64, 8, 16, [](long x, long) { return x % 32 < 16 ? 65535 : 0; });
    const std::vector<unsigned> pels = result(
        {"bandreject", "--frequency", "0", "--sigma", "0.001", "--border", "zero", "--signed"},
        steps);
    EXPECT_EQ(*std::max_element(pels.begin(), pels.end()), 65535u);
    const std::vector<unsigned> flat =
        result({"bandpass", "--frequency", "0", "--sigma", "1", "--border", "zero", "--signed"},
               greyPng(8, 8, 16, [](long, long) { return 40000; }));
    EXPECT_EQ(flat, std::vector<unsigned>(64, 65535));
}

// A wave along x whose complex half turns once in 8 pels.
class ComplexResult : public ProgramTest {
  protected:
    void SetUp() override {
        writePng(path("in.png"), greyPng(64, 64, 8, [](long x, long) {
                     return std::lround(
                         128 + 100 * std::cos(2 * std::numbers::pi * static_cast<double>(x) / 8));
                 }));
        succeed({"gabor", "--frequency", "0.125", "--sigma", "0.02", "--dc-radius", "1", "--margin",
                 "0", "--angle-image", "angle.png", "--quadrant-image", "quadrant.png", "in.png",
                 "out.png"});
    }
};

TEST_F(ComplexResult, HasAnEvenMagnitude) {
    const PngFile magnitude = readPng(path("out.png"));
    for (const unsigned pel : magnitude.samples) ASSERT_NEAR(pel, 50, 1);
}

TEST_F(ComplexResult, TurnsOnceAPeriodInTheAngleImage) {
    const PngFile angle = readPng(path("angle.png"));
    for (long x = 0; x < 64; ++x) {
        const double expected = static_cast<double>(x % 8) * 255 / 8;
        const double off = std::remainder(angle.at(x, 10) - expected, 255);
        EXPECT_NEAR(off, 0, 2) << x;
    }
}

TEST_F(ComplexResult, WalksThroughTheQuadrants) {
    const PngFile quadrant = readPng(path("quadrant.png"));
    const unsigned expected[] = {0, 85, 255, 170};
    for (long x = 1; x < 64; x += 2) EXPECT_EQ(quadrant.at(x, 10), expected[x % 8 / 2]) << x;
}

}  // namespace
