// Conversions between pels and elements: their definition, one value at a time, on every path.
#include <internal/bit_cast.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "support/kernel_paths.h"
#include "support/random_planes.h"

namespace {

using support::Random;

// Shorter than any vector, vectors of all kinds and what is left over.
constexpr long kLongest = 75;

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

template <class Check>
void onEveryRun(Check check) {
    support::onEveryPath([&](const mvi::KernelPath& path) {
        for (long count = 0; count <= kLongest; ++count) {
            SCOPED_TRACE(count);
            check(path, count);
        }
    });
}

// Elements whose magnitudes go from 0 to beyond the range of 16 bits, ties among them.
std::vector<float> someElements(long count, unsigned seed) {
    const std::vector<float> special = {0.0F,   -0.0F, 0.5F,     1.5F,  -254.5F,   255.5F,
                                        1e-40F, 1e30F, 65534.5F, 65536, kInfinity, kNaN};
    Random random(seed);
    std::vector<float> elements;
    for (long i = 0; i < 2 * count; ++i) {
        const unsigned k = random.below(4 * static_cast<unsigned>(special.size()));
        const bool lone = random.below(3) == 0 && i % 2 == 1;
        elements.push_back(lone                 ? 0.0F
                           : k < special.size() ? special[k]
                                                : 300.0F * random.symmetric());
    }
    return elements;
}

float magnitude(const std::vector<float>& z, std::size_t i) {
    return std::sqrt(z[2 * i] * z[2 * i] + z[2 * i + 1] * z[2 * i + 1]);
}

// Half up and clamped to the range; the halves of small numbers are exact in double.
template <class T>
T expectedPel(float value) {
    if constexpr (std::is_same_v<T, double>) return value;
    const double full = static_cast<double>(std::numeric_limits<T>::max());
    if (!(value > 0.0F)) return T(0);
    return static_cast<T>(std::min(std::floor(static_cast<double>(value) + 0.5), full));
}

template <class T>
bool samePel(T a, T b) {
    if constexpr (std::is_same_v<T, double>) {
        if (std::isnan(a) && std::isnan(b)) return true;
        return mvi::bitCast<std::uint64_t>(a) == mvi::bitCast<std::uint64_t>(b);
    }
    return a == b;
}

bool sameBits(float a, float b) {
    return mvi::bitCast<std::uint32_t>(a) == mvi::bitCast<std::uint32_t>(b) ||
           (std::isnan(a) && std::isnan(b));
}

template <class T>
class PelRuns : public testing::Test {};
using PelTypes = testing::Types<unsigned char, unsigned short, double>;
TYPED_TEST_SUITE(PelRuns, PelTypes);

TYPED_TEST(PelRuns, MakeRealsAndElementsOfPels) {
    onEveryRun([](const mvi::KernelPath& path, long count) {
        const auto n = static_cast<std::size_t>(count);
        const auto re = support::randomImage<TypeParam>(count + 1, 1, 3).pels;
        const auto im = support::randomImage<TypeParam>(count + 1, 1, 4).pels;
        std::vector<float> reals(n + 1, 7.0F), elements(2 * n + 1, 7.0F);
        path.pels<TypeParam>().toReals(re.data(), count, reals.data());
        path.pels<TypeParam>().toElements(re.data(), im.data(), count, elements.data());
        for (std::size_t i = 0; i < n; ++i) {
            EXPECT_EQ(reals[i], static_cast<float>(re[i]));
            EXPECT_EQ(elements[2 * i], static_cast<float>(re[i]));
            EXPECT_EQ(elements[2 * i + 1], static_cast<float>(im[i]));
        }
        EXPECT_EQ(reals[n], 7.0F);
        EXPECT_EQ(elements[2 * n], 7.0F);
    });
}

TYPED_TEST(PelRuns, RoundScaledMagnitudes) {
    onEveryRun([](const mvi::KernelPath& path, long count) {
        const auto n = static_cast<std::size_t>(count);
        for (const float scale : {1.0F, 0.25F, 1.0F / 1048576}) {
            const auto elements = someElements(count, 5);
            std::vector<TypeParam> pels(n + 1, TypeParam(7));
            path.pels<TypeParam>().fromMagnitudes(elements.data(), count, scale, pels.data());
            for (std::size_t i = 0; i < n; ++i) {
                const float value = magnitude(elements, i) * scale;
                EXPECT_TRUE(samePel(pels[i], expectedPel<TypeParam>(value))) << value;
            }
            EXPECT_EQ(pels[n], TypeParam(7));
        }
    });
}

TYPED_TEST(PelRuns, MapScaledMagnitudes) {
    onEveryRun([](const mvi::KernelPath& path, long count) {
        const auto n = static_cast<std::size_t>(count);
        for (const float factor : {1.0F, -3.5F, 255.0F, kInfinity, kNaN}) {
            const auto elements = someElements(count, 6);
            std::vector<TypeParam> pels(n + 1, TypeParam(7));
            path.pels<TypeParam>().fromMagnitudesMapped(elements.data(), count, 0.5F, 3.0F, factor,
                                                        pels.data());
            for (std::size_t i = 0; i < n; ++i) {
                const float value = (magnitude(elements, i) * 0.5F - 3.0F) * factor;
                EXPECT_TRUE(samePel(pels[i], expectedPel<TypeParam>(value))) << value;
            }
            EXPECT_EQ(pels[n], TypeParam(7));
        }
    });
}

TEST(Mirrored, ConjugatesInReverseOrder) {
    onEveryRun([](const mvi::KernelPath& path, long count) {
        const auto n = static_cast<std::size_t>(count);
        const auto elements = someElements(count, 8);
        std::vector<float> out(2 * n + 2, 7.0F);
        path.mirrored(elements.data(), count, out.data() + 2 * n + 1);
        for (std::size_t i = 0; i < n; ++i) {
            EXPECT_TRUE(sameBits(out[2 * (n - 1 - i) + 1], elements[2 * i]));
            EXPECT_TRUE(sameBits(out[2 * (n - 1 - i) + 2], -elements[2 * i + 1]));
        }
        EXPECT_EQ(out.front(), 7.0F);
        EXPECT_EQ(out.back(), 7.0F);
    });
}

TEST(SquareRange, GrowsByAllButNaNs) {
    onEveryRun([](const mvi::KernelPath& path, long count) {
        const auto elements = someElements(count, 9);
        float least = 2.0F, greatest = 3.0F;
        for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
            const float square =
                elements[2 * i] * elements[2 * i] + elements[2 * i + 1] * elements[2 * i + 1];
            if (square < least) least = square;
            if (square > greatest) greatest = square;
        }
        mvi::SquareRange range{2.0F, 3.0F};
        path.squareRange(elements.data(), count, range);
        EXPECT_TRUE(sameBits(range.least, least));
        EXPECT_TRUE(sameBits(range.greatest, greatest));
    });
}

}  // namespace
