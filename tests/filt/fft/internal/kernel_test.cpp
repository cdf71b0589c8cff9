// The two-dimensional kernel: the reference's bits on every path, accuracy, special values, bands.
//
// Under a sanitizer planes above support::kLargestArea elements are left to the other builds.
#include <filt/fft/internal/kernel.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "reference/fft/dft.h"
#include "reference/fft/kernel.h"
#include "support/attention.h"
#include "support/compare.h"
#include "support/kernel_paths.h"
#include "support/random_planes.h"
#include "support/sanitizers.h"

namespace {

using reference::Plane;
using support::paddedSizes;
using support::randomPlane;
using support::supportedPaths;

struct Band {
    int low;
    int high;
};

// Runs `call` on the plane's floats at a 16-byte boundary that is no 32-byte boundary, with guards
// on both sides.
template <class Call>
Plane onAlignedFloats(Plane plane, Call call) {
    constexpr std::size_t kGuards = 4;
    constexpr float kGuard = 12345;
    constexpr std::align_val_t kAlignment{64};
    const auto isGuard = [](float value) { return value == kGuard; };
    const std::size_t size = plane.floatCount() + 2 * kGuards;
    const auto release = [](float* p) { ::operator delete(p, kAlignment); };
    const std::unique_ptr<float, decltype(release)> block(
        static_cast<float*>(::operator new(size * sizeof(float), kAlignment)), release);
    float* const data = block.get() + kGuards;
    float* const end = data + plane.floatCount();

    std::fill_n(block.get(), size, kGuard);
    std::copy_n(plane.floats(), plane.floatCount(), data);
    call(data, mvPair<long>(plane.width, plane.height));
    std::copy(data, end, plane.floats());
    EXPECT_TRUE(std::all_of(block.get(), data, isGuard));
    EXPECT_TRUE(std::all_of(end, end + kGuards, isGuard));
    return plane;
}

Plane transformed(const Plane& plane, int direction, Band band,
                  const mvi::KernelPath& path = mvi::bestKernelPath()) {
    return onAlignedFloats(plane, [&](float* data, mvPair<long> size) {
        mf_FFT2D(data, size, direction, band.low, band.high, path);
    });
}

Plane realTransformed(const Plane& plane, Band band,
                      const mvi::KernelPath& path = mvi::bestKernelPath()) {
    return onAlignedFloats(plane, [&](float* data, mvPair<long> size) {
        mf_RealFFT2D(data, size, 1, band.low, band.high, path);
    });
}

Plane expectedTransform(Plane plane, int direction, Band band) {
    reference::fft2D(plane, direction, band.low, band.high);
    return plane;
}

Band allRows(const Plane& plane) {
    return {0, plane.height};
}

Plane realTransformed(const Plane& plane) {
    return realTransformed(plane, allRows(plane));
}

Plane expectedRealTransform(Plane plane) {
    reference::realFFT2D(plane);
    return plane;
}

// What the one-image forward transform hands to the real kernel; the rest of each row is rubbish.
Plane asRealInput(Plane plane) {
    if (plane.width > 1) return plane;
    for (auto& z : plane.elements) z.im = 0;
    return plane;
}

std::string sizeOf(const Plane& plane) {
    return std::to_string(plane.width) + " x " + std::to_string(plane.height);
}

// transform(path) has the expected bits on every path.
template <class Transform>
void expectOnEveryPath(const Plane& expected, Transform transform, const std::string& what) {
    for (const mvi::KernelPath* path : supportedPaths()) {
        EXPECT_TRUE(support::samePlane(expected, transform(*path), true))
            << what << ", " << sizeOf(expected) << ", path " << path->name;
    }
}

void expectReferenceBits(const Plane& plane, int direction, Band band, const std::string& what) {
    expectOnEveryPath(
        expectedTransform(plane, direction, band),
        [&](const mvi::KernelPath& path) { return transformed(plane, direction, band, path); },
        what + ", direction " + std::to_string(direction) + ", band " + std::to_string(band.low) +
            " .. " + std::to_string(band.high));
}

// All three transforms of the plane against the reference.
void expectReferenceBits(const Plane& plane, const std::string& what) {
    for (const int direction : {1, -1}) {
        expectReferenceBits(plane, direction, allRows(plane), what);
    }
    const Plane real = asRealInput(plane);
    expectOnEveryPath(
        expectedRealTransform(real),
        [&](const mvi::KernelPath& path) { return realTransformed(real, allRows(real), path); },
        what + ", real");
}

// Twiddles come from rotations, whose error grows with the length: the relative error of the whole
// plane stays below (W + H) / 4 units of 2^-24, that of its worst element, relative to the root
// mean square of all, below W + H units. Measured: at most half of that, and far less for most.
void expectAccuracy(const Plane& actual, const Plane& input, int direction) {
    const auto expected = reference::fastDFT2D(input, direction);
    const double unit = std::ldexp(1.0, -24) * (input.width + input.height);
    EXPECT_LE(reference::relativeError(actual, expected), unit / 4) << sizeOf(input);
    double worst = 0;
    double energy = 0;
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const auto& z = actual.elements[i];
        worst = std::max(worst, std::abs(std::complex<double>(z.re, z.im) - expected[i]));
        energy += std::norm(expected[i]);
    }
    EXPECT_LE(worst, unit * std::sqrt(energy / static_cast<double>(expected.size())))
        << sizeOf(input);
}

