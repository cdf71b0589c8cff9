// Pairs and angles.
#include <base/geometry.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kTurn = 2 * kPi;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kTiny = std::numeric_limits<double>::denorm_min();

template <class T>
struct Pair : testing::Test {};
using Values = testing::Types<long, double, std::int32_t>;
TYPED_TEST_SUITE(Pair, Values, );

TYPED_TEST(Pair, IsZeroByDefault) {
    const mvPair<TypeParam> pair;
    EXPECT_EQ(pair.x, TypeParam{});
    EXPECT_EQ(pair.y, TypeParam{});
}

TYPED_TEST(Pair, ComparesBothMembers) {
    using P = mvPair<TypeParam>;
    EXPECT_EQ(P(1, 2), P(1, 2));
    EXPECT_NE(P(1, 2), P(1, 3));
    EXPECT_NE(P(1, 2), P(3, 2));
}

TEST(Radian, KeepsItsValue) {
    for (const double value : {0.0, 7.0, -100.0, kInfinity, kTurn}) {
        EXPECT_EQ(mvRadian(value).toDouble(), value);
    }
    EXPECT_TRUE(std::signbit(mvRadian(-0.0).toDouble()));
    EXPECT_TRUE(std::isnan(mvRadian(NAN).toDouble()));
    EXPECT_EQ(mvRadian().toDouble(), 0);
    EXPECT_EQ((-mvRadian(1.5)).toDouble(), -1.5);
}

TEST(Radian, NormLeavesOneTurnAsItIs) {
    for (const double value : {0.0, kTiny, 1.0, kPi, std::nextafter(kTurn, 0)}) {
        EXPECT_EQ(mvRadian(value).norm().toDouble(), value);
    }
}

TEST(Radian, NormFoldsIntoOneTurn) {
    EXPECT_EQ(mvRadian(-1).norm().toDouble(), kTurn - 1);
    EXPECT_EQ(mvRadian(-kPi).norm().toDouble(), kPi);
    EXPECT_EQ(mvRadian(kTurn + 1).norm().toDouble(), (kTurn + 1) - kTurn);
    EXPECT_EQ(mvRadian(-3 * kTurn - 0.5).norm().toDouble(),
              std::fmod(-3 * kTurn - 0.5, kTurn) + kTurn);
}

TEST(Radian, NormIsNeverAFullTurnNorNegative) {
    double values[] = {kTurn,  -kTurn, 5 * kTurn, -kTiny, -1e-300,
                       -1e-17, -1e-16, -4e-16,    1e300,  -1e300};
    for (const double value : values) {
        const double folded = mvRadian(value).norm().toDouble();
        EXPECT_GE(folded, 0) << value;
        EXPECT_LT(folded, kTurn) << value;
        EXPECT_FALSE(std::signbit(folded)) << value;
    }
    EXPECT_EQ(mvRadian(-kTiny).norm().toDouble(), 0);
    EXPECT_EQ(mvRadian(kTurn).norm().toDouble(), 0);
}

TEST(Radian, NormOfZerosIsPlusZero) {
    EXPECT_FALSE(std::signbit(mvRadian(-0.0).norm().toDouble()));
    EXPECT_FALSE(std::signbit(mvRadian(0.0).norm().toDouble()));
    EXPECT_FALSE(std::signbit(mvRadian(-kTurn).norm().toDouble()));
}

TEST(Radian, NormOfWhatHasNoDirectionIsNaN) {
    for (const double value : {double{NAN}, kInfinity, -kInfinity}) {
        EXPECT_TRUE(std::isnan(mvRadian(value).norm().toDouble()));
    }
}

TEST(Radian, ComparesPlainValues) {
    const mvRadian low(1), high(2), none(NAN);
    EXPECT_TRUE(low == low && low != high && low < high && low <= low && high > low && high >= low);
    EXPECT_FALSE(low == high || high < low || low > high || high <= low || low >= high);
    EXPECT_FALSE(none == none || none < low || none > low || none <= none || none >= none);
    EXPECT_TRUE(none != none);
    EXPECT_NE(mvRadian(0), mvRadian(kTurn));
}

}  // namespace
