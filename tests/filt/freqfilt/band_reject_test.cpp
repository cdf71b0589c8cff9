// The band-reject filter's own behaviour, case by case.
#include "support/filter_cases.h"
#include "support/random_planes.h"
#include "support/spectra.h"

namespace {

using cases::Open;
using support::thrownBy;
using Filter = mvFrequencyFilterBandReject;
using Size = mvPair<long>;

TEST(BandReject, ProfileIsZeroOnThePlateauAndRisesTowardsOne) {
    const Open<Filter> filter(0.05, 2.0 / 64, 0.25, Size(64, 64), 0);
    for (int i = 0; i <= 64; ++i) EXPECT_EQ(filter.data()[i], 0.0F) << i;
    EXPECT_GT(filter.data()[65], 0.0F);
    EXPECT_GT(filter.data()[filter.supportWidth() * 32 - 1], 0.999F);
}

TEST(BandReject, ClearsTheRingAndKeepsTheRest) {
    const Filter filter(0.01, 0.0, 0.25, Size(64, 64), 0);
    const reference::Spectrum before = support::someSpectrum(support::randomPlane(64, 64, 4));
    mvFrequencyBuffer buffer = support::bufferOf(before);
    filter.apply(buffer);
    EXPECT_EQ(buffer.get(16, 0, true), mvPair(0.0, 0.0));
    EXPECT_EQ(buffer.get(0, -16, true), mvPair(0.0, 0.0));
    const reference::Plane after = support::planeOf(buffer);
    for (const auto& [x, y] : {std::pair(0, 0), std::pair(3, 60), std::pair(32, 32)}) {
        EXPECT_EQ(after.at(x, y).re, before.plane.at(x, y).re);
        EXPECT_EQ(after.at(x, y).im, before.plane.at(x, y).im);
    }
}

TEST(BandReject, LeavesRowsBeyondTheRowLimitAlone) {
    const Filter filter(0.01, 0.0, 0.25, Size(64, 256), 0);
    mvFrequencyBuffer buffer = support::bufferOf(support::constantPlane(64, 256, {1.0F, 2.0F}));
    mvFrequencyBuffer copy;
    filter.apply(buffer, copy);
    filter.apply(buffer);
    for (const mvFrequencyBuffer* b : {&buffer, &copy}) {
        EXPECT_LT(b->getReal(0, 69, true), 1.0);
        EXPECT_EQ(b->get(0, 70, true), mvPair(1.0, 2.0));
        EXPECT_EQ(b->get(0, -70, true), mvPair(1.0, 2.0));
    }
}

TEST(BandReject, ProtectsDCBitForBit) {
    const Filter open(0.05, 0.1, 0.0, Size(64, 64), 0);
    const Filter guarded(0.05, 0.1, 0.0, Size(64, 64), 1);
    mvFrequencyBuffer buffer = support::bufferOf(support::constantPlane(64, 64, {0.1F, -0.7F}));
    mvFrequencyBuffer other(buffer);
    const mvPair<double> dc = buffer.get(0, 0, true);
    open.apply(other);
    EXPECT_EQ(other.get(0, 0, true), mvPair(0.0, -0.0));
    guarded.apply(buffer);
    EXPECT_EQ(buffer.get(0, 0, true), dc);
    EXPECT_EQ(buffer.get(1, 0, true), mvPair(0.0, -0.0));
}

TEST(BandReject, AProtectionSquareThatReachesOutLeavesTheBufferInPlaceUnchanged) {
    const Filter filter(1.0, 0.0, 0.0, Size(8, 8), 5);
    const reference::Spectrum before = support::someSpectrum(support::randomPlane(8, 8, 5));
    mvFrequencyBuffer buffer = support::bufferOf(before);
    EXPECT_EQ(thrownBy([&] { filter.apply(buffer); }), support::kOutOfBounds);
    EXPECT_TRUE(support::sameSpectrum(before, buffer));
}

TEST(BandReject, AProtectionSquareThatReachesOutFindsTheDestinationSizedAndUnmasked) {
    const Filter filter(1.0, 0.0, 0.0, Size(8, 8), 5);
    const mvFrequencyBuffer src =
        support::bufferOf(support::someSpectrum(support::randomPlane(8, 8, 5)));
    reference::Spectrum expected = support::someSpectrum(support::randomPlane(8, 8, 6));
    mvFrequencyBuffer dst = support::bufferOf(expected);
    EXPECT_EQ(thrownBy([&] { filter.apply(src, dst); }), support::kOutOfBounds);
    expected.imageWidth = 8;
    expected.imageHeight = 8;
    expected.masked = false;
    expected.maskedMiny = expected.maskedMaxy = 0;
    EXPECT_TRUE(support::sameSpectrum(expected, dst));
}

TEST(BandReject, ASpentBufferIsRefusedWhereASquareIsProtected) {
    reference::Spectrum spent = support::someSpectrum(support::randomPlane(8, 8, 7));
    spent.inverseComputed = true;
    mvFrequencyBuffer buffer = support::bufferOf(spent);
    const Filter guarded(1.0, 0.0, 0.0, Size(8, 8), 1);
    EXPECT_EQ(thrownBy([&] { guarded.apply(buffer); }), support::kSpent);
    EXPECT_TRUE(support::sameSpectrum(spent, buffer));
    // Sizing the destination, here the source itself, comes before the square is read.
    EXPECT_EQ(thrownBy([&] { guarded.apply(buffer, buffer); }), "nothing");
    EXPECT_FALSE(mvi::BufferAccess::inverseComputed(buffer));
}

}  // namespace