TEST(KernelPaths, HoldTheBestOneAndEndWithPlainCode) {
    const auto paths = supportedPaths();
    ASSERT_FALSE(paths.empty());
    EXPECT_EQ(paths.front(), &mvi::bestKernelPath());
    EXPECT_STREQ(paths.back()->name, "plain");
    for (const mvi::KernelPath* path : paths) RecordProperty(path->name, "supported");
}

TEST(Kernel, HasTheReferencesBitsForAllSizes) {
    for (const auto& [w, h] : paddedSizes(support::kLargestArea)) {
        expectReferenceBits(randomPlane(w, h, static_cast<unsigned>(w + h)), "random");
    }
}

TEST(Kernel, HasTheReferencesBitsForSpecialValues) {
    for (const auto& [w, h] : paddedSizes(1 << 13)) {
        expectReferenceBits(support::specialPlane(w, h, 1, false), "zeros, denormals, large");
        expectReferenceBits(support::specialPlane(w, h, 2, true), "infinities and NaNs");
        expectReferenceBits(support::constantPlane(w, h, {1.25F, -3}), "constant");
        expectReferenceBits(support::constantPlane(w, h, {0.0F, 0.0F}), "zeros");
        expectReferenceBits(support::constantPlane(w, h, {-0.0F, 0.0F}), "negative zero, zero");
        expectReferenceBits(support::constantPlane(w, h, {0.0F, -0.0F}), "zero, negative zero");
        expectReferenceBits(support::constantPlane(w, h, {-0.0F, -0.0F}), "negative zeros");
        expectReferenceBits(support::impulsePlane(w, h, 0, 0, {3, 1}), "impulse");
        expectReferenceBits(support::impulsePlane(w, h, w - 1, h / 2, {-1, 2}), "far impulse");
        expectReferenceBits(support::impulsePlane(w, h, w / 2, h - 1, {0, INFINITY}), "infinity");
    }
}

TEST(Kernel, IsAccurateForAllSizes) {
    for (const auto& [w, h] : paddedSizes(support::kLargestArea)) {
        const Plane plane = randomPlane(w, h, 11);
        expectAccuracy(transformed(plane, 1, allRows(plane)), plane, 1);
        if (w * h <= 1 << 18) expectAccuracy(transformed(plane, -1, allRows(plane)), plane, -1);
    }
}

