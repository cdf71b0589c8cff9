// Parameters of a filter: how each is changed, set, asked for, and what is refused.
#pragma once

#include <filt/freqfilt.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "support/longs.h"
#include "support/thrown.h"

namespace cases {

inline constexpr const char* kNoResponse =
    "Uninitialized: FrequencyFilter has not been initialized";
inline constexpr const char* kOtherSize =
    "InvalidSize: Size of frequency buffer does not match size of filter.";
inline constexpr const char* kBadFrequency =
    "InvalidArgument: Frequency must be between 0.0 and 0.5.";

inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
inline constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// A filter with its protected gains opened.
template <class F>
struct Open : F {
    using F::data;
    using F::F;
    explicit Open(const F& filter) : F(filter) {}
};

/// One parameter of a filter F that is described by P.
template <class F, class P>
struct Parameter {
    const char* name;
    /// Changes the description to another valid value.
    std::function<void(P&)> change;
    /// The setter with the description's value; the getter compared with it.
    std::function<void(F&, const P&)> set;
    std::function<bool(F&, const P&)> holds;
};

/// A value that a filter refuses. Cases of lower rank are found first.
template <class P>
struct BadValue {
    int rank;
    std::function<void(P&)> spoil;
    const char* thrown;
    /// A setter takes a NaN for the stored value.
    bool isNaN = false;
};

template <class P>
std::vector<BadValue<P>> badSizesAndFrequencies() {
    std::vector<BadValue<P>> bad;
    for (const double f : {-1e-9, 0.5000001, -kInfinity, kInfinity, kNaN}) {
        bad.push_back({1, [f](P& p) { p.frequency = f; }, kBadFrequency, std::isnan(f)});
    }
    for (const long n : {0L, -1L, -4L, 3L, 6L, 12L, support::asLong((std::int64_t{1} << 32) + 8),
                         std::numeric_limits<long>::max(), std::numeric_limits<long>::min()}) {
        bad.push_back({5, [n](P& p) { p.width = n; }, support::kNotPowerOfTwo});
        bad.push_back({6, [n](P& p) { p.height = n; }, support::kNotPowerOfTwo});
    }
    return bad;
}

template <class P>
void addBadRadii(std::vector<BadValue<P>>& bad, const char* thrown) {
    for (const long r :
         {-1L, support::asLong(-(std::int64_t{1} << 40)), std::numeric_limits<long>::min()}) {
        bad.push_back({4, [r](P& p) { p.radius = r; }, thrown});
    }
}

template <class F, class P>
struct FilterCase {
    using Filter = F;
    using Parameters = P;
    using Change = Parameter<F, P>;

    /// What ring and lobe filters have in common.
    static std::vector<Change> commonParameters() {
        return {{"frequency", [](P& p) { p.frequency = 0.31; },
                 [](F& f, const P& p) { f.frequency(p.frequency); },
                 [](F& f, const P& p) { return f.frequency() == p.frequency; }},
                {"width", [](P& p) { p.width = 32; },
                 [](F& f, const P& p) { f.size(mvPair<long>(p.width, p.height)); },
                 [](F& f, const P& p) { return f.size().x == p.width; }},
                {"height", [](P& p) { p.height = 64; },
                 [](F& f, const P& p) { f.size(mvPair<long>(p.width, p.height)); },
                 [](F& f, const P& p) { return f.size().y == p.height; }}};
    }
};

}  // namespace cases
