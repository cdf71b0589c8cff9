// The Gabor-reject filter's own behaviour, case by case.
#include "support/filter_cases.h"
#include "support/random_planes.h"
#include "support/spectra.h"

namespace {

using cases::Open;
using support::thrownBy;
using Filter = mvFrequencyFilterGaborReject;
using Pair = mvPair<double>;
using Size = mvPair<long>;

Filter round(double sigma, double frequency, Size size, long radius) {
    return Filter(Pair(sigma, sigma), Pair(0, 0), mvRadian(0), frequency, size, radius);
}

TEST(GaborReject, HasTheSupportOfItsTwin) {
    const Filter filter = round(0.01, 0.25, Size(256, 256), 0);
    EXPECT_EQ(filter.supportWidth(), 33);
    EXPECT_EQ(filter.supportHeight(), 33);
    EXPECT_EQ(Open<Filter>(filter).data()[16 * 33 + 16], 0.0F);
}

TEST(GaborReject, ChangesItsSupportAloneAndNotTheLastColumn) {
    const Filter filter = round(0.01, 0.25, Size(256, 256), 0);
    mvFrequencyBuffer buffer = support::bufferOf(support::constantPlane(256, 256, {0.1F, 3.0F}));
    const mvPair<double> one = buffer.get(0, 0, false);
    filter.apply(buffer);
    EXPECT_EQ(buffer.get(64, 0, true), Pair(0.0, 0.0));
    const mvPelBuffer<double> image = buffer.getRealImage(true);
    for (long y = 0; y < 256; ++y) {
        for (long x = 0; x < 256; ++x) {
            const bool inside = x >= 176 && x <= 207 && y >= 112 && y <= 144;
            if (!inside) {
                ASSERT_EQ(image.pel(x, y), one.x) << x << ", " << y;
            }
        }
    }
    EXPECT_LT(image.pel(190, 128), one.x);
}

TEST(GaborReject, LeavesTheColumnBehindTheLast) {
    // A support of 3 x 3 around DC, of which the right column is not used.
    const Filter filter = round(2.3 / 64, 0.0, Size(8, 8), 0);
    ASSERT_EQ(filter.supportWidth(), 3);
    mvFrequencyBuffer buffer = support::bufferOf(support::constantPlane(8, 8, {1.0F, 0.0F}));
    filter.apply(buffer);
    for (long v = -1; v <= 1; ++v) {
        EXPECT_LT(buffer.getReal(-1, v, true), 1.0) << v;
        EXPECT_LT(buffer.getReal(0, v, true), 1.0) << v;
        EXPECT_EQ(buffer.getReal(1, v, true), 1.0) << v;
    }
    EXPECT_EQ(buffer.getReal(0, 2, true), 1.0);
    EXPECT_EQ(buffer.getReal(0, -2, true), 1.0);
}

TEST(GaborReject, ProtectsTheSquareAroundDC) {
    for (const long radius : {0L, 1L, 2L}) {
        const Filter filter = round(0.2, 0.0, Size(64, 64), radius);
        mvFrequencyBuffer buffer = support::bufferOf(support::constantPlane(64, 64, {0.1F, 1.0F}));
        const mvPair<double> one = buffer.get(0, 0, false);
        filter.apply(buffer);
        for (long v = -2; v <= 2; ++v) {
            for (long u = -2; u <= 2; ++u) {
                const bool kept = std::abs(u) < radius && std::abs(v) < radius;
                EXPECT_EQ(buffer.get(u, v, true) == one, kept) << u << ", " << v;
            }
        }
    }
}

TEST(GaborReject, ClearsTheBandInBothForms) {
    const Filter filter = round(0.05, 0.2, Size(16, 8), 0);
    const mvFrequencyBuffer src =
        support::bufferOf(support::someSpectrum(support::randomPlane(16, 8, 1)));
    mvFrequencyBuffer buffer(src);
    mvFrequencyBuffer dst(src);
    filter.apply(buffer);
    filter.apply(src, dst);
    for (const mvFrequencyBuffer* b : {&buffer, &dst}) {
        EXPECT_EQ(mvi::BufferAccess::masked(*b), 0);
        EXPECT_EQ(mvi::BufferAccess::maskedMiny(*b), 0);
        EXPECT_EQ(mvi::BufferAccess::maskedMaxy(*b), 0);
    }
}

TEST(GaborReject, AFailingProtectionSquareLeavesBothBuffersUnchanged) {
    for (const bool spent : {false, true}) {
        const Filter filter = round(0.05, 0.2, Size(8, 8), spent ? 1 : 5);
        reference::Spectrum before = support::someSpectrum(support::randomPlane(8, 8, 2));
        before.inverseComputed = spent;
        const reference::Spectrum other = support::someSpectrum(support::randomPlane(4, 2, 3));
        mvFrequencyBuffer buffer = support::bufferOf(before);
        mvFrequencyBuffer dst = support::bufferOf(other);
        const char* thrown = spent ? support::kSpent : support::kOutOfBounds;
        EXPECT_EQ(thrownBy([&] { filter.apply(buffer, dst); }), thrown);
        EXPECT_EQ(thrownBy([&] { filter.apply(buffer, buffer); }), thrown);
        EXPECT_EQ(thrownBy([&] { filter.apply(buffer); }), thrown);
        EXPECT_TRUE(support::sameSpectrum(before, buffer));
        EXPECT_TRUE(support::sameSpectrum(other, dst));
    }
}

TEST(GaborReject, ANaNInTheResponseEqualsAnything) {
    const Filter filter = round(0.05, 0.2, Size(16, 8), 0);
    Open<Filter> other(filter);
    other.data()[4] = std::numeric_limits<float>::quiet_NaN();
    EXPECT_TRUE(filter == other);
    EXPECT_TRUE(static_cast<const Filter&>(other) == filter);
}

}  // namespace