TEST(RealKernel, IsAccurateForAllSizes) {
    for (const auto& [w, h] : paddedSizes(support::kLargestArea)) {
        Plane plane = randomPlane(w, h, 12);
        Plane packed(w, h);
        for (int y = 0; y < h; ++y) {
            float* row = &packed.row(y)->re;
            for (int x = 0; x < w; ++x) {
                row[x] = plane.at(x, y).re;
                plane.at(x, y).im = 0;
                if (w > 1) row[w + x] = NAN;  // not read
            }
        }
        const Plane spectrum = realTransformed(packed);
        expectAccuracy(spectrum, plane, 1);
        EXPECT_EQ(spectrum.at(0, 0).im, 0) << sizeOf(plane);
    }
}

TEST(RealKernel, EqualsTheComplexKernelOnRealInput) {
    for (const auto& [w, h] : paddedSizes(support::kLargestArea)) {
        Plane plane = randomPlane(w, h, 13);
        Plane packed(w, h);
        for (int y = 0; y < h; ++y) {
            for (int x = 0; x < w; ++x) {
                plane.at(x, y).im = 0;
                (&packed.row(y)->re)[x] = plane.at(x, y).re;
            }
        }
        const Plane complexWay = transformed(plane, 1, allRows(plane));
        reference::DoublePlane expected;
        for (const auto& z : complexWay.elements) expected.emplace_back(z.re, z.im);
        EXPECT_LE(reference::relativeError(realTransformed(packed), expected),
                  std::ldexp(1.0, -25) * (w + h))
            << sizeOf(plane);
    }
}

TEST(Kernel, LeavesASingleElementAsItIs) {
    for (const float value : {2.5F, -0.0F, INFINITY}) {
        const Plane plane = support::constantPlane(1, 1, {value, -value});
        EXPECT_TRUE(support::samePlane(plane, transformed(plane, 1, {0, 1})));
        EXPECT_TRUE(support::samePlane(plane, transformed(plane, -1, {0, 1})));
    }
    const Plane real = support::constantPlane(1, 1, {4, 0});
    EXPECT_TRUE(support::samePlane(real, realTransformed(real)));
}

TEST(Kernel, GivesTheInputBackTimesTheArea) {
    for (const auto& [w, h] : paddedSizes(1 << 16)) {
        const Plane plane = randomPlane(w, h, 14);
        const Plane back = transformed(transformed(plane, 1, allRows(plane)), -1, allRows(plane));
        reference::DoublePlane expected;
        for (const auto& z : plane.elements) {
            expected.emplace_back(static_cast<double>(z.re) * w * h,
                                  static_cast<double>(z.im) * w * h);
        }
        EXPECT_LE(reference::relativeError(back, expected), std::ldexp(1.0, -24) * (w + h))
            << sizeOf(plane);
    }
}

TEST(Kernel, TakesNegativeDirectionsAsInverseAndAllOthersAsForward) {
    const Plane plane = randomPlane(8, 16, 1);
    const auto turned = [&](int direction) { return transformed(plane, direction, {0, 16}); };
    EXPECT_TRUE(support::samePlane(turned(-1), turned(-1000)));
    EXPECT_TRUE(support::samePlane(turned(1), turned(0)));
    EXPECT_TRUE(support::samePlane(turned(1), turned(1000)));
}

// Bands that touch, miss and cross the ends of the rows, the middle and the tiles of the transpose.
std::vector<Band> bandsOf(int h) {
    std::vector<Band> bands = {{0, h},
                               {0, h - 1},
                               {1, h},
                               {1, h - 2},
                               {h / 2, h / 2},
                               {0, 0},
                               {h - 1, h - 1},
                               {h / 2 + 1, h / 2},
                               {h, h + 5},
                               {-7, -1},
                               {-7, 0},
                               {-1000000, 1000000},
                               {h / 4, h / 3},
                               {h - 1, 0},
                               {h / 2 - 1, h / 2 + 2},
                               {INT32_MIN, INT32_MAX},
                               {INT32_MIN, INT32_MIN},
                               {INT32_MAX, INT32_MAX},
                               {INT32_MAX, INT32_MIN}};
    for (int low = 1; low < 12 && low < h; low += 3) bands.push_back({low, low + h / 4});
    return bands;
}

