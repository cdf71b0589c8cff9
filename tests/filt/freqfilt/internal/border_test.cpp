// What stands around an image: blends and mirror images.
#include <filt/freqfilt/internal/border.h>
#include <internal/bit_cast.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <vector>

#include "support/random_planes.h"

namespace {

std::uint64_t bits(double value) {
    return mvi::bitCast<std::uint64_t>(value);
}

// The same bits, or both no number.
bool same(double a, double b) {
    return bits(a) == bits(b) || (a != a && b != b);
}

TEST(Border, BlendsAsTheStandardLibraryDoes) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const std::array special = {0.0,
                                -0.0,
                                1.0,
                                -1.0,
                                5e-324,
                                -5e-324,
                                1e308,
                                -1e308,
                                0.1,
                                3e-20,
                                kInfinity,
                                -kInfinity,
                                std::numeric_limits<double>::quiet_NaN()};
    for (const double a : special) {
        for (const double b : special) {
            for (const double t : {0.0, 0.001, 0.25, 1.0 / 3.0, 0.5, 0.999, 1 - 1e-16}) {
                EXPECT_TRUE(same(mvi::blended(a, b, t), std::lerp(a, b, t)))
                    << a << ", " << b << ", " << t;
            }
        }
    }
    support::Random random(1);
    for (int i = 0; i < 1000000; ++i) {
        const double a = 300 * static_cast<double>(random.symmetric());
        const double b = 300 * static_cast<double>(random.symmetric());
        const double t = std::abs(static_cast<double>(random.symmetric())) * 0.9999;
        ASSERT_TRUE(same(mvi::blended(a, b, t), std::lerp(a, b, t)));
    }
}

// std::lround where that is right: MinGW's makes 1 of the last double below 0.5.
long nearest(double value) {
#if defined(__MINGW32__)
    const double below = std::floor(value);
    return static_cast<long>(below) + (value - below < 0.5 ? 0 : 1);
#else
    return std::lround(value);
#endif
}

TEST(Border, RoundsPelsAsTheStandardLibraryDoes) {
    for (int whole = 0; whole < 65535; ++whole) {
        for (const double part : {0.0, 0.25, 0.5, 0.75}) {
            for (const double off : {-1.0, 0.0, 1.0}) {
                const double value = std::nextafter(whole + part, off < 0 ? -1.0 : off * 1e9);
                const double near = off == 0.0 ? whole + part : std::max(value, 0.0);
                ASSERT_EQ(mvi::roundedPel<unsigned short>(near), nearest(near));
            }
        }
    }
    EXPECT_EQ(mvi::roundedPel<unsigned char>(0.49999999999999994), 0);
}

// Every pair of pels and many weights of every length of a border.
TEST(Border, BlendsBytesAsTheStandardLibraryDoes) {
    for (int length = 1; length < 400; length += 7) {
        for (int i = 0; i < length; i += 1 + length / 5) {
            const double t = (i + 0.5) / length;
            for (int a = 0; a < 256; ++a) {
                for (int b = 0; b < 256; ++b) {
                    ASSERT_EQ(mvi::roundedPel<unsigned char>(mvi::blended(a, b, t)),
                              nearest(std::lerp(static_cast<double>(a), b, t)));
                }
            }
        }
    }
}

TEST(Border, MirrorsEachEdgePelTwice) {
    std::vector<long> pels;
    for (long at = -7; at < 8; ++at) pels.push_back(mvi::mirrored(at, 3));
    EXPECT_EQ(pels, (std::vector<long>{0, 0, 1, 2, 2, 1, 0, 0, 1, 2, 2, 1, 0, 0, 1}));
    EXPECT_EQ(mvi::mirrored(-1000000000000, 1), 0);
    constexpr long kLongest = 2147483647;
    EXPECT_EQ(mvi::mirrored(kLongest, kLongest), kLongest - 1);
    EXPECT_EQ(mvi::mirrored(-1, kLongest), 0);
}

}  // namespace
