// Filters as numbers.
#include <gtest/gtest.h>
#include <suggest/filter_step.h>

#include <cstdint>
#include <limits>

namespace {

using Words = std::vector<std::string>;

TEST(FilterStep, WritesNumbersOfThreeDigitsAsTheyAreRead) {
    for (const double value : {0.0, 0.000481, 0.0123, 0.1, 0.48, 1.5, 12.0, 90.0, -45.5, 180.0}) {
        EXPECT_EQ(std::stod(mfNumberText(value)), value) << mfNumberText(value);
    }
    EXPECT_EQ(mfNumberText(0.0300), "0.03");
    EXPECT_EQ(mfNumberText(100), "100");
    EXPECT_EQ(mfNumberText(0), "0");
}

TEST(FilterStep, RoundsToNumbersThatATextGivesBack) {
    for (double value = 1e-4; value < 400; value *= 1.0371) {
        const double rounded = mfRoundedNumber(value);
        EXPECT_NEAR(rounded / value, 1, 0.0051);
        EXPECT_EQ(std::stod(mfNumberText(rounded)), rounded);
    }
}

TEST(FilterStep, LeavesOutWhatIsTheDefaultOfACommand) {
    EXPECT_EQ(mfFilterArguments({{.frequency = 0.03, .sigma = 0.012}}),
              (Words{"bandpass", "--frequency", "0.03", "--sigma", "0.012"}));
    EXPECT_EQ(mfFilterArguments({{.kind = mvFilterKind::gabor,
                                  .frequency = 0.1,
                                  .sigma = 0.02,
                                  .degrees = 90,
                                  .sigmaAcross = 0.005,
                                  .dcRadius = 1}}),
              (Words{"gabor", "--frequency", "0.1", "--angle", "90", "--sigma", "0.02",
                     "--sigma-across", "0.005", "--dc-radius", "1"}));
}

TEST(FilterStep, BuildsTheFilterOfItsNumbers) {
    const mvPair<long> plane(64, 32);
    const auto ring = mfBuildFilters({{.kind = mvFilterKind::bandReject,
                                       .frequency = 0.2,
                                       .sigma = 0.05,
                                       .plateau = 0.01,
                                       .dcRadius = 2}},
                                     plane);
    ASSERT_EQ(ring.list().size(), 1u);
    const auto* built = dynamic_cast<const mvFrequencyFilterBandReject*>(ring.list().front());
    ASSERT_NE(built, nullptr);
    EXPECT_TRUE(*built == mvFrequencyFilterBandReject(0.05, 0.01, 0.2, plane, 2));
}

TEST(FilterStep, WithBothSidesIsTwoFilters) {
    const mvFilterStep lobe{.kind = mvFilterKind::gaborReject,
                            .frequency = 0.2,
                            .sigma = 0.05,
                            .degrees = 30,
                            .sigmaAcross = 0.05,
                            .bothSides = true};
    EXPECT_EQ(mfBuildFilters({lobe, lobe}, {64, 64}).list().size(), 4u);
    EXPECT_EQ(mfFilterArguments({lobe}).back(), "--both-sides");
}

TEST(FilterStep, ReachesAsFarAsItsFiltersDo) {
    const mvPair<long> reach = mfFiltersReach({{.frequency = 0.03, .sigma = 0.012}});
    EXPECT_EQ(reach.x, 54);
    EXPECT_EQ(reach.y, 54);
}

// The same on machines whose long has more bits.
TEST(FilterStep, ReachesNoFartherThan32Bits) {
    constexpr long kFarthest = std::numeric_limits<std::int32_t>::max();
    const mvFilterStep endless{.frequency = 0.25, .sigma = 1e-10};
    EXPECT_EQ(mfFiltersReach({endless}), mvPair<long>(kFarthest, kFarthest));
    EXPECT_EQ(mfFiltersReach({endless, endless}), mvPair<long>(kFarthest, kFarthest));
}

TEST(FilterStep, ReachesNowhereWithoutFilters) {
    EXPECT_EQ(mfFiltersReach({}), mvPair<long>(0, 0));
}

// A chain cuts tiles by the reach of all its filters, of which both sides are two.
TEST(FilterStep, WithBothSidesReachesTwice) {
    mvFilterStep lobe{.kind = mvFilterKind::gaborReject,
                      .frequency = 0.2,
                      .sigma = 0.05,
                      .degrees = 30,
                      .sigmaAcross = 0.02,
                      .dcRadius = 200};
    const mvPair<long> once = mfFiltersReach({lobe});
    lobe.bothSides = true;
    EXPECT_EQ(mfFiltersReach({lobe}), mvPair<long>(2 * once.x, 2 * once.y));
    const mvFilterChain filters = mfBuildFilters({lobe}, {512, 512});
    EXPECT_EQ(mfFiltersReach({lobe}), mfFilterReach(filters.list()));
}

}  // namespace
