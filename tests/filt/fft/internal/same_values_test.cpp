// Runs of floats are compared to the last one.
#include <filt/fft/internal/same_values.h>

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace {

bool areTheSame(const std::vector<float>& a, const std::vector<float>& b) {
    return mvi::sameFloats(a.data(), b.data(), a.size());
}

// Around lengths at which loops and vectors end.
TEST(SameFloats, DifferWhereverOneIsLess) {
    for (const std::size_t count : {1U, 2U, 1023U, 1024U, 1025U, 2048U, 2060U}) {
        const std::vector<float> zeros(count);
        EXPECT_TRUE(areTheSame(zeros, zeros));
        for (std::size_t i = 0; i < count; ++i) {
            std::vector<float> other(count);
            other[i] = 1.0f;
            EXPECT_FALSE(areTheSame(zeros, other)) << i << " of " << count;
            EXPECT_FALSE(areTheSame(other, zeros)) << i << " of " << count;
        }
    }
}

TEST(SameFloats, CountNothingBehindThem) {
    const std::vector<float> zeros(1025);
    for (const std::size_t count : {0U, 1U, 1023U, 1024U}) {
        std::vector<float> other(1025);
        other[count] = 1.0f;
        EXPECT_TRUE(mvi::sameFloats(zeros.data(), other.data(), count)) << count;
    }
}

TEST(SameFloats, AreThoseThatHaveNoOrder) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_TRUE(areTheSame({nan, 1.0f, 0.0f}, {2.0f, nan, -0.0f}));
}

}  // namespace
