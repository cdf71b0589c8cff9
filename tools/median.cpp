// The median of a picture's values.
#include "median.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <iterator>

#include "attention.h"

namespace {

constexpr int kDigit = 16, kBits = 64;
constexpr std::uint64_t kSign = std::uint64_t{1} << (kBits - 1);

// Whole numbers in the order of the values that they stand for.
std::uint64_t ordered(double value) {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    return (bits & kSign) != 0 ? ~bits : bits | kSign;
}

double valueOf(std::uint64_t number) {
    return std::bit_cast<double>((number & kSign) != 0 ? number & ~kSign : ~number);
}

// How many numbers have which next digit behind the digits that are known.
template <class Map>
std::vector<std::int64_t> countDigits(const mvPelBuffer<double>& values, Map map,
                                      std::uint64_t known, int shift) {
    std::vector<std::int64_t> counts(std::size_t{1} << kDigit);
    for (long y = 0; y < values.height(); ++y) {
        checkInterrupted();
        const double* row = values.pointToRow(y);
        for (long x = 0; x < values.width(); ++x) {
            const std::uint64_t digits = ordered(map(row[x])) >> shift;
            const auto digit = static_cast<std::size_t>(digits) & (counts.size() - 1);
            if (digits >> kDigit == known) ++counts[digit];
        }
    }
    return counts;
}

// Finds the number digit by digit, the highest one first.
template <class Map>
double middleOf(const mvPelBuffer<double>& values, Map map) {
    std::int64_t rank = std::int64_t{values.width()} * values.height() / 2;
    std::uint64_t known = 0;
    for (int shift = kBits - kDigit; shift >= 0; shift -= kDigit) {
        const std::vector<std::int64_t> counts = countDigits(values, map, known, shift);
        std::size_t digit = 0;
        while (rank >= counts[digit]) rank -= counts[digit++];
        known = known << kDigit | digit;
    }
    return valueOf(known);
}

}  // namespace

double median(const mvPelBuffer<double>& values) {
    return middleOf(values, [](double value) { return value; });
}

double medianDistance(const mvPelBuffer<double>& values, double from) {
    return middleOf(values, [from](double value) { return std::abs(value - from); });
}

double median(std::vector<double>& values) {
    const auto middle = values.begin() + std::ssize(values) / 2;
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}
