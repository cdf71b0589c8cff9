// The reference kernel is tested before it judges others.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "reference/fft/dft.h"
#include "reference/fft/kernel.h"
#include "reference/fft/transform_1d.h"
#include "reference/fft/transpose.h"
#include "support/compare.h"
#include "support/random_planes.h"

namespace {

using reference::Complex;
using reference::fft2D;
using reference::Plane;
using reference::realFFT2D;
using support::paddedSizes;
using support::randomPlane;

constexpr double kClose = 2e-6;

Plane forward(Plane plane) {
    fft2D(plane, 1, 0, plane.height);
    return plane;
}

Plane inverse(Plane plane) {
    fft2D(plane, -1, 0, plane.height);
    return plane;
}

reference::DoublePlane widened(const Plane& plane, double factor = 1) {
    reference::DoublePlane result;
    for (const Complex& z : plane.elements) result.emplace_back(factor * z.re, factor * z.im);
    return result;
}

// The real parts as the real kernel takes them: packed, with rubbish in the rest of each row.
Plane packed(const Plane& plane) {
    Plane result(plane.width, plane.height);
    for (int y = 0; y < plane.height; ++y) {
        float* row = &result.row(y)->re;
        for (int x = 0; x < plane.width; ++x) {
            row[x] = plane.at(x, y).re;
            row[plane.width + x] = plane.width == 1 ? 0.0F : 1e9F;
        }
    }
    return result;
}

int pollsOfFFT2D(int w, int h, long rowLow, long rowHigh) {
    int polls = 0;
    Plane plane(w, h);
    fft2D(plane, 1, rowLow, rowHigh, [&] { ++polls; });
    return polls;
}

int pollsOfRealFFT2D(int w, int h) {
    int polls = 0;
    Plane plane(w, h);
    realFFT2D(plane, [&] { ++polls; });
    return polls;
}

TEST(BitReversal, RecordsEachSwapOnce) {
    const std::vector<int> expected = {0, -1, 2 * 5, -1, 2 * 7, -1, -1, -1};
    const auto table = reference::makeBitReversal(8);
    EXPECT_EQ(std::vector<int>(table.begin(), table.begin() + 8), expected);
}

TEST(ReferenceTransform1D, EqualsTheDefinition) {
    for (int n = 1; n <= 2048; n *= 2) {
        for (const int direction : {1, -1}) {
            Plane plane = randomPlane(n, 1, 3);
            const auto expected = reference::definitionDFT2D(plane, direction);
            reference::transform1D(plane.row(0), n, direction, reference::makeTwiddles(),
                                   reference::makeBitReversal(n));
            EXPECT_LT(reference::relativeError(plane, expected), 1e-7 * (n + 8)) << n;
        }
    }
}

TEST(ReferenceKernel, EqualsTheDefinition) {
    for (const auto& [w, h] : paddedSizes(1024)) {
        const Plane plane = randomPlane(w, h, 5);
        EXPECT_LT(reference::relativeError(forward(plane), reference::definitionDFT2D(plane, 1)),
                  1e-7 * (w + h))
            << w << " x " << h;
        EXPECT_LT(reference::relativeError(inverse(plane), reference::definitionDFT2D(plane, -1)),
                  1e-7 * (w + h))
            << w << " x " << h;
    }
}

TEST(ReferenceKernel, LeavesASingleElementAsItIs) {
    const Plane plane = randomPlane(1, 1, 1);
    EXPECT_TRUE(support::samePlane(plane, forward(plane)));
    EXPECT_TRUE(support::samePlane(plane, inverse(plane)));
}

TEST(ReferenceKernel, GivesTheInputBackTimesTheArea) {
    for (const auto& [w, h] : paddedSizes(1 << 14)) {
        const Plane plane = randomPlane(w, h, 9);
        EXPECT_LT(reference::relativeError(inverse(forward(plane)), widened(plane, w * h)),
                  2e-7 * (w + h))
            << w << " x " << h;
    }
}

TEST(ReferenceKernel, IsLinear) {
    const Plane a = randomPlane(32, 16, 1);
    const Plane b = randomPlane(32, 16, 2);
    Plane sum(32, 16);
    auto expected = widened(forward(a), 3);
    const auto second = widened(forward(b));
    for (std::size_t i = 0; i < sum.elements.size(); ++i) {
        sum.elements[i] = {3 * a.elements[i].re + b.elements[i].re,
                           3 * a.elements[i].im + b.elements[i].im};
        expected[i] += second[i];
    }
    EXPECT_LT(reference::relativeError(forward(sum), expected), kClose);
}

TEST(ReferenceKernel, TurnsAnImpulseIntoAConstant) {
    const Plane spectrum = forward(support::impulsePlane(16, 64, 0, 0, {1.5F, -2}));
    EXPECT_TRUE(support::samePlane(support::constantPlane(16, 64, {1.5F, -2}), spectrum));
}

TEST(ReferenceKernel, TurnsAShiftIntoAPhase) {
    const int w = 16;
    const int h = 32;
    const Plane plane = randomPlane(w, h, 4);
    for (const auto& [dx, dy] : {std::pair(3, 0), std::pair(0, 5)}) {
        Plane shifted(w, h);
        for (int y = 0; y < h; ++y) {
            for (int x = 0; x < w; ++x) shifted.at((x + dx) % w, (y + dy) % h) = plane.at(x, y);
        }
        auto expected = widened(forward(plane));
        for (int v = 0; v < h; ++v) {
            for (int u = 0; u < w; ++u) {
                const double angle = -2 * std::numbers::pi * (1.0 * u * dx / w + 1.0 * v * dy / h);
                expected[plane.index(u, v)] *= std::polar(1.0, angle);
            }
        }
        EXPECT_LT(reference::relativeError(forward(shifted), expected), kClose);
    }
}

TEST(ReferenceKernel, KeepsTheEnergy) {
    const Plane plane = randomPlane(64, 16, 6);
    const auto energy = [](const Plane& p) {
        double sum = 0;
        for (const Complex& z : p.elements) sum += std::norm(std::complex<double>(z.re, z.im));
        return sum;
    };
    EXPECT_NEAR(energy(forward(plane)) / (1024 * energy(plane)), 1, kClose);
}

TEST(ReferenceRealKernel, EqualsTheComplexKernelOnRealInput) {
    for (const auto& [w, h] : paddedSizes(1 << 14)) {
        Plane plane = randomPlane(w, h, 8);
        for (Complex& z : plane.elements) z.im = 0;
        Plane real = packed(plane);
        realFFT2D(real);
        EXPECT_LT(reference::relativeError(real, widened(forward(plane))), 1e-7 * (w + h))
            << w << " x " << h;
        EXPECT_EQ(real.at(0, 0).im, 0) << w << " x " << h;
    }
}

TEST(ReferenceRealKernel, DoesNotNegateTheOnlyPointOfTwoSamples) {
    Plane plane(2, 1);
    plane.at(0, 0) = {5, 3};
    realFFT2D(plane);
    EXPECT_EQ(plane.at(0, 0).re, 8);
    EXPECT_EQ(plane.at(1, 0).re, 2);
}

TEST(ReferenceKernel, SkipsRowsOutsideTheBandInItsFirstPass) {
    // Zero rows may be skipped: stored rows 0 .. 7 and 9 .. 15 have shifted indices 8 .. 15, 1
    // .. 7.
    for (const int w : {4, 16, 64}) {
        Plane plane(w, 16);
        for (const int y : {0, 1, 14}) {
            for (int x = 0; x < w; ++x) plane.at(x, y) = {static_cast<float>(x + y), 1};
        }
        Plane banded = plane;
        fft2D(banded, -1, 6, 9);
        EXPECT_TRUE(support::samePlane(inverse(plane), banded)) << w;
        Plane narrow = plane;
        fft2D(narrow, -1, 8, 9);
        EXPECT_FALSE(support::samePlane(inverse(plane), narrow)) << w;
    }
}

TEST(ReferenceTranspose, LeavesTilesOutsideTheBandAlone) {
    // With rows 8 .. 9 of 16 in the band, L is 0 and U is 1 in the upper half, 16 and 17 below.
    Plane plane = randomPlane(16, 16, 2);
    const Plane before = plane;
    reference::transposeSquare(plane.elements.data(), 16, 8, 9, reference::noPoll);
    const auto isOutside = [](int base) { return base == 4 || base == 8; };
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 16; ++x) {
            const bool alone = isOutside(y / 4 * 4) && isOutside(x / 4 * 4);
            const Complex expected = alone ? before.at(x, y) : before.at(y, x);
            EXPECT_EQ(plane.at(x, y).re, expected.re) << x << ", " << y;
        }
    }
}

