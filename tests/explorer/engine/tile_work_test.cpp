// Tiles of a picture, taken in any order, and the one call.
#include <explorer/engine/tile_work.h>
#include <gtest/gtest.h>
#include <tools/result_pels.h>

#include <algorithm>
#include <random>
#include <vector>

namespace {

template <class T>
mvPelBuffer<T> noise(long width, long height) {
    std::mt19937 random(7);
    mvPelBuffer<T> picture(width, height);
    for (long y = 0; y < height; ++y) {
        for (long x = 0; x < width; ++x) picture.pointToRow(y)[x] = static_cast<T>(random());
    }
    return picture;
}

template <class T>
std::vector<T> pelsOf(const mvPelBuffer<T>& picture) {
    std::vector<T> pels;
    for (long y = 0; y < picture.height(); ++y) {
        pels.insert(pels.end(), picture.pointToRow(y), picture.pointToRow(y) + picture.width());
    }
    return pels;
}

// Small planes make many tiles of small pictures.
const mvFrequencyFilterBandPass kRing({.sigma = 0.1, .frequency = 0.2, .size = {32, 64}});
const mvFrequencyFilterGabor kLobe({.sigma = {0.1, 0.08},
                                    .plateau = {0, 0},
                                    .angle = mvRadian(0.7),
                                    .frequency = 0.2,
                                    .size = {64, 32},
                                    .dcRadius = 1});
const mvFrequencyFilterGabor kOtherLobe({.sigma = {0.1, 0.08},
                                         .plateau = {0, 0},
                                         .angle = mvRadian(0.5),
                                         .frequency = 0.2,
                                         .size = {64, 32},
                                         .dcRadius = 1});

using Filters = std::vector<const mvFrequencyFilter*>;

struct Case {
    const char* name;
    mvPair<long> picture;
    Filters filters;
    mvBorder border = mvBorder::mirror;
};

const Case kCases[] = {{"ManyTiles", {200, 300}, {&kRing}},
                       {"ManyTilesAndZeros", {200, 300}, {&kRing}, mvBorder::zero},
                       {"TilesAcrossOnly", {500, 40}, {&kRing}},
                       {"TilesAcrossOnlyAndZeros", {500, 64}, {&kRing}, mvBorder::zero},
                       {"TilesDownOnly", {40, 500}, {&kLobe}},
                       {"ManyTilesOfALobe", {300, 200}, {&kLobe}},
                       {"FewTiles", {60, 90}, {&kRing}},
                       {"OnePlane", {16, 30}, {&kRing}},
                       {"ManyTilesOfTwoFilters", {300, 200}, {&kLobe, &kOtherLobe}},
                       {"OnePel", {1, 1}, {&kLobe}}};

class TileWorks : public ::testing::TestWithParam<Case> {
  protected:
    template <class T>
    void workBackwards(TileWork<T>& work) {
        for (long at = work.tiles(); at-- > 0;) work.work(at);
    }

    template <class T>
    void compareMagnitudes(std::optional<double> percent) {
        const auto& [name, size, filters, border] = GetParam();
        const mvPelBuffer<T> picture = noise<T>(size.x, size.y);
        TileWork<T> work(picture, filters, {border, percent});
        workBackwards(work);
        mvPelBuffer<T> result;
        if constexpr (sizeof(T) == 1) {
            result = work.bytes();
        } else {
            result = work.words();
        }
        EXPECT_EQ(pelsOf(result),
                  pelsOf(magnitudePels<T>(picture, filters, {.border = border}, percent)));
    }

    template <class T>
    void compareRealParts(std::optional<double> percent) {
        const auto& [name, size, filters, border] = GetParam();
        const mvPelBuffer<T> picture = noise<T>(size.x, size.y);
        TileWork<T> work(picture, filters, {border, percent, true});
        workBackwards(work);
        mvPelBuffer<double> real;
        mfFilterImage(picture, std::span(filters), real,
                      {.border = border, .result = mvFilterResult::real});
        EXPECT_TRUE(work.isWide());
        EXPECT_EQ(pelsOf(work.words()), pelsOf(realPels(real, percent)));
    }
};

TEST_P(TileWorks, GiveTheOneCallsGreyLevels) {
    compareMagnitudes<unsigned char>({});
    compareMagnitudes<unsigned short>({});
}

TEST_P(TileWorks, SpreadAsTheOneCallDoes) {
    compareMagnitudes<unsigned char>(100);
    compareMagnitudes<unsigned short>(100);
    compareMagnitudes<unsigned char>(98);
}

TEST_P(TileWorks, GiveTheOneCallsRealParts) {
    compareRealParts<unsigned char>({});
    compareRealParts<unsigned short>(99);
}

TEST_P(TileWorks, CoverThePictureOnce) {
    const auto& [name, size, filters, border] = GetParam();
    const mvPelBuffer<unsigned char> picture(size.x, size.y);
    const TileWork<unsigned char> work(picture, filters, {border, {}, false});
    std::vector<int> covered(static_cast<std::size_t>(size.x * size.y));
    for (long at = 0; at < work.tiles(); ++at) {
        const PelArea part = work.area(at);
        for (long y = part.y; y < part.y + part.height; ++y) {
            for (long x = part.x; x < part.x + part.width; ++x) {
                ++covered[static_cast<std::size_t>(y * size.x + x)];
            }
        }
    }
    EXPECT_EQ(covered, std::vector<int>(covered.size(), 1));
}

INSTANTIATE_TEST_SUITE_P(Of, TileWorks, ::testing::ValuesIn(kCases),
                         [](const auto& work) { return std::string(work.param.name); });

TEST(TileWork, IsBlackWhereNoTileIsDone) {
    const mvPelBuffer<unsigned char> picture = noise<unsigned char>(200, 300);
    const Filters ring{&kRing};
    TileWork<unsigned char> work(picture, ring, {mvBorder::mirror, 100, false});
    ASSERT_GT(work.tiles(), 9);
    work.work(4);
    const PelArea done = work.area(4);
    const mvPelBuffer<unsigned char> result = work.bytes();
    int brightest = 0, brightestElsewhere = 0;
    for (long y = 0; y < 300; ++y) {
        for (long x = 0; x < 200; ++x) {
            const bool isDone =
                x >= done.x && x < done.x + done.width && y >= done.y && y < done.y + done.height;
            int& most = isDone ? brightest : brightestElsewhere;
            most = std::max<int>(most, result.pel(x, y));
        }
    }
    EXPECT_EQ(brightest, 255);
    EXPECT_EQ(brightestElsewhere, 0);
}

}  // namespace
