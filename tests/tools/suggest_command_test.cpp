// Filters proposed by the program, and the lines that it prints.
#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>
#include <regex>
#include <sstream>

#include "support/png_file.h"
#include "support/program.h"

namespace {

constexpr double kTurn = 2 * std::numbers::pi;

// A weave of 7 pels with noise; a spot of so much contrast in the middle.
PngFile cloth(long side, double contrast = 0, double radius = 1) {
    std::mt19937 random{5};
    const double middle = static_cast<double>(side) / 2;
    return greyPng(side, side, 8, [&](long x, long y) {
        const auto u = static_cast<double>(x), v = static_cast<double>(y);
        const double weave = 20 * std::cos(kTurn * u / 7) * std::cos(kTurn * v / 7);
        const double noise = static_cast<double>(random() >> 8 & 0xff) / 16 - 8;
        const double far = std::hypot(u - middle, v - middle) / radius;
        return std::lround(128 + weave + noise + contrast * std::exp(-far * far / 2));
    });
}

// One object of the list that --json prints.
struct Proposal {
    double radius, levels;
    Arguments arguments;
};

std::vector<Proposal> proposalsIn(const std::string& json) {
    const std::regex object(
        R"re(\{"radius": ([\d.]+), "levels": ([\d.]+), "arguments": \[(.*)\]\})re");
    const std::regex word(R"re("([^"]*)")re");
    std::vector<Proposal> found;
    for (std::sregex_iterator at(json.begin(), json.end(), object), end; at != end; ++at) {
        Proposal each{std::stod((*at)[1]), std::stod((*at)[2]), {}};
        const std::string words = (*at)[3];
        for (std::sregex_iterator one(words.begin(), words.end(), word); one != end; ++one) {
            each.arguments.push_back((*one)[1]);
        }
        found.push_back(each);
    }
    return found;
}

unsigned quantile(const PngFile& picture) {
    std::vector<unsigned> samples = picture.samples;
    std::sort(samples.begin(), samples.end());
    return samples[static_cast<std::size_t>(std::ceil(0.999 * static_cast<double>(samples.size())) -
                                            1)];
}

class Suggest : public ProgramTest {
  protected:
    // What the program makes of a picture.
    PngFile filtered(const Arguments& filter, const std::string& input) {
        Arguments line = filter;
        line.insert(line.end(), {input, "out.png", "--force"});
        run(line);  // with a hint, when hardly a grey level is left
        return readPng(path("out.png"));
    }
};

// The middle of a planted spot of that contrast is three times as bright as what is brightest in a
// thousandth of the good picture.
TEST_F(Suggest, PrintsFiltersThatDoWhatTheGreyLevelsSay) {
    writePng(path("good.png"), cloth(192));
    const std::vector<Proposal> found =
        proposalsIn(succeed({"suggest", "--json", "good.png", "--radius", "4"}).out);
    ASSERT_EQ(found.size(), 1u);
    const Proposal& filter = found.front();
    const double background = quantile(filtered(filter.arguments, "good.png"));
    writePng(path("bad.png"), cloth(192, filter.levels, filter.radius));
    const PngFile seen = filtered(filter.arguments, "bad.png");
    const double most = *std::max_element(seen.samples.begin(), seen.samples.end());
    // The surface below the spot adds to it or takes away, a level is rounded away.
    EXPECT_NEAR(most, 3 * background, 1.3 * background);
    EXPECT_GT(most, 2 * background);
}

TEST_F(Suggest, PrintsATableWithLinesToPaste) {
    writePng(path("good one.png"), cloth(64));
    std::istringstream lines(succeed({"suggest", "good one.png"}).out);
    std::string line;
    std::getline(lines, line);
    EXPECT_EQ(line, "radius  grey levels  line");
    const std::regex row(
        R"( *[\d.]+ +[\d.]+  mvfreq bandpass --frequency .* --rescale 'good one.png' out.png)");
    for (int radii = 0; radii < 5; ++radii) {
        std::getline(lines, line);
        EXPECT_TRUE(std::regex_match(line, row)) << line;
    }
    std::getline(lines, line);
    EXPECT_EQ(line.rfind("Left out: radius 8, 12, 16, 24, 32 and 48.", 0), 0u) << line;
}

TEST_F(Suggest, DrawsWhatItProposes) {
    writePng(path("good.png"), cloth(64));
    succeed({"suggest", "good.png", "--radius", "3", "--plot", "plot.png"});
    const PngFile plot = readPng(path("plot.png"));
    EXPECT_GT(plot.width, 256);
    EXPECT_GT(plot.height, 512);
    EXPECT_EQ(run({"suggest", "good.png", "--plot", "good.png"}).exitCode, 2);
}

TEST_F(Suggest, TakesPicturesOfOneDepth) {
    writePng(path("a.png"), noisePng(64, 64, 8));
    writePng(path("b.png"), noisePng(64, 64, 16));
    EXPECT_EQ(run({"suggest", "a.png", "b.png"}).err,
              "mvfreq: b.png: has not as many bits a pel as a.png\n");
    const std::string one = succeed({"suggest", "b.png", "--radius", "2", "--json"}).out;
    EXPECT_GT(proposalsIn(one).front().levels, 1000);
}

TEST_F(Suggest, EndsWithASentenceOnPicturesThatShowNoSurface) {
    const auto expect = [this](const PngFile& picture, const std::string& text) {
        writePng(path("in.png"), picture);
        for (const Arguments& more : {Arguments{}, Arguments{"--json"}}) {
            Arguments line{"suggest", "in.png"};
            line.insert(line.end(), more.begin(), more.end());
            const Outcome outcome = run(line);
            EXPECT_EQ(outcome.exitCode, 1);
            EXPECT_EQ(outcome.out, "");
            EXPECT_EQ(outcome.err.rfind("mvfreq: in.png: The picture is " + text, 0), 0u)
                << outcome.err;
        }
    };
    expect(greyPng(1, 1, 8, [](long, long) { return 9; }), "too small");
    expect(noisePng(8, 8, 8), "too small");
    expect(greyPng(80, 80, 8, [](long, long) { return 9; }), "flat");
    expect(greyPng(80, 80, 8, [](long x, long) { return x < 60 ? 255 : 90; }), "overexposed");
}

TEST_F(Suggest, ProposesLobesAcrossADirection) {
    writePng(path("good.png"), cloth(64));
    const std::string json =
        succeed({"suggest", "--json", "--radius", "2", "--direction", "90", "good.png"}).out;
    const Arguments words = proposalsIn(json).front().arguments;
    EXPECT_EQ(words.front(), "gabor");
    EXPECT_EQ(words[3], "--angle");
    EXPECT_EQ(words[4], "90");
}

using Peaks = Suggest;

// The line that is printed for a wave takes it out of the picture.
TEST_F(Peaks, AreRemovedByTheirLines) {
    writePng(
        path("wave.png"), greyPng(256, 256, 8, [](long x, long y) {
            return std::lround(128 + 40 * std::cos(kTurn * static_cast<double>(3 * x + y) / 29));
        }));
    const std::string json = succeed({"peaks", "--json", "wave.png"}).out;
    std::smatch parts;
    const std::regex object(
        R"re("frequency": ([\d.]+), "angle": ([\d.-]+), .*"arguments": \[(.*)\])re");
    ASSERT_TRUE(std::regex_search(json, parts, object)) << json;
    EXPECT_NEAR(std::stod(parts[1]), std::sqrt(10) / 29, 0.001);
    EXPECT_NEAR(std::stod(parts[2]), 18.4, 0.2);
    const std::string words = parts[3];
    Arguments line;
    const std::regex word(R"re("([^"]*)")re");
    for (std::sregex_iterator at(words.begin(), words.end(), word), end; at != end; ++at) {
        line.push_back((*at)[1]);
    }
    const PngFile clean = filtered(line, "wave.png");
    for (long at = 64; at < 192; ++at) EXPECT_NEAR(clean.at(at, 256 - at), 128, 3) << at;
}

TEST_F(Peaks, AreListedInATable) {
    writePng(path("flat.png"), greyPng(64, 64, 8, [](long, long) { return 9; }));
    EXPECT_EQ(succeed({"peaks", "flat.png"}).out, "No wave stands out of its surroundings.\n");
    EXPECT_EQ(succeed({"peaks", "--json", "flat.png"}).out, "[]\n");
    writePng(path("cloth.png"), cloth(128));
    const std::string table = succeed({"peaks", "cloth.png"}).out;
    EXPECT_EQ(table.rfind("  period  frequency    angle  strength  over surroundings  line\n", 0),
              0u);
    EXPECT_NE(table.find("mvfreq gaborreject --frequency 0.202 --angle 45 "), std::string::npos)
        << table;
}

}  // namespace
