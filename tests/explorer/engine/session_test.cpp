// What the page asks of the library.
#include <base/archive.h>

#include <explorer/engine/session.h>
#include <gtest/gtest.h>
#include <tools/failure.h>

#include <numbers>
#include <sstream>
#include <utility>
#include <vector>

namespace {

using Bytes = mvPelBuffer<unsigned char>;

const FilterSettings kRing{
    .step = {.kind = mvFilterKind::bandPass, .frequency = 0.1, .sigma = 0.02}};

const FilterSettings kNotch{.step = {.kind = mvFilterKind::gaborReject,
                                     .frequency = 0.2,
                                     .sigma = 0.02,
                                     .degrees = 30,
                                     .sigmaAcross = 0.03,
                                     .bothSides = true}};

Kernel oneWeight() {
    Bytes weights(3, 3);
    weights.pointToRow(1)[1] = 5;
    return {"weights", PictureOf<unsigned char>{{weights}}};
}

mvFilterChain built(const std::vector<FilterSettings>& settings, mvPair<long> plane) {
    mvFilterChain chain;
    for (const FilterRecipe& filter : recipeOf(settings, {})) chain.add(filter.make(plane));
    return chain;
}

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
    using Kind = mvFilterKind;
    const mvPair<double> s(0.02, 0.03), p(0.01, 0.004);
    const mvRadian angle(30 * std::numbers::pi / 180);
    const mvPair<long> size(128, 64);
    const mvFrequencyFilterBandPass pass(s.x, p.x, 0.1, size, 2);
    const mvFrequencyFilterBandReject reject(s.x, p.x, 0.1, size, 2);
    const mvFrequencyFilterGabor lobe(s, p, angle, 0.1, size, 2);
    const mvFrequencyFilterGaborReject notch(s, p, angle, 0.1, size, 2);
    const std::pair<Kind, const mvFrequencyFilter*> expected[] = {{Kind::bandPass, &pass},
                                                                  {Kind::bandReject, &reject},
                                                                  {Kind::gabor, &lobe},
                                                                  {Kind::gaborReject, &notch}};
    for (const auto& [kind, filter] : expected) {
        const FilterSettings settings{.step = {.kind = kind,
                                               .frequency = 0.1,
                                               .sigma = 0.02,
                                               .plateau = 0.01,
                                               .degrees = 30,
                                               .sigmaAcross = 0.03,
                                               .plateauAcross = 0.004,
                                               .dcRadius = 2}};
        const mvFrequencyFilter* const list[] = {filter};
        EXPECT_EQ(archiveOf(built({settings}, size).list()), archiveOf(list));
    }
}

TEST(Session, RejectsBothSidesOfAWave) {
    const mvPair<double> sigma(0.02, 0.03), plateau;
    const mvPair<long> size(128, 64);
    const auto radians = [](double degrees) { return mvRadian(degrees * std::numbers::pi / 180); };
    const mvFrequencyFilterGaborReject one(sigma, plateau, radians(30), 0.2, size, 0);
    const mvFrequencyFilterGaborReject other(sigma, plateau, radians(210), 0.2, size, 0);
    const mvFrequencyFilter* const list[] = {&one, &other};
    EXPECT_EQ(archiveOf(built({kNotch}, size).list()), archiveOf(list));
}

TEST(Session, AppliesFiltersInTurn) {
    const ChainRecipe chain = recipeOf({kNotch, kRing}, {});
    ASSERT_EQ(chain.size(), 3u);
    const mvPair<long> ring = chain.back().reach, lobe = chain.front().reach;
    EXPECT_EQ(ring, recipeOf({kRing}, {}).front().reach);
    EXPECT_EQ(needsOf(chain).reach, mvPair<long>(ring.x + 2 * lobe.x, ring.y + 2 * lobe.y));
}

TEST(Session, TakesWeightsBehindARejectedWave) {
    const ChainRecipe chain = recipeOf({kNotch, {.isConvolution = true}}, oneWeight());
    ASSERT_EQ(chain.size(), 3u);
    EXPECT_EQ(needsOf(chain).leastPlane, mvPair<long>(4, 4));
}

TEST(Session, KnowsHowFarAFilterReaches) {
    EXPECT_EQ(recipeOf({kRing}, {}).front().reach, mvPair<long>(32, 32));
}

TEST(Session, NeedsWeightsForAConvolution) {
    const std::vector<FilterSettings> settings{{.isConvolution = true}};
    EXPECT_THROW(recipeOf(settings, {}), BadArgument);
    const FilterRecipe recipe = recipeOf(settings, oneWeight()).front();
    EXPECT_EQ(recipe.leastPlane, mvPair<long>(4, 4));
    EXPECT_EQ(mfFilterPlane(*recipe.make({16, 8})), mvPair<long>(16, 8));
}

TEST(Session, RefusesARadiusThatDoesNotFit) {
    FilterSettings settings = kRing;
    settings.step.dcRadius = 33;
    EXPECT_NO_THROW(built({settings}, {128, 128}));
    EXPECT_THROW(built({settings}, {128, 64}), BadArgument);
}

TEST(Session, ShowsGainsWithDcInTheMiddle) {
    const Bytes gains = shownGains(built({kRing}, {128, 64}).list(), 64);
    ASSERT_EQ(gains.width(), 64);
    ASSERT_EQ(gains.height(), 64);
    EXPECT_EQ(gains.pel(32, 32), 0);
    EXPECT_GT(gains.pel(32 + 6, 32), 200);
    EXPECT_GT(gains.pel(32, 32 - 6), 200);
}

TEST(Session, StoresFiltersForTheProgram) {
    const mvFilterChain filters = built({kRing, kRing}, {64, 64});
    const std::string stored = archiveOf(filters.list());
    std::istringstream bytes(stored);
    mvArchive archive(bytes);
    const auto first = mfLoad<mvFrequencyFilter>(archive);
    const auto second = mfLoad<mvFrequencyFilter>(archive);
    const mvFrequencyFilter* const loaded[] = {first.get(), second.get()};
    EXPECT_EQ(archiveOf(loaded), stored);
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