TEST(ReferenceTranspose, HalfGivesTheRowsOrColumnsThatTheRealTransformNeeds) {
    for (int n = 2; n <= 32; n *= 2) {
        const Plane before = randomPlane(n, n, 2);
        Plane rows = before;
        Plane columns = before;
        reference::transposeSquareHalf(rows.elements.data(), n, true, reference::noPoll);
        reference::transposeSquareHalf(columns.elements.data(), n, false, reference::noPoll);
        for (int k = 0; k <= n / 2; ++k) {
            for (int i = 0; i < n; ++i) {
                EXPECT_EQ(rows.at(i, k).im, before.at(k, i).im);
                EXPECT_EQ(columns.at(k, i).im, before.at(i, k).im);
            }
        }
    }
}

TEST(ReferenceKernel, PollsBeforeEvery16thTransformAndEachTiledTranspose) {
    EXPECT_EQ(pollsOfFFT2D(1, 1, 0, 1), 2);
    EXPECT_EQ(pollsOfFFT2D(2, 2, 0, 2), 2);
    EXPECT_EQ(pollsOfFFT2D(4, 4, 0, 4), 4);
    EXPECT_EQ(pollsOfFFT2D(2, 64, 0, 64), 5);
    EXPECT_EQ(pollsOfFFT2D(4, 64, 0, 64), 7);
    EXPECT_EQ(pollsOfFFT2D(1, 64, 0, 64), 5);
    EXPECT_EQ(pollsOfFFT2D(64, 64, 0, 64), 10);
    EXPECT_EQ(pollsOfFFT2D(64, 64, 33, 47), 6);
    EXPECT_EQ(pollsOfFFT2D(64, 64, 32, 48), 8);
}

TEST(ReferenceRealKernel, PollsForHalfTheColumnsAndTheFill) {
    EXPECT_EQ(pollsOfRealFFT2D(1, 1), 2);
    EXPECT_EQ(pollsOfRealFFT2D(1, 64), 2);
    EXPECT_EQ(pollsOfRealFFT2D(2, 1), 3);
    EXPECT_EQ(pollsOfRealFFT2D(4, 4), 3);
    EXPECT_EQ(pollsOfRealFFT2D(8, 8), 5);
    EXPECT_EQ(pollsOfRealFFT2D(64, 64), 4 + 3 + 2 + 1);
    EXPECT_EQ(pollsOfRealFFT2D(4, 64), 4 + 1 + 2 + 1);
    EXPECT_EQ(pollsOfRealFFT2D(2, 64), 4 + 1 + 1);
}

}  // namespace
