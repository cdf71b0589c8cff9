// What filters make of pictures in colour.
#include <algorithm>

#include "support/png_file.h"
#include "support/program.h"

namespace {

// Levels of 40 to 199.
PngFile noiseInColour(long width, long height, int depth = 8) {
    PngFile picture = noisePng(3 * width, height, 8);
    picture.width = width;
    picture.depth = depth;
    picture.colourType = PNG_COLOR_TYPE_RGB;
    for (unsigned& sample : picture.samples) sample = 40 + sample % 160;
    return picture;
}

PngFile channelOf(const PngFile& picture, std::size_t channel) {
    PngFile grey{.width = picture.width, .height = picture.height, .depth = picture.depth};
    for (std::size_t at = channel; at < picture.samples.size(); at += 3) {
        grey.samples.push_back(picture.samples[at]);
    }
    return grey;
}

const Arguments kReject{"bandreject", "--frequency", "0.3", "--sigma", "0.05"};
const Arguments kPass{"bandpass", "--frequency", "0.1", "--sigma", "0.2"};
const Arguments kGabor{"gabor", "--frequency", "0.1", "--sigma", "0.2"};
const Arguments kGaborReject{"gaborreject", "--frequency", "0.3", "--sigma", "0.05"};
const Arguments kIdentity{"convolve", "--kernel", "one.png"};

class Colour : public ProgramTest {
  protected:
    void SetUp() override {
        writePng(path("one.png"), greyPng(1, 1, 8, [](long, long) { return 255; }));
        writePng(path("in.png"), picture_);
    }

    // What a command makes of the picture.
    PngFile of(Arguments command, const Arguments& more = {}) const {
        command.insert(command.end(), more.begin(), more.end());
        command.insert(command.end(), {"in.png", "out.png"});
        succeed(command);
        return readPng(path("out.png"));
    }

    bool staysWith(const Arguments& command, const Arguments& more = {}) const {
        return of(command, more).colourType == PNG_COLOR_TYPE_RGB;
    }

