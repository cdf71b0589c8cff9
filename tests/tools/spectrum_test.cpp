// The spectrum as a picture.
#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>
#include <utility>

#include "support/png_file.h"
#include "support/program.h"

namespace {

constexpr double kTurn = 2 * std::numbers::pi;

// A wave around middle grey; frequencies in cycles per pixel. Noise of a grey level keeps the
// rounding from making waves of its own.
PngFile wave(long width, long height, double across, double down) {
    std::minstd_rand random;
    std::uniform_real_distribution<double> noise(-0.5, 0.5);
    return greyPng(width, height, 8, [&](long x, long y) {
        const double turns = static_cast<double>(x) * across + static_cast<double>(y) * down;
        return std::lround(128 + 100 * std::cos(kTurn * turns) + noise(random));
    });
}

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

// The distance of a pel from the nearer of two places that lie on either side of the middle.
double distance(const PngFile& spectrum, long x, long y, double across, double down) {
    const double u = static_cast<double>(x - spectrum.width / 2);
    const double v = static_cast<double>(y - spectrum.height / 2);
    return std::min(std::hypot(u - across, v - down), std::hypot(u + across, v + down));
}

TEST_F(Spectrum, IsASquareEightBitPicture) {
    const PngFile spectrum = of(noisePng(100, 33, 16));
    EXPECT_EQ(spectrum.width, 128);
    EXPECT_EQ(spectrum.height, 128);
    EXPECT_EQ(spectrum.depth, 8);
    EXPECT_EQ(spectrum.colourType, PNG_COLOR_TYPE_GRAY);
}

// Whatever its size and shape, a picture with one wave has two places, and nothing else is bright:
// no mirrored direction, no cross.
TEST_F(Spectrum, ShowsAWaveAsTwoPlacesAroundTheMiddle) {
    const std::pair<long, long> sizes[] = {{640, 480}, {512, 512}, {300, 500}, {3000, 2100}};
    for (const auto& [width, height] : sizes) {
        const PngFile spectrum = of(wave(width, height, 0.1013, 0.0507));
        const double side = static_cast<double>(spectrum.width);
        const double lines = 6 * side / static_cast<double>(std::min({width, height, 2048l}));
        unsigned within = 0, beyond = 0;
        for (long y = 0; y < spectrum.height; ++y) {
            for (long x = 0; x < spectrum.width; ++x) {
                const bool isNear = distance(spectrum, x, y, 0.1013 * side, 0.0507 * side) <= lines;
                unsigned& most = isNear ? within : beyond;
                most = std::max(most, spectrum.at(x, y));
            }
        }
        EXPECT_EQ(within, 255u) << width;
        EXPECT_LT(beyond, 128u) << width;
        EXPECT_EQ(spectrum.at(std::lround(0.6013 * side), std::lround(0.5507 * side)), 255u)
            << width;
    }
}

// A wave of a thousandth of a cycle more is found at its place: both axes have one scale.
TEST_F(Spectrum, HasOneScaleForBothAxes) {
    const std::pair<double, double> waves[] = {{0.2, 0}, {0, 0.2}};
    for (const auto& [across, down] : waves) {
        const PngFile spectrum = of(wave(640, 480, across, down));
        EXPECT_EQ(spectrum.at(512 + std::lround(1024 * across), 512 + std::lround(1024 * down)),
                  255u);
    }
}

// The mean is thousands of times as strong as the wave.
TEST_F(Spectrum, IsNotOutshoneByTheMean) {
    const PngFile spectrum =
        of(greyPng(64, 64, 16, [](long x, long) { return 60000 + 20 * (x % 4 == 0); }));
    EXPECT_LT(spectrum.at(32, 32), 128u);
    EXPECT_GE(spectrum.at(32 + 16, 32), 250u);
}

TEST_F(Spectrum, OfAnEvenPictureIsBlack) {
    const PngFile even = greyPng(50, 40, 8, [](long, long) { return 200; });
    const PngFile spectrum = of(even);
    EXPECT_EQ(*std::max_element(spectrum.samples.begin(), spectrum.samples.end()), 0u);
}

TEST_F(Spectrum, OfASinglePelIsASinglePel) {
    const PngFile spectrum = of(noisePng(1, 1, 8));
    EXPECT_EQ(spectrum.samples.size(), 1u);
}

// Where the pieces of a large picture overlap, none of it is overlooked.
TEST_F(Spectrum, OfALargePictureHoldsTheWavesOfAllItsParts) {
    const PngFile spectrum = of(greyPng(5000, 64, 8, [](long x, long) {
        const double frequency = x < 700 ? 0.1 : x > 4300 ? 0.4 : 0.25;
        return std::lround(128 + 100 * std::cos(kTurn * frequency * static_cast<double>(x)));
    }));
    ASSERT_EQ(spectrum.width, 2048);
    for (const double frequency : {0.1, 0.25, 0.4}) {
        EXPECT_GT(spectrum.at(1024 + std::lround(2048 * frequency), 1024), 180u) << frequency;
    }
}

TEST_F(Spectrum, ShowsItsMiddleEnlarged) {
    const PngFile spectrum = of(wave(512, 512, 0.05, 0), {"--max-frequency", "0.1"});
    const long bins = 51, zoom = 512 / (2 * bins + 1);
    EXPECT_EQ(spectrum.width, zoom * (2 * bins + 1));
    EXPECT_EQ(spectrum.height, spectrum.width);
    const long middle = spectrum.width / 2;
    EXPECT_EQ(spectrum.at(middle + std::lround(0.05 * 512 * zoom), middle), 255u);
    EXPECT_LT(spectrum.at(middle + std::lround(0.09 * 512 * zoom), middle), 128u);
}

TEST_F(Spectrum, TakesTheBordersThatItOnceHad) {
    const PngFile picture = noisePng(40, 30, 8);
    const PngFile plain = of(picture);
    for (const char* border : {"mirror", "zero"}) {
        EXPECT_EQ(of(picture, {"--border", border}).samples, plain.samples);
    }
}

using Size = std::pair<long, long>;
class Axes : public Spectrum, public ::testing::WithParamInterface<Size> {};

constexpr long kLeft = 46, kTop = 6;

// The plane stands, unchanged but for a whole factor, within a white margin.
TEST_P(Axes, StandAroundThePlane) {
    const auto [width, height] = GetParam();
    const PngFile picture = noisePng(width, height, 8);
    const PngFile plane = of(picture);
    const PngFile plot = of(picture, {"--axes"});
    const long zoom = std::max(256 / std::max(plane.width, plane.height), 1l);
    const long letter = std::max(std::max(plane.width, plane.height) / 512, 1l);
    const long left = kLeft * letter, top = kTop * letter;
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

// The columns, from the plane's left edge, that are black so far below it.
std::vector<long> ticksBelow(const PngFile& plot, long plane, long depth) {
    std::vector<long> columns;
    for (long x = 0; x <= plane; ++x) {
        if (plot.at(kLeft + x, kTop + plane + 1 + depth) == 0) columns.push_back(x);
    }
    return columns;
}

TEST_F(Spectrum, HasTicksAsDenseAsTheyCanBeRead) {
    const PngFile plot = of(noisePng(512, 512, 8), {"--axes"});
    std::vector<long> fine, numbered;
    for (long hundredths = -50; hundredths <= 50; ++hundredths) {
        const long column = 256 + hundredths * 512 / 100;
        fine.push_back(column);
        if (hundredths % 10 == 0) numbered.push_back(column);
    }
    EXPECT_EQ(ticksBelow(plot, 512, 3), numbered);
    EXPECT_EQ(ticksBelow(plot, 512, 1), fine);
}

TEST_F(Spectrum, HasDenserTicksWhenItIsEnlarged) {
    const PngFile plot = of(noisePng(512, 512, 8), {"--axes", "--max-frequency", "0.05"});
    const long bins = 26, zoom = 512 / (2 * bins + 1), side = zoom * (2 * bins + 1);
    std::vector<long> numbered;
    for (long hundredths = -5; hundredths <= 5; ++hundredths) {
        numbered.push_back(side / 2 + hundredths * 512 * zoom / 100);
    }
    EXPECT_EQ(ticksBelow(plot, side, 3), numbered);
}

}  // namespace
