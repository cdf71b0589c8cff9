// The Gabor filter's own behaviour, case by case.
#include <numbers>

#include "support/filter_cases.h"
#include "support/filter_classes.h"
#include "support/loading.h"
#include "support/random_planes.h"
#include "support/spectra.h"

namespace {

using std::numbers::pi;
using support::thrownBy;
using Filter = mvFrequencyFilterGabor;
using Pair = mvPair<double>;
using Size = mvPair<long>;

Filter round(double sigma, double angle, double frequency, Size size, long radius = 0) {
    return Filter(Pair(sigma, sigma), Pair(0, 0), mvRadian(angle), frequency, size, radius);
}

mvFrequencyBuffer filteredOnes(const Filter& filter, int width, int height) {
    mvFrequencyBuffer buffer = support::bufferOf(support::constantPlane(width, height, {1, 1}));
    filter.apply(buffer);
    return buffer;
}

struct Extent {
    long left, right, top, bottom;
    bool operator==(const Extent&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Extent& e) {
    return out << "columns " << e.left << " to " << e.right << ", rows " << e.top << " to "
               << e.bottom;
}

// Where the plane is not zero, in shifted coordinates.
Extent extentOf(const mvFrequencyBuffer& buffer) {
    const mvPelBuffer<double> image = buffer.getRealImage(true);
    Extent extent{image.width(), -1, image.height(), -1};
    for (long y = 0; y < image.height(); ++y) {
        for (long x = 0; x < image.width(); ++x) {
            if (image.pel(x, y) == 0.0) continue;
            extent.left = std::min(extent.left, x);
            extent.right = std::max(extent.right, x);
            extent.top = std::min(extent.top, y);
            extent.bottom = std::max(extent.bottom, y);
        }
    }
    return extent;
}

TEST(Gabor, KeepsColumnsUpToTheLastAndAllRowsOfItsSupport) {
    const Filter filter = round(0.01, 0.0, 0.25, Size(256, 256));
    EXPECT_EQ(filter.supportWidth(), 33);
    EXPECT_EQ(filter.supportHeight(), 33);
    const mvFrequencyBuffer buffer = filteredOnes(filter, 256, 256);
    EXPECT_EQ(extentOf(buffer), (Extent{176, 207, 112, 144}));
    EXPECT_EQ(buffer.get(64, 0, true), Pair(1.0, 1.0));
}

TEST(Gabor, MarksTheBandOfRows) {
    const mvFrequencyBuffer buffer = filteredOnes(round(0.01, 0.0, 0.25, Size(256, 256)), 256, 256);
    EXPECT_EQ(mvi::BufferAccess::masked(buffer), 1);
    EXPECT_EQ(mvi::BufferAccess::maskedMiny(buffer), 112);
    EXPECT_EQ(mvi::BufferAccess::maskedMaxy(buffer), 144);
}

TEST(Gabor, TheBandIsNotClipped) {
    const mvFrequencyBuffer buffer =
        filteredOnes(round(0.01, -pi / 2, 0.5, Size(256, 256)), 256, 256);
    EXPECT_EQ(mvi::BufferAccess::maskedMiny(buffer), -16);
    EXPECT_EQ(mvi::BufferAccess::maskedMaxy(buffer), 16);
    EXPECT_EQ(extentOf(buffer), (Extent{112, 143, 0, 16}));
}

TEST(Gabor, MakesItsSupportOdd) {
    // 8 * 256 * sigma + 12.8, truncated.
    EXPECT_EQ(round(21.3 / 2048, 0, 0.25, Size(256, 256)).supportWidth(), 35);
    EXPECT_EQ(round(22.3 / 2048, 0, 0.25, Size(256, 256)).supportWidth(), 35);
    EXPECT_EQ(round(23.3 / 2048, 0, 0.25, Size(256, 256)).supportWidth(), 37);
}

TEST(Gabor, SupportTakesTheLargerProjection) {
    const Pair sigma(0.04, 0.01);
    const Pair plateau(0.02, 0.005);
    const Size size(256, 128);
    // Along x: 8 * 10.24 + 2 * 5.12 + 12.8 and, halved, 8 * 2.56 + 2 * 1.28 and 6.4.
    const Filter flat(sigma, plateau, mvRadian(0), 0.25, size, 0);
    EXPECT_EQ(flat.supportWidth(), 105);
    EXPECT_EQ(flat.supportHeight(), 17);
    // Upright, the cosine of pi / 2 is all but 0.
    const Filter upright(sigma, plateau, mvRadian(pi / 2), 0.25, size, 0);
    EXPECT_EQ(upright.supportWidth(), 35);
    EXPECT_EQ(upright.supportHeight(), 53);
}

TEST(Gabor, FrequencyZeroSitsOnDC) {
    const mvFrequencyBuffer kept = filteredOnes(round(0.05, 1.0, 0.0, Size(64, 64), 0), 64, 64);
    EXPECT_EQ(kept.get(0, 0, true), Pair(1.0, 1.0));
    const mvFrequencyBuffer removed = filteredOnes(round(0.05, 1.0, 0.0, Size(64, 64), 1), 64, 64);
    EXPECT_EQ(removed.get(0, 0, true), Pair(0.0, 0.0));
    EXPECT_GT(removed.getReal(1, 0, true), 0.5);
}

TEST(Gabor, TheHalfBeyondThePlaneIsDropped) {
    const mvFrequencyBuffer buffer = filteredOnes(round(0.01, 0.0, 0.5, Size(256, 256)), 256, 256);
    EXPECT_EQ(extentOf(buffer), (Extent{240, 255, 112, 144}));
}

TEST(Gabor, KeepsNoMirrorLobe) {
    const mvFrequencyBuffer buffer = filteredOnes(round(0.01, 0.0, 0.25, Size(256, 256)), 256, 256);
    EXPECT_EQ(buffer.get(-64, 0, true), Pair(0.0, 0.0));
}

// The peak of the response, in signed frequencies.
mvPair<long> peakOf(const mvFrequencyBuffer& buffer) {
    mvPair<long> peak(0, 0);
    for (long v = -buffer.height() / 2; v < buffer.height() / 2; ++v) {
        for (long u = -buffer.width() / 2; u < buffer.width() / 2; ++u) {
            if (buffer.getReal(u, v, true) > buffer.getReal(peak.x, peak.y, true)) {
                peak = mvPair<long>(u, v);
            }
        }
    }
    return peak;
}

TEST(Gabor, PeaksWhereItPoints) {
    const Size size(256, 256);
    EXPECT_EQ(peakOf(filteredOnes(round(0.02, 0.0, 0.25, size), 256, 256)), Size(64, 0));
    EXPECT_EQ(peakOf(filteredOnes(round(0.02, 0.0, 64.25 / 256, size), 256, 256)), Size(64, 0));
}

TEST(Gabor, ANegativeFractionalOffsetLandsOneNearerToDC) {
    // 64.75 bins to the left: the response has its peak a quarter of a bin to the right of its
    // centre element, as if that one were put at -65; but truncation puts it at -64.
    const Size size(256, 256);
    EXPECT_EQ(peakOf(filteredOnes(round(0.02, pi, 64.75 / 256, size), 256, 256)), Size(-64, 0));
    EXPECT_EQ(peakOf(filteredOnes(round(0.02, -pi / 2, 64.75 / 256, size), 256, 256)).y, -64);
}

TEST(Gabor, ASideOfOneHasItsCentreAtZero) {
    for (const Size& size : {Size(1, 1), Size(1, 8), Size(8, 1)}) {
        const Filter filter = round(0.1, 0.0, 0.0, size);
        const mvFrequencyBuffer buffer =
            filteredOnes(filter, static_cast<int>(size.x), static_cast<int>(size.y));
        EXPECT_EQ(mvi::BufferAccess::masked(buffer), 1);
        const long centre = size.y / 2;
        const long half = filter.supportHeight() / 2;
        EXPECT_EQ(mvi::BufferAccess::maskedMiny(buffer), centre - half);
        EXPECT_EQ(mvi::BufferAccess::maskedMaxy(buffer), centre + half);
    }
}

TEST(Gabor, ASupportOfOneColumnKeepsNothing) {
    // Columns stop before the last, which is the only one.
    const Filter filter = round(1e-3, 0.0, 0.0, Size(1, 1));
    ASSERT_EQ(filter.supportWidth(), 1);
    EXPECT_EQ(filteredOnes(filter, 1, 1).get(0, 0, false), Pair(0.0, 0.0));
}

TEST(Gabor, PlateauIsFlat) {
    const Filter filter(Pair(0.01, 0.01), Pair(4.0 / 256, 2.0 / 256), mvRadian(0), 0.25,
                        Size(256, 256), 0);
    const mvFrequencyBuffer buffer = filteredOnes(filter, 256, 256);
    for (long v = -4; v <= 4; ++v) {
        for (long u = -6; u <= 6; ++u) {
            const bool flat = std::abs(u) <= 4 && std::abs(v) <= 2;
            EXPECT_EQ(buffer.getReal(64 + u, v, true) == 1.0, flat) << u << ", " << v;
        }
    }
}

TEST(Gabor, ARemovalSquareThatReachesOutIsFoundAfterFiltering) {
    mvFrequencyBuffer buffer = support::bufferOf(support::constantPlane(8, 8, {1, 1}));
    EXPECT_EQ(thrownBy([&] { round(1, 0, 0, Size(8, 8), 5).apply(buffer); }),
              support::kOutOfBounds);
    EXPECT_EQ(mvi::BufferAccess::masked(buffer), 1);
    for (long u = -4; u < 4; ++u) EXPECT_EQ(buffer.getReal(u, -4, true), 0.0);
    EXPECT_LT(buffer.getReal(-4, -3, true), 1.0);
    EXPECT_GT(buffer.getReal(-4, -3, true), 0.0);
}

TEST(Gabor, ASpentBufferIsFilteredUnlessASquareIsToBeRemoved) {
    mvFrequencyBuffer buffer = support::bufferOf(support::constantPlane(8, 8, {1, 1}));
    mvi::BufferAccess::setInverseComputed(buffer, true);
    EXPECT_EQ(thrownBy([&] { round(1, 0, 0, Size(8, 8), 0).apply(buffer); }), "nothing");
    EXPECT_EQ(thrownBy([&] { round(1, 0, 0, Size(8, 8), 1).apply(buffer); }), support::kSpent);
    EXPECT_EQ(thrownBy([&] { round(1, 0, 0, Size(8, 8), 1).apply(buffer, buffer); }), "nothing");
    EXPECT_FALSE(mvi::BufferAccess::inverseComputed(buffer));
}

TEST(Gabor, ANaNInTheResponseEqualsAnything) {
    const Filter filter = round(0.05, 0.0, 0.2, Size(16, 8));
    Filter other(filter);
    other.data()[4] = std::numeric_limits<float>::quiet_NaN();
    EXPECT_TRUE(filter == other);
    EXPECT_TRUE(other == filter);
    other.data()[4] = 7.0F;
    EXPECT_FALSE(filter == other);
}

TEST(Gabor, DataIsPublicAndMayBeNull) {
    EXPECT_EQ(Filter().data(), nullptr);
    EXPECT_NE(round(0.05, 0.0, 0.2, Size(16, 8)).data(), nullptr);
}

TEST(Gabor, SupportHeightNeedsAResponse) {
    EXPECT_EQ(thrownBy([] { Filter().supportHeight(); }), cases::kNoResponse);
    EXPECT_EQ(thrownBy([] { mvFrequencyFilterGaborReject().supportHeight(); }), cases::kNoResponse);
}

TEST(Gabor, ItsSerializeIsPublic) {
    mvFrequencyFilterGabor filter;
    std::ostringstream out;
    mvArchive ar(out);
    EXPECT_EQ(archive::loadingThrows([&] { filter.serialize_(ar, 1); }), archive::Gabor::kUnknown);
    filter.serialize_(ar, 0);
    EXPECT_EQ(out.str(), archive::stored(filter).substr(1));
}

}  // namespace
