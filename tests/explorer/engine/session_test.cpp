// What the page asks of the library.
#include <base/archive.h>

#include <explorer/engine/session.h>
#include <gtest/gtest.h>
#include <tools/failure.h>

#include <sstream>
#include <vector>

namespace {

using Bytes = mvPelBuffer<unsigned char>;

constexpr FilterSettings kRing{
    .kind = FilterKind::bandPass, .frequency = 0.1, .sigma = {0.02, 0.02}};

TEST(Session, WeighsColours) {
    const unsigned char rgb[] = {255, 0, 0, 9, 0, 255, 0, 9, 0, 0, 255, 9, 10, 20, 30, 9};
    const Bytes grey = greyPicture(rgb, 2, 2, 4);
    EXPECT_EQ(grey.pel(0, 0), 76);
    EXPECT_EQ(grey.pel(1, 0), 150);
    EXPECT_EQ(grey.pel(0, 1), 29);
    EXPECT_EQ(grey.pel(1, 1), 18);
}

TEST(Session, TakesGreyAsItIsAndDropsAlpha) {
    const unsigned short samples[] = {1000, 7, 65535, 7};
    const mvPelBuffer<unsigned short> grey = greyPicture(samples, 2, 1, 2);
    EXPECT_EQ(grey.pel(0, 0), 1000);
    EXPECT_EQ(grey.pel(1, 0), 65535);
}

TEST(Session, BuildsEveryKindOfFilter) {
    const std::vector<std::pair<FilterKind, std::unique_ptr<mvFrequencyFilter>>> expected = [] {
        std::vector<std::pair<FilterKind, std::unique_ptr<mvFrequencyFilter>>> all;
        const mvPair<double> s(0.02, 0.03), p(0.01, 0.004);
        const mvRadian angle(30 * std::numbers::pi / 180);
        const mvPair<long> size(128, 64);
        using std::make_unique;
        all.emplace_back(FilterKind::bandPass,
                         make_unique<mvFrequencyFilterBandPass>(s.x, p.x, 0.1, size, 2));
        all.emplace_back(FilterKind::bandReject,
                         make_unique<mvFrequencyFilterBandReject>(s.x, p.x, 0.1, size, 2));
        all.emplace_back(FilterKind::gabor,
                         make_unique<mvFrequencyFilterGabor>(s, p, angle, 0.1, size, 2));
        all.emplace_back(FilterKind::gaborReject,
                         make_unique<mvFrequencyFilterGaborReject>(s, p, angle, 0.1, size, 2));
        return all;
    }();
    for (const auto& [kind, filter] : expected) {
        const FilterSettings settings{.kind = kind,
                                      .frequency = 0.1,
                                      .degrees = 30,
                                      .sigma = {0.02, 0.03},
                                      .plateau = {0.01, 0.004},
                                      .dcRadius = 2};
        EXPECT_EQ(archiveOf(*recipeOf(settings, {}).make({128, 64})), archiveOf(*filter));
    }
}

TEST(Session, KnowsHowFarAFilterReaches) {
    EXPECT_EQ(recipeOf(kRing, {}).reach, mvPair<long>(32, 32));
}

TEST(Session, NeedsWeightsForAConvolution) {
    FilterSettings settings;
    settings.kind = FilterKind::convolve;
    EXPECT_THROW(recipeOf(settings, {}), BadArgument);
    Bytes weights(3, 3);
    weights.pointToRow(1)[1] = 5;
    const FilterRecipe recipe =
        recipeOf(settings, Kernel("weights", PictureOf<unsigned char>{{weights}}));
    EXPECT_EQ(recipe.leastPlane, mvPair<long>(4, 4));
    EXPECT_EQ(mfFilterPlane(*recipe.make({16, 8})), mvPair<long>(16, 8));
}

TEST(Session, RefusesARadiusThatDoesNotFit) {
    FilterSettings settings = kRing;
    settings.dcRadius = 33;
    EXPECT_NO_THROW(recipeOf(settings, {}).make({128, 128}));
    EXPECT_THROW(recipeOf(settings, {}).make({128, 64}), BadArgument);
}

TEST(Session, ShowsGainsWithDcInTheMiddle) {
    const Bytes gains = shownGains(*recipeOf(kRing, {}).make({128, 64}), 64);
    ASSERT_EQ(gains.width(), 64);
    ASSERT_EQ(gains.height(), 64);
    EXPECT_EQ(gains.pel(32, 32), 0);
    EXPECT_GT(gains.pel(32 + 6, 32), 200);
    EXPECT_GT(gains.pel(32, 32 - 6), 200);
}

TEST(Session, StoresFiltersForTheProgram) {
    const auto filter = recipeOf(kRing, {}).make({64, 64});
    std::istringstream bytes(archiveOf(*filter));
    mvArchive archive(bytes);
    EXPECT_EQ(archiveOf(*mfLoad<mvFrequencyFilter>(archive)), archiveOf(*filter));
}

TEST(Session, HalvesPicturesOfAnySize) {
    Bytes picture(3, 3);
    for (long y = 0; y < 3; ++y) {
        for (long x = 0; x < 3; ++x) picture.pointToRow(y)[x] = static_cast<unsigned char>(10 * x);
    }
    const Bytes half = halved(picture);
    ASSERT_EQ(half.width(), 2);
    ASSERT_EQ(half.height(), 2);
    EXPECT_EQ(half.pel(0, 0), 5);
    EXPECT_EQ(half.pel(1, 1), 20);
}

TEST(Session, ShowsTheUpperBytes) {
    mvPelBuffer<unsigned short> picture(2, 1);
    picture.pointToRow(0)[0] = 0x1234;
    picture.pointToRow(0)[1] = 0xFFFF;
    EXPECT_EQ(upperBytes(picture).pel(0, 0), 0x12);
    EXPECT_EQ(upperBytes(picture).pel(1, 0), 0xFF);
}

}  // namespace