    PngFile picture_ = noiseInColour(40, 30);
};

TEST_F(Colour, StaysWhereAFilterTakesSomethingAway) {
    for (const Arguments& command : {kReject, kGaborReject, kIdentity}) {
        EXPECT_TRUE(staysWith(command)) << command.front();
    }
}

TEST_F(Colour, BecomesGreyWhereAFilterKeepsSomething) {
    for (const Arguments& command : {kPass, kGabor}) {
        EXPECT_FALSE(staysWith(command)) << command.front();
    }
}

TEST_F(Colour, IsWhatTheOptionSays) {
    for (const Arguments& command : {kReject, kGabor}) {
        EXPECT_TRUE(staysWith(command, {"--channels", "each"}));
        EXPECT_FALSE(staysWith(command, {"--channels", "grey"}));
    }
}

TEST_F(Colour, OfASavedFilterIsThatOfItsKind) {
    for (const Arguments& command : {kReject, kGaborReject, kIdentity, kPass, kGabor}) {
        const bool stays = staysWith(command, {"--save", "filter.mva"});
        EXPECT_EQ(staysWith({"apply", "filter.mva"}), stays) << command.front();
    }
}

TEST_F(Colour, IsFilteredChannelByChannel) {
    for (const int depth : {8, 16}) {
        picture_ = noiseInColour(40, 30, depth);
        writePng(path("in.png"), picture_);
        const PngFile result = of(kReject);
        EXPECT_EQ(result.depth, depth);
        for (std::size_t channel = 0; channel < 3; ++channel) {
            writePng(path("in.png"), channelOf(picture_, channel));
            EXPECT_EQ(channelOf(result, channel).samples, of(kReject).samples) << channel;
        }
    }
}

TEST_F(Colour, HasNoAlphaAfterwards) {
    PngFile picture{.width = 2, .height = 1, .colourType = PNG_COLOR_TYPE_RGB_ALPHA};
    picture.samples = {1, 2, 3, 0, 40, 50, 60, 255};
    writePng(path("in.png"), picture);
    EXPECT_EQ(of(kIdentity).samples, (std::vector<unsigned>{1, 2, 3, 40, 50, 60}));
}

TEST_F(Colour, OfAPaletteIsKept) {
    PngFile picture{.width = 2, .height = 1, .colourType = PNG_COLOR_TYPE_PALETTE};
    picture.palette = {{10, 20, 30}, {40, 50, 60}};
    picture.samples = {1, 0};
    writePng(path("in.png"), picture);
    EXPECT_EQ(of(kIdentity).samples, (std::vector<unsigned>{40, 50, 60, 10, 20, 30}));
    picture.palette = {{10, 10, 10}, {40, 40, 40}};
    writePng(path("in.png"), picture);
    EXPECT_EQ(of(kIdentity).colourType, PNG_COLOR_TYPE_GRAY);
}

TEST_F(Colour, OfAnInterlacedPictureIsKept) {
    picture_.interlace = PNG_INTERLACE_ADAM7;
    writePng(path("in.png"), picture_);
    EXPECT_EQ(of(kIdentity).samples, picture_.samples);
}

// The levels of all channels are spread by one factor, so that no colour changes its hue.
TEST_F(Colour, IsSpreadOverOneRange) {
    const auto [low, high] = std::minmax_element(picture_.samples.begin(), picture_.samples.end());
    const PngFile result = of(kIdentity, {"--rescale"});
    for (std::size_t i = 0; i < result.samples.size(); ++i) {
        const unsigned level = (picture_.samples[i] - *low) * 255;
        ASSERT_NEAR(result.samples[i], level / static_cast<double>(*high - *low), 0.51) << i;
    }
}

TEST_F(Colour, IsSpreadToTheLargestQuantileOfAChannel) {
    for (std::size_t i = 0; i < 300; i += 3) picture_.samples[i] = 255;
    writePng(path("in.png"), picture_);
    const unsigned low = *std::min_element(picture_.samples.begin(), picture_.samples.end());
    const PngFile result = of(kIdentity, {"--rescale", "90"});
    unsigned quantile = 0;
    for (std::size_t channel = 0; channel < 3; ++channel) {
        std::vector<unsigned> levels = channelOf(picture_, channel).samples;
        std::sort(levels.begin(), levels.end());
        quantile = std::max(quantile, levels[levels.size() * 9 / 10 - 1]);
    }
    for (std::size_t i = 0; i < result.samples.size(); ++i) {
        const double level = (picture_.samples[i] - low) * 255.0 / (quantile - low);
        ASSERT_NEAR(result.samples[i], std::min(level, 255.0), 0.51) << i;
    }
}

TEST_F(Colour, MayHaveSigns) {
    const PngFile result = of(kIdentity, {"--signed"});
    EXPECT_EQ(result.depth, 16);
    for (std::size_t i = 0; i < result.samples.size(); ++i) {
        ASSERT_EQ(result.samples[i], 32768 + picture_.samples[i]) << i;
    }
    const unsigned high = *std::max_element(picture_.samples.begin(), picture_.samples.end());
    const PngFile spread = of(kIdentity, {"--signed", "--rescale"});
    for (std::size_t i = 0; i < result.samples.size(); ++i) {
        ASSERT_NEAR(spread.samples[i], 32768 + picture_.samples[i] * 32767.0 / high, 1.01) << i;
    }
}

TEST_F(Colour, HasNoPhases) {
    EXPECT_FALSE(staysWith(kReject, {"--angle-image", "angle.png"}));
    EXPECT_EQ(readPng(path("angle.png")).colourType, PNG_COLOR_TYPE_GRAY);
    const Outcome outcome = run({"gabor", "--frequency", "0.3", "--sigma", "0.05", "--channels",
                                 "each", "--quadrant-image", "q.png", "in.png", "new.png"});
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_EQ(outcome.err,
              "mvfreq: --channels each: angles and quadrants are those of the grey picture\n");
}

}  // namespace
