// The planes and the reaches of filters.
#include <filt/freqfilt.h>

#include <gtest/gtest.h>

#include <bit>
#include <limits>

#include "support/buffer_record.h"
#include "support/filter_records.h"
#include "support/loading.h"
#include "support/picture_cases.h"
#include "support/thrown.h"

namespace {

using cases::Kind;
using support::thrownBy;
using Pair = mvPair<long>;

constexpr long kFarthest = std::numeric_limits<std::int32_t>::max();
constexpr const char* kNoResponse = "Uninitialized: FrequencyFilter has not been initialized";

TEST(FilterPlane, IsTheSizeThatTheFilterWasBuiltFor) {
    for (const Kind kind : cases::kKinds) {
        const cases::PictureFilter made = cases::makePictureFilter(kind, {16, 4}, 1);
        EXPECT_EQ(mfFilterPlane(*made.filter), made.plane) << kind;
    }
}

TEST(FilterReach, IsThatOfTheFormulas) {
    for (const Kind kind : cases::kKinds) {
        for (unsigned variant = 0; variant < 200; ++variant) {
            const auto made = cases::makePictureFilter(kind, {32, 16}, variant);
            EXPECT_EQ(mfFilterReach(*made.filter), made.reach) << kind << ", " << variant;
        }
    }
}

TEST(FilterReach, OfARingIsFourDeviationsOfItsEnvelope) {
    const mvFrequencyFilterBandPass filter(0.0125, 0.1, 0.3, Pair(1024, 64), 0);
    EXPECT_EQ(mfFilterReach(filter), Pair(51, 51));
}

TEST(FilterReach, OfALobeIsLongAcrossItsNarrowSide) {
    const mvFrequencyFilterGabor filter({0.01, 0.1}, {0, 0}, mvRadian(0), 0.3, Pair(256, 256), 0);
    EXPECT_EQ(mfFilterReach(filter), Pair(64, 7));
}

template <class F>
void expectNothingWithoutResponse(const char* message) {
    const F filter;
    EXPECT_EQ(thrownBy([&] { mfFilterPlane(filter); }), message);
    EXPECT_EQ(thrownBy([&] { mfFilterReach(filter); }), message);
}

TEST(FilterReach, NeedsAResponse) {
    expectNothingWithoutResponse<mvFrequencyFilterBandPass>(kNoResponse);
    expectNothingWithoutResponse<mvFrequencyFilterBandReject>(kNoResponse);
    expectNothingWithoutResponse<mvFrequencyFilterGabor>(kNoResponse);
    expectNothingWithoutResponse<mvFrequencyFilterGaborReject>(kNoResponse);
    expectNothingWithoutResponse<mvFrequencyFilterImage>(support::kNoData);
}

Pair reachOf(double sigma) {
    mvFrequencyFilterBandPass filter;
    archive::load(archive::RingRecord{.sigma = sigma}.record().bytes(), filter);
    return mfFilterReach(filter);
}

TEST(FilterReach, StaysWithinItsLimits) {
    EXPECT_EQ(reachOf(1e9), Pair(1, 1));
    EXPECT_EQ(reachOf(1e-9), Pair(636619773, 636619773));
    EXPECT_EQ(reachOf(1e-10), Pair(kFarthest, kFarthest));
    EXPECT_EQ(reachOf(5e-324), Pair(kFarthest, kFarthest));
    EXPECT_EQ(reachOf(0.0), Pair(kFarthest, kFarthest));
    EXPECT_EQ(reachOf(-0.25), Pair(1, 1));
    EXPECT_EQ(reachOf(std::numeric_limits<double>::infinity()), Pair(1, 1));
    EXPECT_EQ(reachOf(std::numeric_limits<double>::quiet_NaN()), Pair(1, 1));
}

// The inverse transform of such an image is an impulse of that height at (x, y).
void addImpulse(mvPelBuffer<double>& kernel, long x, long y, double height) {
    kernel.pointToRow(y)[x] = height;
}

Pair reachOf(const mvPelBuffer<double>& kernel) {
    mvFrequencyBuffer image;
    mfForwardFFT<double>(kernel, image);
    return mfFilterReach(mvFrequencyFilterImage(image));
}

TEST(FilterReach, OfAnImageGoesAroundThePlane) {
    mvPelBuffer<double> kernel(64, 32);
    addImpulse(kernel, 0, 0, 1.0);
    EXPECT_EQ(reachOf(kernel), Pair(1, 1));
    addImpulse(kernel, 5, 0, 1.0);
    EXPECT_EQ(reachOf(kernel), Pair(5, 1));
    addImpulse(kernel, 0, 24, 1.0);
    EXPECT_EQ(reachOf(kernel), Pair(5, 8));
    addImpulse(kernel, 32, 16, 1.0);
    EXPECT_EQ(reachOf(kernel), Pair(32, 16));
}

TEST(FilterReach, OfAnImageLeavesNoMoreThanItsShareOutside) {
    mvPelBuffer<double> kernel(64, 64);
    addImpulse(kernel, 0, 0, 1000.0);
    addImpulse(kernel, 20, 30, 0.99);
    EXPECT_EQ(reachOf(kernel), Pair(20, 30));
    addImpulse(kernel, 20, 30, 0.96);
    EXPECT_EQ(reachOf(kernel), Pair(1, 1));
}

// The image may be smaller than the plane that it is on; its plane counts.
TEST(FilterReach, OfAnImageIsThatOfItsWholePlane) {
    mvPelBuffer<double> kernel(33, 3);
    addImpulse(kernel, 0, 0, 1.0);
    addImpulse(kernel, 30, 2, 1.0);
    EXPECT_EQ(reachOf(kernel), Pair(30, 2));
}

TEST(FilterReach, OfAnImageOfZerosOrWithoutNumberIsDefined) {
    EXPECT_EQ(mfFilterReach(mvFrequencyFilterImage(mvFrequencyBuffer(16, 8))), Pair(1, 1));
    mvFrequencyBuffer image(16, 8);
    image.put(3, 3, {std::numeric_limits<double>::quiet_NaN(), 0.0}, false);
    EXPECT_EQ(mfFilterReach(mvFrequencyFilterImage(image)), Pair(8, 4));
    EXPECT_EQ(mfFilterReach(mvFrequencyFilterImage(mvFrequencyBuffer(1, 1))), Pair(1, 1));
}

TEST(FilterReach, OfALoadedImageNeedsAPlaneThatCanBeTransformed) {
    const mvFrequencyFilterImage filter(support::loaded(support::recordOf(12, 8)));
    EXPECT_EQ(mfFilterPlane(filter), Pair(12, 8));
    EXPECT_EQ(thrownBy([&] { mfFilterReach(filter); }), support::kNotPowerOfTwo);
}

}  // namespace
