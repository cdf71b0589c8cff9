// Pictures of any size: which plane they are filtered in, and that it is the library's call.
#include <filt/freqfilt.h>

#include <fcntl.h>
#include <sys/stat.h>

#include "support/png_pels.h"
#include "support/program.h"

namespace {

using Size = mvPair<long>;

struct Choice {
    const char* name;
    Size picture;
    Arguments options;
    Size plane;
    mvFilterImageOptions image{};
};

// A ring that reaches 54 pels.
constexpr double kSigma = 0.012, kFrequency = 0.03;
const Arguments kRing{"bandpass", "--frequency", "0.03", "--sigma", "0.012", "--dc-radius", "1"};

class PlaneChoice : public ProgramTest, public ::testing::WithParamInterface<Choice> {
  protected:
    static std::vector<unsigned> libraryResult(const PngFile& picture) {
        const mvFrequencyFilterBandPass filter(kSigma, 0.0, kFrequency, GetParam().plane, 1);
        mvPelBuffer<unsigned char> result;
        mfFilterImage(support::pelsOf<unsigned char>(picture), filter, result, GetParam().image);
        return support::samplesOf(result);
    }

    Arguments arguments() const {
        Arguments all = kRing;
        all.insert(all.end(), GetParam().options.begin(), GetParam().options.end());
        all.insert(all.end(), {"--save", "filter.mva", "in.png", "out.png"});
        return all;
    }
};

TEST_P(PlaneChoice, IsThatOfTheLibrarysCall) {
    const Size size = GetParam().picture;
    const PngFile picture = noisePng(size.x, size.y, 8);
    writePng(path("in.png"), picture);
    ASSERT_EQ(run(arguments()).exitCode, 0);
    const std::string report = succeed({"info", "filter.mva"}).out;
    EXPECT_NE(report.find("size: " + std::to_string(GetParam().plane.x) + " x " +
                          std::to_string(GetParam().plane.y) + "\n"),
              std::string::npos)
        << report;
    EXPECT_EQ(readPng(path("out.png")).samples, libraryResult(picture));
}

constexpr mvFilterImageOptions kZeros{.border = mvBorder::zero};
const Arguments kZero{"--border", "zero"};

const Choice kSizes[] = {{"OfOnePel", {1, 1}, {}, {1, 1}},
                         {"OfAColumn", {1, 300}, {}, {1, 512}},
                         {"WithRoom", {400, 404}, {}, {512, 512}},
                         {"WithoutRoom", {404, 405}, {}, {512, 1024}},
                         {"OfAPowerOfTwo", {512, 512}, {}, {1024, 1024}},
                         {"OfAPowerOfTwoWithZeros", {512, 256}, kZero, {512, 256}, kZeros},
                         {"OfTwoTilesFittingALargePlane", {1500, 900}, {}, {1024, 1024}},
                         {"OfThreeTilesFittingALargePlane", {1900, 16}, {}, {2048, 32}},
                         {"OfTheLargestPlane", {2048, 2048}, {}, {1024, 1024}},
                         {"OfTheLargestPlaneWithZeros", {2048, 2048}, kZero, {2048, 2048}, kZeros},
                         {"BeyondTheLargestPlaneWithZeros", {2049, 30}, kZero, {1024, 32}, kZeros},
                         {"OfAPhotograph", {4000, 3000}, {}, {1024, 1024}},
                         {"OfALineCamera", {5000, 40}, {}, {1024, 128}}};

const Choice kOptions[] = {
    {"Tiles", {600, 500}, {"--tile", "256"}, {256, 256}},
    {"TilesOfOneAxis", {600, 100}, {"--tile", "256"}, {256, 256}},
    {"TilesLargerThanThePicture", {100, 100}, {"--tile", "2048"}, {256, 256}},
    {"SmallTiles", {90, 70}, {"--tile", "16"}, {16, 16}},
    {"Margin", {500, 400}, {"--margin", "7"}, {1024, 512}, {.margin = {7, 7}}},
    {"MarginOfZero", {512, 1024}, {"--margin", "0"}, {512, 1024}, {.margin = {0, 0}}},
    {"WideMargin", {2500, 100}, {"--margin", "300"}, {2048, 1024}, {.margin = {300, 300}}},
    {"TilesAndMargin",
     {600, 500},
     {"--tile", "256", "--margin", "32"},
     {256, 256},
     {.margin = {32, 32}}},
    {"TilesAndWidestMargin",
     {300, 5},
     {"--tile", "64", "--margin", "31"},
     {64, 64},
     {.margin = {31, 31}}},
    {"TilesAndMarginWithZeros",
     {600, 200},
     {"--tile", "256", "--margin", "40", "--border", "zero"},
     {256, 256},
     {.border = mvBorder::zero, .margin = {40, 40}}},
    {"Rescaling", {1500, 1200}, {"--rescale", "--tile", "512"}, {512, 512}, {.rescale = true}},
    {"OneJob", {900, 900}, {"--tile", "256", "--jobs", "1"}, {256, 256}},
    {"ManyJobs", {900, 900}, {"--tile", "256", "--jobs", "9"}, {256, 256}}};

const auto nameOf = [](const auto& test) { return std::string(test.param.name); };
INSTANTIATE_TEST_SUITE_P(Pictures, PlaneChoice, ::testing::ValuesIn(kSizes), nameOf);
INSTANTIATE_TEST_SUITE_P(Options, PlaneChoice, ::testing::ValuesIn(kOptions), nameOf);

using Pictures = ProgramTest;

TEST_F(Pictures, OfManyTilesAreTheSameOnAnyNumberOfThreads) {
    writePng(path("in.png"), noisePng(1500, 1100, 16));
    Arguments run = kRing;
    run.insert(run.end(), {"--tile", "256", "in.png", "out.png", "--jobs", "1"});
    succeed(run);
    const std::string alone = contents("out.png");
    for (const char* jobs : {"2", "3", "100"}) {
        run.back() = jobs;
        succeed(run);
        EXPECT_EQ(contents("out.png"), alone) << jobs;
    }
}

// Far more threads than pictures: each has several, and the result is the same.
TEST_F(Pictures, ShareTheThreadsOfABatch) {
    for (const char* name : {"a.png", "b.png"}) writePng(path(name), noisePng(700, 600, 8));
    Arguments alone = kRing, both = kRing;
    alone.insert(alone.end(), {"--tile", "256", "a.png", "alone.png"});
    both.insert(both.end(),
                {"--tile", "256", "a.png", "b.png", "--out-dir", "both", "--jobs", "7"});
    succeed(alone);
    succeed(both);
    EXPECT_EQ(contents("both/a.png"), contents("alone.png"));
    EXPECT_EQ(contents("both/b.png"), contents("alone.png"));
}

// Sigma 0.002 reaches 319 pels, more than a quarter of a usual tile.
TEST_F(Pictures, HaveLargerTilesForFiltersThatReachFar) {
    writePng(path("in.png"), noisePng(2100, 16, 8));
    succeed({"bandpass", "--frequency", "0.03", "--sigma", "0.002", "--save", "filter.mva",
             "in.png", "out.png"});
    const std::string report = succeed({"info", "filter.mva"}).out;
    EXPECT_NE(report.find("size: 2048 x 32\n"), std::string::npos) << report;
}

// A ramp has two edges where it ends, which a plane without room for the mirror puts side by side.
TEST_F(Pictures, OfAPowerOfTwoShowNoEdges) {
    for (const long side : {256, 512, 1024}) {
        writePng(path("in.png"),
                 greyPng(side, side, 8, [=](long x, long) { return 255 * x / side; }));
        ASSERT_EQ(run({"bandpass", "--frequency", "0.1", "--sigma", "0.03", "in.png", "out.png"})
                      .exitCode,
                  0);
        const PngFile result = readPng(path("out.png"));
        EXPECT_LE(*std::max_element(result.samples.begin(), result.samples.end()), 2u) << side;
    }
}

TEST_F(Pictures, OfTilesShowNoSeams) {
    const PngFile picture = noisePng(1000, 700, 8);
    writePng(path("in.png"), picture);
    Arguments whole = kRing, tiles = kRing;
    whole.insert(whole.end(), {"in.png", "whole.png"});
    tiles.insert(tiles.end(), {"--tile", "256", "in.png", "tiles.png"});
    succeed(whole);
    succeed(tiles);
    const PngFile expected = readPng(path("whole.png")), result = readPng(path("tiles.png"));
    for (std::size_t i = 0; i < expected.samples.size(); ++i) {
        ASSERT_NEAR(result.samples[i], expected.samples[i], 1) << i;
    }
}

// An archive has its plane: every picture is cut to it.
TEST_F(Pictures, OfAnySizeTakeAFilterFromAnArchive) {
    writePng(path("in.png"), noisePng(200, 200, 8));
    Arguments save = kRing;
    save.insert(save.end(), {"--save", "filter.mva", "in.png", "out.png"});
    succeed(save);
    const mvFrequencyFilterBandPass filter(kSigma, 0.0, kFrequency, {512, 512}, 1);
    for (const Size size : {Size(7, 9), Size(512, 300), Size(1300, 800)}) {
        const PngFile picture = noisePng(size.x, size.y, 16);
        writePng(path("in.png"), picture);
        succeed({"apply", "filter.mva", "in.png", "out.png"});
        mvPelBuffer<unsigned short> result;
        mfFilterImage(support::pelsOf<unsigned short>(picture), filter, result);
        EXPECT_EQ(readPng(path("out.png")).samples, support::samplesOf(result)) << size.x;
    }
}

TEST_F(Pictures, AreRefusedWithAMarginThatLeavesNothingOfATile) {
    writePng(path("in.png"), noisePng(300, 20, 8));
    Arguments save = kRing;
    save.insert(save.end(), {"--save", "filter.mva", "--tile", "64", "in.png", "out.png"});
    succeed(save);
    const Outcome built = run({"bandpass", "--frequency", "0.1", "--sigma", "0.1", "--tile", "64",
                               "--margin", "32", "in.png", "new.png"});
    EXPECT_EQ(built.exitCode, 2);
    EXPECT_EQ(built.err, "mvfreq: --margin: at most 31 leaves anything of tiles of 64\n");
    const Outcome applied = run({"apply", "filter.mva", "--margin", "32", "in.png", "new.png"});
    EXPECT_EQ(applied.exitCode, 2);
    EXPECT_EQ(applied.err, "mvfreq: --margin: at most 31 leaves anything of tiles of 64\n");
    EXPECT_EQ(files(), (std::vector<std::string>{"filter.mva", "in.png", "out.png"}));
}

}  // namespace
