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
        EXPECT_EQ(mf_Truncate<TypeParam>(large), Limits::max()) << large;
        EXPECT_EQ(mf_Truncate<TypeParam>(-large), Limits::min()) << large;
    }
    const double below = std::nextafter(end, 0.0);
    EXPECT_EQ(mf_Truncate<TypeParam>(below), static_cast<TypeParam>(below));
    EXPECT_EQ(mf_Truncate<TypeParam>(-below), static_cast<TypeParam>(-below));
}

TYPED_TEST(Truncate, GoesTowardZeroAndTakesNaNForZero) {
    for (const double value : {0.0, -0.0, 0.99, -0.99, std::nan("")}) {
        EXPECT_EQ(mf_Truncate<TypeParam>(value), 0) << value;
    }
    EXPECT_EQ(mf_Truncate<TypeParam>(2.9), 2);
    EXPECT_EQ(mf_Truncate<TypeParam>(-2.9), -2);
    EXPECT_EQ(mf_Truncate<TypeParam>(7.5F), 7);
}

TEST(LowByte, IsThatOfTheTruncationAndZeroWhereNoneIs) {
    const double end = 9223372036854775808.0;
    EXPECT_EQ(mf_LowByte(255.9), 255);
    EXPECT_EQ(mf_LowByte(256.9), 0);
    EXPECT_EQ(mf_LowByte(-1.0), 255);
    EXPECT_EQ(mf_LowByte(-0.9), 0);
    EXPECT_EQ(mf_LowByte(9007199254740991.0), 255);
    for (const double value :
         {end, -end, 2 * end, -2 * end, std::nan(""), std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(mf_LowByte(value), 0) << value;
    }
}

TEST(Hold32, KeepsTheNearestValueOf32Bits) {
    constexpr long low = -2147483648L, high = 2147483647L;
    for (const long value : {0L, 1L, -1L, low, high}) EXPECT_EQ(mf_Hold32(value), value);
    EXPECT_EQ(mf_Hold32(high + 1), high);
    EXPECT_EQ(mf_Hold32(low - 1), low);
    EXPECT_EQ(mf_Hold32(std::numeric_limits<long>::max()), high);
    EXPECT_EQ(mf_Hold32(std::numeric_limits<long>::min()), low);
}

}  // namespace
