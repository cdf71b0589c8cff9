// What stands out in a result: places, strengths, lists, frames.
#include <algorithm>
#include <cmath>
#include <random>

#include "support/png_file.h"
#include "support/program.h"
#include "tools/spots.h"

namespace {

using Values = mvPelBuffer<double>;

Values zeros(long width = 40, long height = 30) {
    return {width, height};
}

void set(Values& values, long x, long y, long width, long height, double value) {
    Values part = values.window(x, y, width, height);
    mfPelSet(part, value);
}

TEST(Spots, HaveAPlaceABoxAndAStrength) {
    Values strengths = zeros();
    set(strengths, 10, 8, 5, 3, 11);
    strengths.pointToRow(9)[12] = 14.5;
    const std::vector<Spot> spots = findSpots(strengths, 10);
    ASSERT_EQ(spots.size(), 1u);
    const Spot& spot = spots.front();
    EXPECT_EQ(spot.x, 12);
    EXPECT_EQ(spot.y, 9);
    EXPECT_EQ(spot.left, 10);
    EXPECT_EQ(spot.top, 8);
    EXPECT_EQ(spot.width, 5);
    EXPECT_EQ(spot.height, 3);
    EXPECT_EQ(spot.pels, 15);
    EXPECT_EQ(spot.strength, 14.5);
}

TEST(Spots, ReachDownToHalfTheThreshold) {
    Values strengths = zeros();
    set(strengths, 10, 8, 9, 9, 5.1);
    set(strengths, 9, 7, 1, 20, 5.0);
    EXPECT_TRUE(findSpots(strengths, 10.2).empty());
    set(strengths, 14, 12, 1, 1, 10.3);
    const std::vector<Spot> spots = findSpots(strengths, 10);
    ASSERT_EQ(spots.size(), 1u);
    EXPECT_EQ(spots.front().pels, 81);
}

TEST(Spots, AreNotPartedByThreePels) {
    for (const long gap : {3L, 4L}) {
        Values strengths = zeros();
        set(strengths, 5, 5, 2, 2, 20);
        set(strengths, 7 + gap, 5, 2, 2, 12);
        EXPECT_EQ(findSpots(strengths, 10).size(), gap == 3 ? 1u : 2u);
    }
}

TEST(Spots, ComeInTheOrderOfTheirStrengths) {
    Values strengths = zeros();
    strengths.pointToRow(3)[30] = 12;
    strengths.pointToRow(3)[3] = 12;
    strengths.pointToRow(1)[20] = 12;
    strengths.pointToRow(29)[39] = 15;
    std::vector<mvPair<long>> places;
    for (const Spot& spot : findSpots(strengths, 10)) places.emplace_back(spot.x, spot.y);
    EXPECT_EQ(places, (std::vector<mvPair<long>>{{39, 29}, {20, 1}, {3, 3}, {30, 3}}));
}

// Noise of a fixed seed on a light ground, with two spots.
PngFile surface(int depth = 8) {
    PngFile picture = noisePng(200, 150, 8);
    picture.depth = depth;
    for (long y = 0; y < 150; ++y) {
        for (long x = 0; x < 200; ++x) {
            unsigned& pel = picture.samples[static_cast<std::size_t>(y * 200 + x)];
            const bool isDark = std::hypot(x - 60, y - 40) < 5;
            const bool isBright = std::hypot(x - 150, y - 100) < 7;
            pel = (isBright ? 200 : isDark ? 90 : 120) + pel % 8;
        }
    }
    return picture;
}

const Arguments kRing{"bandpass", "--frequency", "0.05", "--sigma", "0.02", "--dc-radius", "1"};

class Found : public ProgramTest {
  protected:
    void SetUp() override {
        writePng(path("in.png"), surface());
        writePng(path("even.png"), greyPng(200, 150, 8, [](long, long) { return 77; }));
    }

    Arguments with(const Arguments& more) const {
        Arguments all = kRing;
        all.insert(all.end(), more.begin(), more.end());
        return all;
    }

    std::string printed(const Arguments& more) const { return succeed(with(more)).out; }

