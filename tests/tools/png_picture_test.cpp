// Which PNG files the program reads, and what it writes.
#include <zlib.h>

#include <cmath>
#include <fstream>
#include <tuple>

#include "support/png_file.h"
#include "support/program.h"

namespace {

// A kernel of one pel changes nothing.
class PictureTest : public ProgramTest {
  protected:
    void SetUp() override {
        writePng(path("one.png"), greyPng(1, 1, 8, [](long, long) { return 255; }));
    }

    PngFile throughIdentity(const PngFile& picture, const char* border = "mirror") {
        writePng(path("in.png"), picture);
        succeed({"convolve", "--kernel", "one.png", "--channels", "grey", "--border", border,
                 "in.png", "out.png"});
        return readPng(path("out.png"));
    }
};

using Shape = std::tuple<long, long, const char*>;
class RoundTrip : public PictureTest, public ::testing::WithParamInterface<Shape> {};

TEST_P(RoundTrip, KeepsEveryPelOf8Bits) {
    const auto [width, height, border] = GetParam();
    const PngFile picture = noisePng(width, height, 8);
    const PngFile result = throughIdentity(picture, border);
    EXPECT_EQ(result.width, width);
    EXPECT_EQ(result.height, height);
    EXPECT_EQ(result.depth, 8);
    EXPECT_EQ(result.colourType, PNG_COLOR_TYPE_GRAY);
    EXPECT_EQ(result.samples, picture.samples);
}

TEST_P(RoundTrip, KeepsPelsOf16BitsWithinOne) {
    const auto [width, height, border] = GetParam();
    const PngFile picture = noisePng(width, height, 16);
    const PngFile result = throughIdentity(picture, border);
    EXPECT_EQ(result.depth, 16);
    ASSERT_EQ(result.samples.size(), picture.samples.size());
    for (std::size_t i = 0; i < picture.samples.size(); ++i) {
        ASSERT_NEAR(result.samples[i], picture.samples[i], 1) << "sample " << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Shapes, RoundTrip,
                         ::testing::Values(Shape{1, 1, "mirror"}, Shape{64, 32, "mirror"},
                                           Shape{33, 100, "mirror"}, Shape{33, 100, "zero"},
                                           Shape{127, 3, "mirror"}, Shape{65, 1, "mirror"}));

struct Colour {
    const char* name;
    std::vector<unsigned> rgb;
    unsigned grey;
};

// 0.299 red + 0.587 green + 0.114 blue, rounded.
const Colour kColours8[] = {{"black", {0, 0, 0}, 0},         {"red", {255, 0, 0}, 76},
                            {"green", {0, 255, 0}, 150},     {"blue", {0, 0, 255}, 29},
                            {"white", {255, 255, 255}, 255}, {"grey", {77, 77, 77}, 77},
                            {"skin", {224, 172, 105}, 180}};
const Colour kColours16[] = {{"red", {65535, 0, 0}, 19595},
                             {"green", {0, 65535, 0}, 38469},
                             {"blue", {0, 0, 65535}, 7471},
                             {"white", {65535, 65535, 65535}, 65535},
                             {"dark", {1000, 2000, 3000}, 1815}};

class ColourTest : public PictureTest {
  protected:
    void expectGrey(const Colour& colour, int depth, bool alpha) {
        PngFile picture{.width = 1, .height = 1, .depth = depth, .samples = colour.rgb};
        picture.colourType = alpha ? PNG_COLOR_TYPE_RGB_ALPHA : PNG_COLOR_TYPE_RGB;
        if (alpha) picture.samples.push_back(17);
        const PngFile result = throughIdentity(picture);
        EXPECT_EQ(result.depth, depth);
        EXPECT_EQ(result.samples, std::vector<unsigned>{colour.grey}) << colour.name;
    }
};

TEST_F(ColourTest, BecomesGreyByLuma) {
    for (const Colour& colour : kColours8) expectGrey(colour, 8, false);
    for (const Colour& colour : kColours16) expectGrey(colour, 16, false);
}

TEST_F(ColourTest, IgnoresAlpha) {
    for (const Colour& colour : kColours8) expectGrey(colour, 8, true);
    for (const Colour& colour : kColours16) expectGrey(colour, 16, true);
}

TEST_F(PictureTest, ReadsPalettes) {
    PngFile picture{.width = 3, .height = 1, .depth = 8, .colourType = PNG_COLOR_TYPE_PALETTE};
    picture.palette = {{255, 0, 0}, {0, 255, 0}, {0, 0, 255}};
    picture.samples = {2, 0, 1};
    EXPECT_EQ(throughIdentity(picture).samples, (std::vector<unsigned>{29, 76, 150}));
}

TEST_F(PictureTest, ReadsGreyWithAlpha) {
    PngFile picture{.width = 2, .height = 1, .depth = 8, .colourType = PNG_COLOR_TYPE_GRAY_ALPHA};
    picture.samples = {10, 0, 200, 255};
    EXPECT_EQ(throughIdentity(picture).samples, (std::vector<unsigned>{10, 200}));
}

TEST_F(PictureTest, SpreadsFewerBitsOver8) {
    PngFile picture{.width = 4, .height = 1, .depth = 2, .samples = {0, 1, 2, 3}};
    const PngFile result = throughIdentity(picture);
    EXPECT_EQ(result.depth, 8);
    EXPECT_EQ(result.samples, (std::vector<unsigned>{0, 85, 170, 255}));
}

TEST_F(PictureTest, ReadsInterlacedFiles) {
    PngFile picture = noisePng(37, 21, 8);
    picture.interlace = PNG_INTERLACE_ADAM7;
    EXPECT_EQ(throughIdentity(picture).samples, picture.samples);
}

TEST_F(PictureTest, ReadsSidesBeyondThoseOfPlanes) {
    for (const auto& [width, height] : {std::pair(2049l, 1l), {1l, 5000l}, {3000l, 2100l}}) {
        const PngFile picture = noisePng(width, height, 8);
        EXPECT_EQ(throughIdentity(picture).samples, picture.samples) << width;
    }
}

TEST_F(PictureTest, RefusesSizesBeforeItDecodesThem) {
    writePng(path("in.png"), noisePng(8, 8, 8));
    const struct {
        std::string sides;
        const char* text;
    } cases[] = {
        {std::string("\x7f\xff\xff\xff\x7f\xff\xff\xff", 8), "bomb.png: Invalid IHDR data"},
        // 524288 x 524288 pels, with a checksum that fits.
        {std::string("\x00\x08\x00\x00\x00\x08\x00\x00", 8), "bomb.png: "},
    };
    for (const auto& [sides, text] : cases) {
        std::string bytes = contents("in.png").substr(0, 33);
        bytes.replace(16, 8, sides);
        const auto sum = crc32(0, reinterpret_cast<const Bytef*>(&bytes[12]), 17);
        for (std::size_t i = 0; i < 4; ++i) bytes[29 + i] = static_cast<char>(sum >> (24 - 8 * i));
        write("bomb.png", bytes + contents("in.png").substr(33));
        const Outcome outcome = run({"convolve", "--kernel", "one.png", "bomb.png", "out.png"});
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_NE(outcome.err.find(text), std::string::npos) << outcome.err;
        EXPECT_EQ(files(), (std::vector<std::string>{"bomb.png", "in.png", "one.png"}));
    }
}

TEST_F(PictureTest, ReportsBrokenFiles) {
    writePng(path("whole.png"), noisePng(64, 64, 8));
    const std::string whole = contents("whole.png");
    write("text.png", "This is no picture.");
    write("empty.png", "");
    for (const std::size_t length : {8ul, 40ul, 100ul, whole.size() / 2, whole.size() - 1}) {
        write("short.png", whole.substr(0, length));
        const Outcome outcome = run({"spectrum", "short.png", "out.png"});
        EXPECT_EQ(outcome.exitCode, 1) << length;
        EXPECT_EQ(outcome.err, "mvfreq: short.png: The file ends early\n") << length;
    }
    EXPECT_EQ(run({"spectrum", "text.png", "out.png"}).err,
              "mvfreq: text.png: Not a PNG, JPEG, TIFF, BMP or PNM file\n");
    EXPECT_EQ(run({"spectrum", "empty.png", "out.png"}).exitCode, 1);
    EXPECT_EQ(run({"spectrum", "missing.png", "out.png"}).err,
              "mvfreq: missing.png: No such file or directory\n");
    EXPECT_EQ(run({"spectrum", ".", "out.png"}).err, "mvfreq: .: Is a directory\n");
    EXPECT_FALSE(std::ifstream(path("out.png")));
}

}  // namespace