TEST(KernelBand, DefinesTheBitsAlsoWhenSkippedRowsAreNotZero) {
    for (const auto& [w, h] : paddedSizes(1 << 12)) {
        const Plane plane = randomPlane(w, h, 15);
        for (const Band band : bandsOf(h)) {
            for (const int direction : {-1, 1}) {
                expectReferenceBits(plane, direction, band, "random");
            }
        }
    }
}

TEST(KernelBand, DefinesTheBitsForAllSizes) {
    for (const auto& [w, h] : paddedSizes(support::kLargestArea)) {
        expectReferenceBits(randomPlane(w, h, 16), -1, {h / 3, h / 2 + 5}, "random");
    }
}

TEST(KernelBand, DefinesTheBitsOfSpecialValues) {
    for (const auto& [w, h] : paddedSizes(1 << 10)) {
        for (const bool infinite : {false, true}) {
            const Plane plane = support::specialPlane(w, h, 17, infinite);
            expectReferenceBits(plane, -1, {h / 3, h / 2 + 1}, "special");
        }
    }
}

// Rows of zeros inside the band, other ones outside: where tiles stay where they are, every row of
// the band needs a place of its own.
TEST(KernelBand, DefinesTheBitsWhenItsOwnRowsAreZero) {
    for (const auto& [w, h] : paddedSizes(1 << 5)) {
        for (int low = -2; low <= h; ++low) {
            for (int high = low; high <= h; ++high) {
                Plane plane = randomPlane(w, h, 20);
                for (int y = 0; y < h; ++y) {
                    const int shifted = (y + h / 2) % h;
                    if (shifted < low || shifted > high) continue;
                    std::fill_n(plane.row(y), w, reference::Complex{});
                }
                expectReferenceBits(plane, -1, {low, high}, "zeros in the band");
            }
        }
    }
}

// Whichever row outside holds data, its tile is exchanged.
TEST(KernelBand, DefinesTheBitsWhenOneSkippedRowIsNotZero) {
    for (const int side : {4, 8, 16}) {
        for (const Band band : bandsOf(side)) {
            for (int kept = 0; kept < side; ++kept) {
                Plane plane = randomPlane(side, side, 21);
                for (int y = 0; y < side; ++y) {
                    const int shifted = (y + side / 2) % side;
                    const bool isSkipped = shifted < band.low || shifted > band.high;
                    if (isSkipped && y != kept) {
                        std::fill_n(plane.row(y), side, reference::Complex{});
                    }
                }
                expectReferenceBits(plane, -1, band, "row " + std::to_string(kept));
            }
        }
    }
}

TEST(KernelBand, ChangesNothingWhenTheSkippedRowsAreZero) {
    for (const auto& [w, h] : {std::pair(64, 64), std::pair(16, 128), std::pair(128, 16)}) {
        Plane plane = randomPlane(w, h, 18);
        const Band band{h / 2 - 2, h / 2 + 3};
        for (int y = 0; y < h; ++y) {
            const int shifted = (y + h / 2) % h;
            if (shifted >= band.low && shifted <= band.high) continue;
            for (int x = 0; x < w; ++x) plane.at(x, y) = {0, 0};
        }
        EXPECT_TRUE(support::samePlane(transformed(plane, -1, allRows(plane)),
                                       transformed(plane, -1, band)))
            << sizeOf(plane);
    }
}

TEST(RealKernel, HasNoUseForItsBand) {
    const Plane plane = randomPlane(16, 16, 19);
    expectOnEveryPath(
        realTransformed(plane),
        [&](const mvi::KernelPath& path) {
            return realTransformed(plane, {5, 6}, path);
        },
        "band");
}

}  // namespace
