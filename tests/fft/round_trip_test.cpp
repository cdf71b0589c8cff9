// Forward and back again: the image's own pels.
#include <filt/fft.h>
#include <gtest/gtest.h>

#include <algorithm>
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

TYPED_TEST(RoundTrip, GivesEverySmallImageBack) {
    for (long h = 1; h <= 64; h += kStep) {
        for (long w = 1; w <= 64; w += kStep) {
            const auto image = randomImage<TypeParam>(w, h, static_cast<unsigned>(64 * h + w));
            ASSERT_TRUE(support::sameImage(image, roundTrip(image))) << w << " x " << h;
        }
    }
}

TYPED_TEST(RoundTrip, GivesTheExtremesBack) {
    constexpr TypeParam full = std::numeric_limits<TypeParam>::max();
    for (long size = 1; size <= 64; size += 7) {
        const reference::Image<TypeParam> bright(size, 65 - size, full);
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

TEST(RoundTripOfDoubles, GivesTheImageBackToFloatPrecision) {
    for (const auto& [w, h] : {std::pair(1, 1), std::pair(7, 30), std::pair(64, 64)}) {
        auto image = randomImage<double>(w, h, 5);
        const auto back = roundTrip(image);
        for (std::size_t i = 0; i < image.pels.size(); ++i) {
            EXPECT_NEAR(back.pels[i], std::abs(image.pels[i]), 2e-6);
        }
    }
}

}  // namespace
