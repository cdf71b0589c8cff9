// What becomes of finished columns.
#include <filt/fft/internal/kernel/result_sink.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

constexpr long kWidth = 8;
constexpr double kUntouched = -1.0;

// The results of columns 2 .. 5 of one row, of which `count` columns from x on were finished. The
// real part of an element is its column's number.
std::vector<double> resultsOf(long x, long count) {
    std::vector<float> elements;
    for (long i = 0; i < 2 * kWidth; ++i) {
        elements.push_back(i % 2 == 0 ? static_cast<float>(x + i / 2) : 0.0f);
    }
    std::vector<double> results(4, kUntouched);
    const mvi::PlaneOutput<double> out{
        mvi::PlaneResult::realParts, {2, 0}, {4, 1}, results.data(), 4};
    mvi::ResultSink<double>(out, 1.0f, mvi::bestKernelPath())
        .take({x, count, elements.data(), 2 * kWidth});
    return results;
}

TEST(ResultSink, TakesTheColumnsThatAreAskedFor) {
    EXPECT_EQ(resultsOf(0, kWidth), (std::vector<double>{2, 3, 4, 5}));
    EXPECT_EQ(resultsOf(0, 4), (std::vector<double>{2, 3, kUntouched, kUntouched}));
    EXPECT_EQ(resultsOf(5, 3), (std::vector<double>{kUntouched, kUntouched, kUntouched, 5}));
}

TEST(ResultSink, TakesNothingOfColumnsBesideThem) {
    const std::vector<double> untouched(4, kUntouched);
    EXPECT_EQ(resultsOf(0, 2), untouched);
    EXPECT_EQ(resultsOf(6, 2), untouched);
    EXPECT_EQ(resultsOf(3, 0), untouched);
}

}  // namespace
