// Whole numbers next to others.
#include <gtest/gtest.h>
#include <suggest/rounding.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Also of zeros.
void expectSame(double a, double b) {
    EXPECT_EQ(a, b);
    EXPECT_EQ(std::signbit(a), std::signbit(b)) << a;
}

TEST(Rounding, LeavesTheLastDoubleBelowOneHalfAtZero) {
    expectSame(mfNearest(0.49999999999999994), 0.0);
    expectSame(mfNearest(-0.49999999999999994), -0.0);
    EXPECT_EQ(mfNearestLong(0.49999999999999994), 0);
    EXPECT_EQ(mfNearestLong(-0.49999999999999994), 0);
}

TEST(Rounding, TakesHalvesAwayFromZero) {
    for (const double sign : {1.0, -1.0}) {
        expectSame(mfNearest(sign * 0.0), sign * 0.0);
        expectSame(mfNearest(sign * 0.5), sign * 1.0);
        expectSame(mfNearest(sign * 1.4999999999999998), sign * 1.0);
        expectSame(mfNearest(sign * 1.5), sign * 2.0);
        expectSame(mfNearest(sign * 2.5), sign * 3.0);
        expectSame(mfNearest(sign * 32766.499999999996), sign * 32766.0);
        EXPECT_EQ(mfNearestLong(sign * 2.5), static_cast<long>(sign * 3));
    }
}

TEST(Rounding, LeavesWhatHasNoFraction) {
    for (const double sign : {1.0, -1.0}) {
        expectSame(mfNearest(sign * 4503599627370495.5), sign * 4503599627370496.0);
        expectSame(mfNearest(sign * 4503599627370497.0), sign * 4503599627370497.0);
        expectSame(mfNearest(sign * 9007199254740991.0), sign * 9007199254740991.0);
        expectSame(mfNearest(sign * kInfinity), sign * kInfinity);
    }
    EXPECT_TRUE(std::isnan(mfNearest(std::numeric_limits<double>::quiet_NaN())));
}

#if !defined(__MINGW32__)
TEST(Rounding, IsThatOfTheStandardLibrary) {
    std::mt19937_64 random(1);
    for (int i = 0; i < 100000; ++i) {
        const double value = std::ldexp(static_cast<double>(static_cast<std::int64_t>(random())),
                                        -static_cast<int>(random() % 70));
        const double half = std::trunc(value) + std::copysign(0.5, value);
        for (const double each :
             {value, half, std::nextafter(half, 0.0), std::nextafter(half, value)}) {
            ASSERT_EQ(mfNearest(each), std::round(each)) << i;
            ASSERT_EQ(std::signbit(mfNearest(each)), std::signbit(each)) << i;
        }
        const double fits = value / 0x1p33;
        ASSERT_EQ(mfNearestLong(fits), std::lround(fits)) << i;
    }
}
#endif

}  // namespace
