// Filters proposed from pictures of a good surface.
#include <gtest/gtest.h>
#include <suggest/program_plane.h>
#include <suggest/suggest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <stdexcept>

#include "images.h"

namespace {

using suggested::Image;
using suggested::imageOf;
using suggested::kTurn;
using Pictures = std::vector<mvPelBuffer_const<double>>;

// Sums of bytes of a generator that is the same everywhere: nearly normal, deviation 1.
class Noise {
  public:
    double operator()() {
        double sum = 0;
        for (int i = 0; i < 4; ++i) sum += static_cast<double>(random_() >> 8 & 0xff);
        return (sum - 510) / 147.8;
    }

  private:
    std::mt19937 random_{7};
};

Image noise(long width, long height, double strength) {
    Noise next;
    return imageOf(width, height,
                   [&](double, double) { return std::round(128 + strength * next()); });
}

// A weave under uneven light.
Image cloth(long side) {
    Noise next;
    return imageOf(side, side, [&](double x, double y) {
        const double weave = 30 * std::cos(kTurn * x / 7) * std::cos(kTurn * y / 7);
        const double light = 40 * std::cos(kTurn * (x + y) / 900);
        return std::round(std::clamp(128 + weave + light + 3 * next(), 0.0, 255.0));
    });
}

mvSuggestions suggest(const Pictures& pictures, std::vector<double> radii) {
    return mfSuggest(pictures, {.radii = std::move(radii), .white = 255});
}

double quantile(const Image& image) {
    std::vector<double> pels;
    for (long y = 0; y < image.height(); ++y) {
        pels.insert(pels.end(), image.pointToRow(y), image.pointToRow(y) + image.width());
    }
    std::sort(pels.begin(), pels.end());
    return pels[static_cast<std::size_t>(std::ceil(0.999 * static_cast<double>(pels.size()))) - 1];
}

// A bump in the middle of a picture of that size, with half-widths along x and y.
Image bump(const Image& size, double across, double down) {
    return imageOf(size.width(), size.height(), [&](double x, double y) {
        const double u = (x - static_cast<double>(size.width() / 2)) / across;
        const double v = (y - static_cast<double>(size.height() / 2)) / down;
        return std::exp(-(u * u + v * v) / 2);
    });
}

double peak(const Image& image) {
    double most = 0;
    for (long y = 0; y < image.height(); ++y) {
        const double* row = image.pointToRow(y);
        most = std::max(most, *std::max_element(row, row + image.width()));
    }
    return most;
}

// What filters answer to a defect, over what they answer to the good picture.
double contrast(const Image& good, const std::vector<mvFilterStep>& steps, mvPair<long> plane,
                const Image& defect) {
    const mvFilterChain filters = mfBuildFilters(steps, plane);
    Image background, answer;
    mfFilterImage(good, filters.list(), background);
    mfFilterImage(defect, filters.list(), answer);
    return peak(answer) / quantile(background);
}

TEST(Suggest, SaysHowManyGreyLevelsASpotNeedsToStandOutThreefold) {
    const Image good = cloth(128);
    for (const mvSuggestion& each : suggest({good}, {3, 6}).filters) {
        const double measured =
            contrast(good, each.steps, each.plane, bump(good, each.radius, each.radius));
        EXPECT_NEAR(each.levels * measured, 3, 0.09) << each.radius;
        EXPECT_DOUBLE_EQ(each.answer / each.background, 3 / each.levels) << each.radius;
    }
}

mvPair<long> planeOf(const Image& good, const mvFilterStep& step) {
    return mfProgramPlane({good.width(), good.height()}, mfFiltersReach({step}));
}

std::vector<mvFilterStep> ringsFor(double radius) {
    std::vector<mvFilterStep> rings;
    for (const double frequency : {0.12, 0.16, 0.22, 0.3}) {
        for (const double sigma : {0.2, 0.4}) {
            for (const double plateau : {0.0, 0.4}) {
                for (const long dcRadius : {1l, 2l, 4l}) {
                    const double f = frequency / radius;
                    rings.push_back({.frequency = f,
                                     .sigma = sigma * f,
                                     .plateau = plateau * f,
                                     .dcRadius = dcRadius});
                }
            }
        }
    }
    return rings;
}

// The best of a search over all that a ring has.
TEST(Suggest, FindsHardlyLessThanAFullSearch) {
    const Image good = cloth(160);
    for (const mvSuggestion& each : suggest({good}, {4, 8}).filters) {
        double best = 0;
        for (const mvFilterStep& ring : ringsFor(each.radius)) {
            best = std::max(best, contrast(good, {ring}, planeOf(good, ring),
                                           bump(good, each.radius, each.radius)));
        }
        EXPECT_GT(3 / each.levels, 0.9 * best) << each.radius;
    }
}

// Waves that go on in their mirror images, so that nothing of them is left at the edges.
Image waves() {
    Noise next;
    const auto wave = [](double at, double period) {
        return 25 * std::cos(kTurn * (at + 0.5) / period);
    };
    return imageOf(144, 144, [&](double x, double y) {
        return std::round(128 + wave(y, 16) + wave(x, 9) + wave(y, 6) + 2 * next());
    });
}

// A spot between them drowns, whatever the ring.
TEST(Suggest, RemovesWavesFirstWhereNoRingDoes) {
    const Image good = waves();
    const mvSuggestion found = suggest({good}, {2}).filters.front();
    ASSERT_GT(found.steps.size(), 1u);
    EXPECT_EQ(found.steps.front().kind, mvFilterKind::gaborReject);
    EXPECT_TRUE(found.steps.front().bothSides);
    EXPECT_EQ(found.steps.back().kind, mvFilterKind::bandPass);
    EXPECT_EQ(found.arguments, mfFilterArguments(found.steps));
    double best = 0;
    for (const mvFilterStep& ring : ringsFor(2)) {
        best = std::max(best, contrast(good, {ring}, planeOf(good, ring), bump(good, 2, 2)));
    }
    EXPECT_GT(3 / found.levels, 1.25 * best);
    EXPECT_NEAR(found.levels * contrast(good, found.steps, found.plane, bump(good, 2, 2)), 3, 0.06);
}

TEST(Suggest, LeavesAloneWavesThatARingClears) {
    const mvSuggestion found = suggest({waves()}, {16}).filters.front();
    EXPECT_EQ(found.steps.size(), 1u);
}

// Behind the spot itself as a filter, contrast c stands out c sqrt(pi) r / deviation fold; the
// quantile of normal noise is 3.29 deviations.
TEST(Suggest, ComesCloseToTheMatchedFilterInNoise) {
    const mvSuggestions found = suggest({noise(180, 180, 10)}, {2, 3, 4, 6});
    ASSERT_EQ(found.filters.size(), 4u);
    for (const mvSuggestion& each : found.filters) {
        const double matched = 3 * 3.29 * 10 / (std::sqrt(std::numbers::pi) * each.radius);
        EXPECT_NEAR(each.levels / matched, 1, 0.2) << each.radius;
    }
    ASSERT_EQ(found.remarks.size(), 1u);
    EXPECT_NE(found.remarks.front().find("nothing but noise"), std::string::npos);
}

TEST(Suggest, LooksAtAllPicturesThatAreGood) {
    const Image still = noise(64, 64, 2), loud = noise(64, 64, 20);
    const double alone = suggest({still}, {3}).filters.front().levels;
    const double both = suggest({still, loud}, {3}).filters.front().levels;
    EXPECT_GT(both, 5 * alone);
}

TEST(Suggest, GivesTheSameFiltersAgain) {
    const Image good = cloth(60);
    const mvSuggestions first = suggest({good}, {5}), second = suggest({good}, {5});
    for (std::size_t i = 0; i < first.filters.size(); ++i) {
        EXPECT_EQ(first.filters[i].arguments, second.filters[i].arguments);
        EXPECT_EQ(first.filters[i].levels, second.filters[i].levels);
    }
}

TEST(Suggest, LeavesOutRadiiThatThePictureIsTooSmallFor) {
    const mvSuggestions found = suggest({noise(64, 150, 5)}, {5, 8, 12, 48});
    ASSERT_EQ(found.filters.size(), 2u);
    EXPECT_EQ(found.filters.back().radius, 8);
    EXPECT_EQ(found.remarks.front(),
              "Left out: radius 12 and 48. The shorter side of a picture must be eight times the "
              "radius.");
}

// A lobe's scratch is eight times as long as it is wide.
TEST(Suggest, ProposesLobesForScratches) {
    const Image good = cloth(160);
    const mvSuggestions found = mfSuggest({good}, {.radii = {3}, .direction = 90});
    ASSERT_EQ(found.filters.size(), 1u);
    for (const mvSuggestion& each : found.filters) {
        EXPECT_EQ(each.steps.back().kind, mvFilterKind::gabor);
        EXPECT_EQ(each.steps.back().degrees, 90);
        const Image scratch = bump(good, 8 * each.radius, each.radius);
        const double measured = contrast(good, each.steps, each.plane, scratch);
        EXPECT_NEAR(each.levels * measured, 3, 0.06) << each.radius;
    }
}

// Lines along the surface drown a scratch along them, but not one across.
TEST(Suggest, FindsScratchesAcrossTheGrainMoreEasilyThanAlongIt) {
    std::vector<double> lines;
    Noise next;
    for (int i = 0; i < 60; ++i) lines.push_back(12 * next());
    const Image brushed = imageOf(60, 60, [&](double, double y) {
        return std::round(128 + lines[static_cast<std::size_t>(y)] + 2 * next());
    });
    const auto levels = [&](double direction) {
        return mfSuggest({brushed}, {.radii = {2}, .direction = direction}).filters.front().levels;
    };
    EXPECT_GT(levels(90), 3 * levels(0));
}

struct Refused {
    const char* name;
    Image image;
    const char* because;
};

TEST(Suggest, RefusesWhatIsNoSurfaceByASentence) {
    const auto grey = [](double, double) { return 77.0; };
    Noise next;
    const Refused cases[] = {
        {"one pel", imageOf(1, 1, grey), "too small"},
        {"few pels", imageOf(8, 8, grey), "too small"},
        {"flat", imageOf(100, 100, grey), "flat"},
        {"white",
         imageOf(100, 100, [&](double, double) { return std::min(255.0, 280 + 50 * next()); }),
         "overexposed"},
        {"black",
         imageOf(100, 100, [&](double, double) { return std::max(0.0, -20 + 30 * next()); }),
         "underexposed"},
        {"no numbers", imageOf(40, 40, [](double x, double) { return x > 3 ? NAN : 1.0; }),
         "no numbers"},
    };
    for (const Refused& each : cases) {
        const mvSuggestions found = suggest({each.image}, {1.5, 2});
        EXPECT_TRUE(found.filters.empty()) << each.name;
        EXPECT_NE(found.refusal.find(each.because), std::string::npos) << each.name;
        EXPECT_EQ(found.refusal.back(), '.') << each.name;
    }
    EXPECT_NE(suggest({}, {2}).refusal, "");
}

TEST(Suggest, ReportsItsProgressAndStopsWhenThatThrows) {
    double done = 0;
    const auto advance = [&](double part) {
        EXPECT_GE(part, done);
        EXPECT_LE(part, 1);
        done = part;
    };
    mfSuggest({noise(64, 64, 5)}, {.radii = {2}, .progress = advance});
    EXPECT_EQ(done, 1);
    const auto stop = [](double) { throw std::runtime_error("stop"); };
    EXPECT_THROW(mfSuggest({noise(64, 64, 5)}, {.radii = {2}, .progress = stop}),
                 std::runtime_error);
    EXPECT_THROW(mfSuggest({Image()}, {}), mvFrequencyDefs::UnboundWindow);
}

TEST(Suggest, TakesWindowsOfPicturesThatAreLong) {
    const mvSuggestions found = suggest({noise(5000, 64, 10)}, {3});
    ASSERT_EQ(found.filters.size(), 1u);
    EXPECT_NEAR(found.filters.front().levels, 18.6, 3);  // as by the matched filter
    EXPECT_EQ(found.filters.front().plane.x, 1024);
}

}  // namespace
