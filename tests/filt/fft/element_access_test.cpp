// Reading and writing single frequencies in storage and centred coordinates.
#include <filt/fft.h>

#include <gtest/gtest.h>

#include <cmath>

#include "support/buffer_probe.h"
#include "support/compare.h"
#include "support/longs.h"
#include "support/random_planes.h"
#include "support/thrown.h"

namespace {

using support::bufferOf;
using support::planeOf;
using support::randomPlane;
using support::thrownBy;

constexpr long kBeyond32Bits = support::powerOfTwo(32);

TEST(ElementAccess, ReadsEveryElementInStorageCoordinates) {
    const auto plane = randomPlane(8, 4, 1);
    const auto buffer = bufferOf(plane);
    for (long y = 0; y < 4; ++y) {
        for (long x = 0; x < 8; ++x) {
            const mvPair<double> expected(plane.at(x, y).re, plane.at(x, y).im);
            EXPECT_EQ(buffer.get(x, y, false), expected);
            EXPECT_EQ(buffer.getReal(x, y, false), expected.x);
            EXPECT_EQ(buffer.getImaginary(x, y, false), expected.y);
        }
    }
}

TEST(ElementAccess, TakesCentredCoordinatesAsSignedFrequencies) {
    const auto plane = randomPlane(8, 4, 1);
    const auto buffer = bufferOf(plane);
    for (long v = -2; v < 2; ++v) {
        for (long u = -4; u < 4; ++u) {
            const auto& z = plane.at((u + 8) % 8, (v + 4) % 4);
            EXPECT_EQ(buffer.get(u, v, true), mvPair<double>(z.re, z.im)) << u << ", " << v;
        }
    }
}

TEST(ElementAccess, ReadsTheCornersOfALargePlane) {
    const auto plane = randomPlane(256, 256, 1);
    const auto buffer = bufferOf(plane);
    EXPECT_EQ(buffer.getReal(-128, -128, true), plane.at(128, 128).re);
    EXPECT_EQ(buffer.getImaginary(255, 255, false), plane.at(255, 255).im);
    EXPECT_EQ(thrownBy([&] { buffer.get(128, 0, true); }), support::kOutOfBounds);
    EXPECT_EQ(thrownBy([&] { buffer.get(-1, 0, false); }), support::kOutOfBounds);
}

TEST(ElementAccess, WritesOneElementAndNoOther) {
    const auto plane = randomPlane(8, 8, 1);
    auto buffer = bufferOf(plane);
    auto expected = plane;
    buffer.put(3, 4, {1.5, -2.0}, false);
    expected.at(3, 4) = {1.5F, -2.0F};
    buffer.put(3, -1, {0.1, 1e300}, true);
    expected.at(3, 7) = {0.1F, INFINITY};
    buffer.putReal(-4, 0, -0.0, true);
    expected.at(4, 0).re = -0.0F;
    buffer.putImaginary(7, 7, 1e-50, false);
    expected.at(7, 7).im = 0;
    EXPECT_TRUE(support::samePlane(expected, planeOf(buffer)));
}

TEST(ElementAccess, ReadsInOneConventionWhatWasWrittenInTheOther) {
    mvFrequencyBuffer buffer(16, 16);
    buffer.put(3, 4, {1.5, -2.0}, true);
    EXPECT_EQ(buffer.get(3, 4, false), mvPair<double>(1.5, -2.0));
}

TEST(ElementAccess, RefusesCoordinatesOutsideThePlane) {
    const struct {
        long width, height, x, y;
        bool centred, inside;
    } cases[] = {
        {8, 4, 0, 0, false, true},
        {8, 4, 7, 3, false, true},
        {8, 4, 8, 0, false, false},
        {8, 4, 0, 4, false, false},
        {8, 4, -1, 0, false, false},
        {8, 4, 0, -1, false, false},
        {8, 4, kBeyond32Bits, 0, false, false},
        {8, 4, 1 - kBeyond32Bits, 0, false, false},
        {8, 4, 0, support::asLong((std::int64_t{1} << 32) + 1), false, false},
        {8, 4, -4, -2, true, true},
        {8, 4, 3, 1, true, true},
        {8, 4, 4, 0, true, false},
        {8, 4, -5, 0, true, false},
        {8, 4, 0, 2, true, false},
        {8, 4, 0, -3, true, false},
        {8, 4, kBeyond32Bits, 0, true, false},
        {8, 4, 0, -kBeyond32Bits, true, false},
        {5, 3, 7, 3, false, true},  // the padding is part of the plane
        {1, 1, 0, 0, true, true},
        {1, 1, -1, 0, true, false},
        {1, 1, 1, 0, true, false},
        {1, 1, 0, -1, true, false},
        {1, 1, 0, 1, true, false},
        {2, 1, -1, 0, true, true},
        {2, 1, 1, 0, true, false},
    };
    for (const auto& c : cases) {
        mvFrequencyBuffer buffer(c.width, c.height);
        const auto before = planeOf(buffer);
        const char* expected = c.inside ? "nothing" : support::kOutOfBounds;
        const auto check = [&](auto call) {
            EXPECT_EQ(thrownBy(call), expected)
                << c.x << ", " << c.y << " of " << c.width << " x " << c.height << " " << c.centred;
        };
        check([&] { buffer.get(c.x, c.y, c.centred); });
        check([&] { buffer.getReal(c.x, c.y, c.centred); });
        check([&] { buffer.getImaginary(c.x, c.y, c.centred); });
        check([&] { buffer.put(c.x, c.y, {1, 1}, c.centred); });
        check([&] { buffer.putReal(c.x, c.y, 1, c.centred); });
        check([&] { buffer.putImaginary(c.x, c.y, 1, c.centred); });
        if (!c.inside) {
            EXPECT_TRUE(support::samePlane(before, planeOf(buffer)));
        }
    }
}

TEST(ElementAccess, DoesNotLookAtTheMask) {
    auto buffer = bufferOf(randomPlane(4, 4, 1));
    support::BufferProbe::maskFrequencyBuffer(buffer, true, 2, 2);
    buffer.put(1, 1, {3, 4}, false);
    EXPECT_EQ(buffer.get(1, 1, false), mvPair<double>(3, 4));
}

}  // namespace
