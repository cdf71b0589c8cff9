// Floating values and wide integers that become narrow integers.
#include <filt/fft/internal/integers.h>

#include <gtest/gtest.h>

namespace {

template <class Integer>
struct Truncate : testing::Test {};
using Integers = testing::Types<std::int32_t, std::int64_t>;
TYPED_TEST_SUITE(Truncate, Integers, );

TYPED_TEST(Truncate, HoldsWhatDoesNotFitAtTheEnds) {
    using Limits = std::numeric_limits<TypeParam>;
    const double end = -static_cast<double>(Limits::min());
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double large : {end, std::nextafter(end, infinity), 2 * end, 1e300, infinity}) {
        EXPECT_EQ(mvi::truncate<TypeParam>(large), Limits::max()) << large;
        EXPECT_EQ(mvi::truncate<TypeParam>(-large), Limits::min()) << large;
    }
    const double below = std::nextafter(end, 0.0);
    EXPECT_EQ(mvi::truncate<TypeParam>(below), static_cast<TypeParam>(below));
    EXPECT_EQ(mvi::truncate<TypeParam>(-below), static_cast<TypeParam>(-below));
}

TYPED_TEST(Truncate, GoesTowardZeroAndTakesNaNForZero) {
    for (const double value : {0.0, -0.0, 0.99, -0.99, std::nan("")}) {
        EXPECT_EQ(mvi::truncate<TypeParam>(value), 0) << value;
    }
    EXPECT_EQ(mvi::truncate<TypeParam>(2.9), 2);
    EXPECT_EQ(mvi::truncate<TypeParam>(-2.9), -2);
    EXPECT_EQ(mvi::truncate<TypeParam>(7.5F), 7);
}

TEST(LowByte, IsThatOfTheTruncationAndZeroWhereNoneIs) {
    const double end = 9223372036854775808.0;
    EXPECT_EQ(mvi::lowByte(255.9), 255);
    EXPECT_EQ(mvi::lowByte(256.9), 0);
    EXPECT_EQ(mvi::lowByte(-1.0), 255);
    EXPECT_EQ(mvi::lowByte(-0.9), 0);
    EXPECT_EQ(mvi::lowByte(9007199254740991.0), 255);
    for (const double value :
         {end, -end, 2 * end, -2 * end, std::nan(""), std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(mvi::lowByte(value), 0) << value;
    }
}

TEST(Hold32, KeepsTheNearestValueOf32Bits) {
    constexpr long kLow = std::numeric_limits<std::int32_t>::min();
    constexpr long kHigh = std::numeric_limits<std::int32_t>::max();
    for (const long value : {0L, 1L, -1L, kLow, kHigh}) EXPECT_EQ(mvi::hold32(value), value);
    EXPECT_EQ(mvi::hold32(std::int64_t{kHigh} + 1), kHigh);
    EXPECT_EQ(mvi::hold32(std::int64_t{kLow} - 1), kLow);
    EXPECT_EQ(mvi::hold32(std::numeric_limits<std::int64_t>::max()), kHigh);
    EXPECT_EQ(mvi::hold32(std::numeric_limits<std::int64_t>::min()), kLow);
}

TEST(HeldSize, IsTheNumberOrTheNearestSize) {
    constexpr std::size_t kMost = std::numeric_limits<std::size_t>::max();
    EXPECT_EQ(mvi::heldSize(std::numeric_limits<std::int64_t>::min()), 0U);
    EXPECT_EQ(mvi::heldSize(-1), 0U);
    EXPECT_EQ(mvi::heldSize(5), 5U);
    constexpr std::int64_t kWide = std::int64_t{1} << 33;
    EXPECT_EQ(mvi::heldSize(kWide),
              sizeof(std::size_t) > 4 ? static_cast<std::size_t>(kWide) : kMost);
}

}  // namespace