    std::string complaint(const Arguments& more) const {
        const Outcome outcome = run(with(more));
        EXPECT_EQ(outcome.exitCode, 2) << outcome.err;
        return outcome.err;
    }
};

TEST_F(Found, IsListedTheStrongestFirst) {
    const std::string list = printed({"--list", "in.png", "out.png"});
    EXPECT_EQ(list.rfind("in.png: 2 places stand out\n"
                         "      x      y  width height    pels strength\n",
                         0),
              0u)
        << list;
    EXPECT_NE(list.find("\n    150    100"), std::string::npos) << list;
    EXPECT_LT(list.find("\n    150    100"), list.find("\n     60     40")) << list;
}

// A wave of which the mirror images at the edges have other directions, and two spots.
TEST_F(Found, IsNotWhatEdgesLeaveOfAWave) {
    std::mt19937 random{6};
    writePng(path("wave.png"), greyPng(300, 240, 8, [&](long x, long y) {
                 const auto u = static_cast<double>(x), v = static_cast<double>(y);
                 const double wave = 60 * std::cos(0.9 * u + 0.4 * v);
                 const double spots =
                     25 * std::exp(-(std::pow(u - 200, 2) + std::pow(v - 150, 2)) / 50) +
                     25 * std::exp(-(std::pow(u - 12, 2) + std::pow(v - 100, 2)) / 50);
                 return std::lround(120 + wave + spots + static_cast<double>(random() % 8));
             }));
    const std::string list = printed({"--list", "wave.png", "out.png"});
    EXPECT_EQ(list.rfind("wave.png: 2 places stand out\n", 0), 0u) << list;
}

TEST_F(Found, IsAsManyAsTheThresholdLets) {
    EXPECT_EQ(printed({"--list", "--threshold", "1000", "in.png", "out.png"}),
              "in.png: nothing stands out\n");
    EXPECT_EQ(printed({"--list", "even.png", "out.png"}), "even.png: nothing stands out\n");
}

TEST_F(Found, IsALineOfJsonForEachPicture) {
    const std::string json = printed({"--json", "in.png", "out.png"});
    EXPECT_EQ(json.rfind("{\"picture\":\"in.png\",\"threshold\":10,\"found\":[{\"x\":150,\"y\":100,"
                         "\"left\":",
                         0),
              0u)
        << json;
    EXPECT_EQ(std::count(json.begin(), json.end(), '\n'), 1);
    std::filesystem::rename(path("even.png"), path("a\"b\\c\n.png"));
    EXPECT_EQ(printed({"--json", "a\"b\\c\n.png", "out.png"}),
              "{\"picture\":\"a\\\"b\\\\c\\u000a.png\",\"threshold\":10,\"found\":[]}\n");
}

TEST_F(Found, ChangesNoResult) {
    printed({"in.png", "plain.png"});
    printed({"--list", "--overlay", "frames.png", "in.png", "out.png"});
    EXPECT_EQ(contents("out.png"), contents("plain.png"));
}

TEST_F(Found, IsListedInTheOrderOfABatch) {
    const Outcome outcome =
        run(with({"--json", "--out-dir", "results", "even.png", "missing.png", "in.png"}));
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'), 2);
    EXPECT_EQ(outcome.out.rfind("{\"picture\":\"even.png\"", 0), 0u) << outcome.out;
    EXPECT_NE(outcome.out.find("\n{\"picture\":\"in.png\""), std::string::npos);
    EXPECT_NE(outcome.err.find("2 of 3 pictures done, 1 failed"), std::string::npos) << outcome.err;
}

TEST_F(Found, IsFramedOnTheGreyPicture) {
    printed({"--overlay", "frames.png", "in.png", "out.png"});
    const PngFile before = surface(), after = readPng(path("frames.png"));
    EXPECT_EQ(after.colourType, PNG_COLOR_TYPE_GRAY);
    EXPECT_EQ(after.at(150, 100), before.at(150, 100));
    EXPECT_EQ(after.at(5, 140), before.at(5, 140));
    // From the middle of a spot to the left: black, white, black.
    std::string frame;
    for (long x = 60; x > 30; --x) {
        if (after.at(x, 40) != before.at(x, 40)) frame += after.at(x, 40) == 255 ? 'w' : 'b';
    }
    EXPECT_EQ(frame, "bwb");
}

TEST_F(Found, IsFramedInYellowOnAPictureInColour) {
    const PngFile grey = surface();
    PngFile colour{.width = 200, .height = 150, .depth = 8, .colourType = PNG_COLOR_TYPE_RGB};
    for (const unsigned sample : grey.samples) {
        colour.samples.insert(colour.samples.end(), {sample, sample / 2, sample / 3});
    }
    writePng(path("in.png"), colour);
    printed({"in.png", "plain.png"});
    printed({"--overlay", "frames.png", "in.png", "out.png"});
    EXPECT_EQ(contents("out.png"), contents("plain.png"));
    const PngFile after = readPng(path("frames.png"));
    ASSERT_EQ(after.colourType, PNG_COLOR_TYPE_RGB);
    const auto sampleAt = [&](long x, std::size_t channel) {
        return after.samples[static_cast<std::size_t>(3 * (40 * 200 + x)) + channel];
    };
    long yellow = 60;
    while (yellow > 0 && sampleAt(yellow, 0) != 255) --yellow;
    EXPECT_EQ(sampleAt(yellow, 1), 255u);
    EXPECT_EQ(sampleAt(yellow, 2), 0u);
    EXPECT_EQ(sampleAt(60, 0), colour.samples[3 * (40 * 200 + 60)]);
    printed({"--channels", "each", "--list", "in.png", "out.png"});
}

TEST_F(Found, IsNoPictureOnStandardOutput) {
    EXPECT_EQ(complaint({"--list", "in.png", "-"}), "mvfreq: -: standard output takes the list\n");
    EXPECT_EQ(complaint({"--json", "--overlay", "-", "in.png", "out.png"}),
              "mvfreq: -: standard output takes the list\n");
    EXPECT_EQ(complaint({"--threshold", "5", "in.png", "out.png"}),
              "mvfreq: --threshold: goes with --list, --json or --overlay\n");
    EXPECT_EQ(complaint({"--list", "--threshold", "0", "in.png", "out.png"}),
              "mvfreq: --threshold: must be above 0 (mvfreq --help tells more)\n");
}

}  // namespace
