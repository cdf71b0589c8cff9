// How the grey levels of a result are spread.
#include <filt/freqfilt.h>

#include <algorithm>
#include <cmath>

#include "support/png_pels.h"
#include "support/program.h"

namespace {

const Arguments kRing{"bandpass", "--frequency", "0.1", "--sigma", "0.02", "--dc-radius", "1"};

class GreyLevels : public ProgramTest {
  protected:
    // Noise, and one pel that outshines it by far.
    void SetUp() override {
        picture_ = noisePng(100, 80, 8);
        for (unsigned& sample : picture_.samples) sample /= 16;
        for (long y = 30; y < 36; ++y) {
            for (long x = 40; x < 46; ++x)
                picture_.samples[static_cast<std::size_t>(100 * y + x)] = 255;
        }
        writePng(path("in.png"), picture_);
    }

    PngFile result(const Arguments& more) {
        Arguments all = kRing;
        all.insert(all.end(), more.begin(), more.end());
        all.insert(all.end(), {"in.png", "out.png"});
        succeed(all);
        return readPng(path("out.png"));
    }

    mvPelBuffer<double> library(mvFilterResult part) const {
        mvPelBuffer<double> values;
        mfFilterImage(support::pelsOf<unsigned char>(picture_),
                      mvFrequencyFilterBandPass(0.02, 0, 0.1, {256, 256}, 1), values,
                      {.result = part});
        return values;
    }

    static std::vector<double> sorted(const mvPelBuffer<double>& image, bool unsignedValues) {
        std::vector<double> values;
        for (long y = 0; y < image.height(); ++y) {
            for (long x = 0; x < image.width(); ++x) {
                const double value = image.pel(x, y);
                values.push_back(unsignedValues ? std::abs(value) : value);
            }
        }
        std::sort(values.begin(), values.end());
        return values;
    }

    PngFile picture_;
};

// The 80 brightest of 8000 pels are white, the next ones keep their distance.
TEST_F(GreyLevels, AreSpreadUpToAQuantile) {
    const mvPelBuffer<double> magnitudes = library(mvFilterResult::magnitude);
    const std::vector<double> values = sorted(magnitudes, false);
    const double low = values.front(), high = values[7920 - 1];
    const PngFile spread = result({"--rescale", "99"});
    EXPECT_EQ(spread.depth, 8);
    for (long y = 0; y < 80; ++y) {
        for (long x = 0; x < 100; ++x) {
            const double expected =
                std::min((magnitudes.pel(x, y) - low) * 255 / (high - low), 255.0);
            ASSERT_NEAR(spread.at(x, y), expected, 0.5001);
        }
    }
    const auto white = std::count(spread.samples.begin(), spread.samples.end(), 255u);
    EXPECT_GE(white, 80);
    EXPECT_LT(white, 160);
}

TEST_F(GreyLevels, AreAllSpreadByAHundredPercent) {
    const PngFile all = result({"--rescale"});
    EXPECT_EQ(result({"--rescale", "100"}).samples, all.samples);
    EXPECT_EQ(result({"--rescale=100"}).samples, all.samples);
    EXPECT_LT(std::count(all.samples.begin(), all.samples.end(), 255u), 5);
}

TEST_F(GreyLevels, KeepTheirSignWhenTheyAreSpread) {
    const mvPelBuffer<double> real = library(mvFilterResult::real);
    for (const double percent : {100.0, 99.0}) {
        const auto rank = static_cast<std::size_t>(80 * percent);
        const double high = sorted(real, true)[rank - 1];
        const PngFile spread = result({"--signed", "--rescale", std::to_string(percent)});
        for (long y = 0; y < 80; ++y) {
            for (long x = 0; x < 100; ++x) {
                const double swing = std::clamp(real.pel(x, y) * 32767 / high, -32767.0, 32767.0);
                ASSERT_NEAR(spread.at(x, y), 32768 + swing, 0.5001);
            }
        }
    }
}

TEST_F(GreyLevels, OfAnEvenResultAreBlack) {
    picture_ = greyPng(30, 20, 8, [](long, long) { return 90; });
    writePng(path("in.png"), picture_);
    const std::vector<unsigned> black(600, 0);
    EXPECT_EQ(result({"--rescale", "99.9"}).samples, black);
}

TEST_F(GreyLevels, GetAHintWhenFewAreLeft) {
    const Arguments faint{"bandpass", "--frequency", "0.3",    "--sigma",
                          "0.001",    "in.png",      "out.png"};
    const Outcome outcome = run(faint);
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.err,
              "mvfreq: out.png: has fewer than 10 grey levels (--rescale spreads them)\n");
    Arguments spread = faint;
    spread.push_back("--rescale");
    succeed(spread);
    spread.back() = "--signed";
    succeed(spread);
}

TEST_F(GreyLevels, GetOneHintForManyPictures) {
    std::filesystem::copy(path("in.png"), path("second.png"));
    const Outcome outcome = run({"bandpass", "--frequency", "0.3", "--sigma", "0.001", "in.png",
                                 "second.png", "--out-dir", "results", "--jobs", "1"});
    EXPECT_EQ(outcome.out, "2 pictures done\n");
    EXPECT_EQ(outcome.err,
              "mvfreq: results/in.png: has fewer than 10 grey levels (--rescale spreads them)\n");
}

// A picture with few levels of its own is what it is.
TEST_F(GreyLevels, GetNoHintForAnEvenPicture) {
    writePng(path("in.png"), greyPng(30, 20, 8, [](long x, long) { return 90 + x / 15; }));
    succeed({"bandreject", "--frequency", "0.3", "--sigma", "0.01", "in.png", "out.png"});
}

}  // namespace
