// The filter commands against the library's own calls.
#include <filt/freqfilt.h>

#include <cmath>
#include <numbers>

#include "support/png_file.h"
#include "support/program.h"

namespace {

template <class T>
mvPelBuffer<T> pels(const PngFile& picture) {
    mvPelBuffer<T> buffer(picture.width, picture.height);
    for (long y = 0; y < picture.height; ++y) {
        for (long x = 0; x < picture.width; ++x) {
            buffer.pointToRow(y)[x] = static_cast<T>(picture.at(x, y));
        }
    }
    return buffer;
}

template <class T>
std::vector<unsigned> samples(const mvPelBuffer<T>& buffer) {
    std::vector<unsigned> all;
    for (long y = 0; y < buffer.height(); ++y) {
        for (long x = 0; x < buffer.width(); ++x) all.push_back(buffer.pel(x, y));
    }
    return all;
}

template <class T>
std::vector<unsigned> filtered(const PngFile& picture, const mvFrequencyFilter& filter,
                               bool rescale) {
    mvFrequencyBuffer buffer;
    mfForwardFFT(pels<T>(picture), buffer);
    filter.apply(buffer);
    mvPelBuffer<T> result;
    mfInverseFFT(buffer, result, rescale, true);
    return samples(result);
}

// Without padding a run of the program is the library's plain sequence of calls.
class Filters : public ProgramTest {
  protected:
    void expectSame(const Arguments& options, const mvFrequencyFilter& filter) {
        const PngFile picture8 = noisePng(64, 32, 8);
        const PngFile picture16 = noisePng(64, 32, 16);
        EXPECT_EQ(result(options, picture8), filtered<unsigned char>(picture8, filter, false));
        EXPECT_EQ(result(options, picture16), filtered<unsigned short>(picture16, filter, false));
        Arguments rescaled = options;
        rescaled.push_back("--rescale");
        EXPECT_EQ(result(rescaled, picture8), filtered<unsigned char>(picture8, filter, true));
    }

    std::vector<unsigned> result(Arguments arguments, const PngFile& picture) {
        writePng(path("in.png"), picture);
        arguments.insert(arguments.end(), {"in.png", "out.png"});
        succeed(arguments);
        return readPng(path("out.png")).samples;
    }

    const mvPair<long> size_{64, 32};
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

TEST_F(Filters, ZeroBorderIsTheLibrarysPadding) {
    const PngFile picture = noisePng(50, 20, 8);
    const mvFrequencyFilterBandPass filter(0.05, 0, 0.2, size_, 0);
    EXPECT_EQ(
        result({"bandpass", "--border", "zero", "--frequency", "0.2", "--sigma", "0.05"}, picture),
        filtered<unsigned char>(picture, filter, false));
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
    const Outcome wide = run({"convolve", "--kernel", "wide.png", "in.png", "out.png"});
    EXPECT_EQ(wide.exitCode, 1);
    EXPECT_EQ(wide.err,
              "mvfreq: wide.png: a kernel of 17 x 3 does not fit the picture's plane of 16 x 16\n");
}

// A wave along x whose complex half turns once in 8 pels.
class ComplexResult : public ProgramTest {
  protected:
    void SetUp() override {
        writePng(path("in.png"), greyPng(64, 64, 8, [](long x, long) {
                     return std::lround(
                         128 + 100 * std::cos(2 * std::numbers::pi * static_cast<double>(x) / 8));
                 }));
        succeed({"gabor", "--frequency", "0.125", "--sigma", "0.02", "--dc-radius", "1",
                 "--angle-image", "angle.png", "--quadrant-image", "quadrant.png", "in.png",
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
