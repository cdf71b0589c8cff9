// The magnitude that all but a thousandth of the pels stay below.
#include "magnitude_quantile.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

// Of a float above 0 the upper half says the octave and the 128th of it.
constexpr unsigned kDropped = 16;

std::uint32_t bitsOf(float value) {
    std::uint32_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

float valueOf(std::uint32_t bits) {
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

}  // namespace

void mvi::MagnitudeCounts::add(double magnitude) {
    ++counts_[bitsOf(static_cast<float>(std::abs(magnitude))) >> kDropped];
    ++total_;
}

double mvi::MagnitudeCounts::takeQuantile() {
    const double above = (1 - kQuantile) * static_cast<double>(total_);
    double seen = 0;
    std::size_t at = counts_.size();
    while (at > 0 && seen <= above) seen += counts_[--at];
    std::fill(counts_.begin(), counts_.end(), 0);
    total_ = 0;
    if (at == 0) return 0;
    const auto low = static_cast<std::uint32_t>(at) << kDropped;
    return (double{valueOf(low)} + double{valueOf(low + (1u << kDropped))}) / 2;
}

double mvi::quantileOf(std::vector<float>& magnitudes) {
    if (magnitudes.empty()) return 0;
    const double rank = std::ceil(kQuantile * static_cast<double>(magnitudes.size())) - 1;
    const auto at = magnitudes.begin() + static_cast<std::ptrdiff_t>(std::max(rank, 0.0));
    std::nth_element(magnitudes.begin(), at, magnitudes.end());
    return *at;
}
