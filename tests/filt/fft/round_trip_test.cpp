// Forward and back again: the image's own pels.
#include <filt/fft.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

#include "support/compare.h"
#include "support/pel_images.h"
#include "support/random_planes.h"
#include "support/sanitizers.h"

namespace {

using support::imageOf;
using support::pelBufferOf;
using support::randomImage;

// Every size where the build is fast, every third elsewhere.
constexpr long kStep = support::kSanitized ? 3 : 1;

template <class T>
reference::Image<T> roundTrip(const reference::Image<T>& image) {
    mvFrequencyBuffer buffer;
    mfForwardFFT<T>(pelBufferOf(image), buffer);
    mvPelBuffer<T> out;
    mfInverseFFT<T>(buffer, out, false, true);
    return imageOf(out);
}

const std::vector<std::pair<long, long>>& largeSizes() {
    static const std::vector<std::pair<long, long>> all = {
        {65, 1000}, {1000, 65}, {2048, 1}, {1, 2048},    {333, 777},
        {512, 512}, {640, 480}, {1025, 3}, {2048, 2048}, {2047, 1100}};
    return all;
}

bool isTooLargeHere(long width, long height) {
    return width * height > support::kLargestArea;
}

template <class T>
struct RoundTrip : testing::Test {};
using PelTypes = testing::Types<unsigned char, unsigned short>;
TYPED_TEST_SUITE(RoundTrip, PelTypes, );

TYPED_TEST(RoundTrip, GivesTheExtremesBack) {
    constexpr TypeParam kFull = std::numeric_limits<TypeParam>::max();
    for (long size = 1; size <= 64; size += 7) {
        const reference::Image<TypeParam> bright(size, 65 - size, kFull);
        EXPECT_TRUE(support::sameImage(bright, roundTrip(bright)));
        reference::Image<TypeParam> checked = bright;
        for (std::size_t i = 0; i < checked.pels.size(); i += 2) checked.pels[i] = 0;
        EXPECT_TRUE(support::sameImage(checked, roundTrip(checked)));
    }
}

TEST(RoundTripOfBytes, GivesLargeImagesBack) {
    for (const auto& [w, h] : largeSizes()) {
        if (isTooLargeHere(w, h)) continue;
        const auto image = randomImage<unsigned char>(w, h, 5);
        EXPECT_TRUE(support::sameImage(image, roundTrip(image))) << w << " x " << h;
    }
}

TEST(RoundTripOfWords, GivesLargeImagesBackWithinOne) {
    for (const auto& [w, h] : largeSizes()) {
        if (isTooLargeHere(w, h)) continue;
        const auto image = randomImage<unsigned short>(w, h, 5);
        const auto back = roundTrip(image);
        int worst = 0;
        for (std::size_t i = 0; i < image.pels.size(); ++i) {
            worst = std::max(worst, std::abs(int{image.pels[i]} - int{back.pels[i]}));
        }
        EXPECT_LE(worst, 1) << w << " x " << h;
    }
}

// Where the pels come out: copied in periods of the image's size into a window at (0, 0). What lies
// to the left of it or above comes back on the other side, what lies to the right or below is lost.
template <class T>
reference::Image<T> wrapped(const reference::Image<T>& image) {
    reference::Image<T> result(image.width, image.height);
    result.x = image.x;
    result.y = image.y;
    for (const long originY : {image.y + image.height, image.y}) {
        for (const long originX : {image.x + image.width, image.x}) {
            for (long y = std::max(0L, -originY); y < image.height - std::max(0L, originY); ++y) {
                for (long x = std::max(0L, -originX); x < image.width - std::max(0L, originX);
                     ++x) {
                    result.at(x + originX, y + originY) = image.at(x, y);
                }
            }
        }
    }
    return result;
}

template <class T>
testing::AssertionResult sameMagnitudes(const reference::Image<T>& expected,
                                        const reference::Image<T>& actual) {
    return support::sameImage(expected, actual);
}
// The largest error that docs/accuracy.md has for such sizes is 7.3e-07.
testing::AssertionResult sameMagnitudes(const reference::Image<double>& expected,
                                        const reference::Image<double>& actual) {
    auto exact = actual;
    for (std::size_t i = 0; i < exact.pels.size(); ++i) {
        const double magnitude = std::abs(expected.pels[i]);
        if (std::abs(exact.pels[i] - magnitude) <= 1e-6) exact.pels[i] = expected.pels[i];
    }
    return support::sameImage(expected, exact);
}

template <class T>
struct RoundTripOfSmallImages : testing::Test {};
using AllPelTypes = testing::Types<unsigned char, unsigned short, double>;
TYPED_TEST_SUITE(RoundTripOfSmallImages, AllPelTypes, );

TYPED_TEST(RoundTripOfSmallImages, GivesEachOfThemBackWhereItsOffsetPutsIt) {
    for (long h = 1; h <= 64; h += kStep) {
        for (long w = 1; w <= 64; w += kStep) {
            const auto image = randomImage<TypeParam>(w, h, static_cast<unsigned>(64 * h + w));
            for (const auto& [x, y] : {std::pair(0L, 0L), std::pair(w / 3 + 1, h / 2),
                                       std::pair(-w / 2, -h / 4 - 1), std::pair(-w - 1, 1L)}) {
                const auto placed = support::at(image, x, y);
                ASSERT_TRUE(sameMagnitudes(wrapped(placed), roundTrip(placed)))
                    << w << " x " << h << " at (" << x << ", " << y << ")";
            }
        }
    }
}

}  // namespace
