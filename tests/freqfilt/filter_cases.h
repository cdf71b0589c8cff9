// The four parametric filters behind one face, for tests that each of them must pass.
#pragma once

#include <filt/freqfilt.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "reference_filters/lobe.h"
#include "reference_filters/ring.h"
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
    for (const double f : {-1e-9, 0.5000001, -kInfinity, kInfinity, kNaN})
        bad.push_back({1, [f](P& p) { p.frequency = f; }, kBadFrequency, std::isnan(f)});
    for (const long n : {0L, -1L, -4L, 3L, 6L, 12L, (1L << 32) + 8,
                         std::numeric_limits<long>::max(), std::numeric_limits<long>::min()}) {
        bad.push_back({5, [n](P& p) { p.width = n; }, support::kNotPowerOfTwo});
        bad.push_back({6, [n](P& p) { p.height = n; }, support::kNotPowerOfTwo});
    }
    return bad;
}

template <class P>
void addBadRadii(std::vector<BadValue<P>>& bad, const char* thrown) {
    for (const long r : {-1L, -(1L << 40), std::numeric_limits<long>::min()})
        bad.push_back({4, [r](P& p) { p.radius = r; }, thrown});
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

template <class F>
struct RingCase : FilterCase<F, reference::RingParameters> {
    using P = reference::RingParameters;
    using Change = Parameter<F, P>;

    static P parameters() { return {0.05, 0.02, 0.2, 64, 32, 1}; }
    static P otherParameters() { return {0.1, 0.0, 0.3, 32, 64, 0}; }

    static F make(const P& p) {
        return F(p.sigma, p.plateau, p.frequency, mvPair<long>(p.width, p.height), p.radius);
    }
    static void set(F& f, const P& p) {
        f.set(p.sigma, p.plateau, p.frequency, mvPair<long>(p.width, p.height), p.radius);
    }

    static std::vector<Change> ringParameters() {
        std::vector<Change> all = FilterCase<F, P>::commonParameters();
        all.push_back({"sigma", [](P& p) { p.sigma = 0.07; },
                       [](F& f, const P& p) { f.sigma(p.sigma); },
                       [](F& f, const P& p) { return f.sigma() == p.sigma; }});
        all.push_back({"plateau", [](P& p) { p.plateau = 0.0; },
                       [](F& f, const P& p) { f.plateau(p.plateau); },
                       [](F& f, const P& p) { return f.plateau() == p.plateau; }});
        return all;
    }

    static std::vector<BadValue<P>> badRingValues(const char* badRadius) {
        std::vector<BadValue<P>> bad = badSizesAndFrequencies<P>();
        for (const double s : {0.0, -0.0, -1.0, -kInfinity, kNaN})
            bad.push_back({2, [s](P& p) { p.sigma = s; },
                           "InvalidArgument: Sigma must be positive.", std::isnan(s)});
        for (const double v : {-1e-300, -1.0, -kInfinity, kNaN})
            bad.push_back({3, [v](P& p) { p.plateau = v; },
                           "InvalidArgument: Plateau cannot be negative.", std::isnan(v)});
        addBadRadii(bad, badRadius);
        return bad;
    }

    /// Valid parameters whose profile would not fit.
    static std::vector<std::function<void(P&)>> tooLarge() {
        return {[](P& p) { p.sigma = kInfinity; },
                [](P& p) { p.sigma = 1e300; },
                [](P& p) { p.sigma = 1e8; },
                [](P& p) {
                    p.sigma = 1e6;
                    p.width = 1024;
                },
                [](P& p) { p.plateau = kInfinity; },
                [](P& p) { p.plateau = 1e300; },
                [](P& p) { p.plateau = 1e9; },
                [](P& p) { p.plateau = 3e7; },
                [](P& p) { p.width = 1L << 33; },
                [](P& p) { p.width = 1L << 62; }};
    }

    /// The setters whose parameter is a plain double, with a NaN.
    static std::vector<std::function<void(F&)>> nanSetters() {
        return {[](F& f) { f.frequency(kNaN); }, [](F& f) { f.sigma(kNaN); },
                [](F& f) { f.plateau(kNaN); }};
    }
};

template <class F>
struct LobeCase : FilterCase<F, reference::LobeParameters> {
    using P = reference::LobeParameters;
    using Change = Parameter<F, P>;

    static P parameters() { return {0.03, 0.02, 0.01, 0.02, 2.2, 0.2, 64, 32, 1}; }
    static P otherParameters() { return {0.1, 0.07, 0.0, 0.0, -0.4, 0.3, 32, 64, 0}; }

    static F make(const P& p) {
        return F(mvPair<double>(p.sigmaX, p.sigmaY), mvPair<double>(p.plateauX, p.plateauY),
                 mvRadian(p.angle), p.frequency, mvPair<long>(p.width, p.height), p.radius);
    }
    static void set(F& f, const P& p) {
        f.set(mvPair<double>(p.sigmaX, p.sigmaY), mvPair<double>(p.plateauX, p.plateauY),
              mvRadian(p.angle), p.frequency, mvPair<long>(p.width, p.height), p.radius);
    }

    static std::vector<Change> lobeParameters() {
        const auto sigma = [](F& f, const P& p) { f.sigma(mvPair<double>(p.sigmaX, p.sigmaY)); };
        const auto plateau = [](F& f, const P& p) {
            f.plateau(mvPair<double>(p.plateauX, p.plateauY));
        };
        std::vector<Change> all = FilterCase<F, P>::commonParameters();
        all.push_back({"sigma along", [](P& p) { p.sigmaX = 0.04; }, sigma,
                       [](F& f, const P& p) { return f.sigma().x == p.sigmaX; }});
        all.push_back({"sigma across", [](P& p) { p.sigmaY = 0.04; }, sigma,
                       [](F& f, const P& p) { return f.sigma().y == p.sigmaY; }});
        all.push_back({"plateau along", [](P& p) { p.plateauX = 0.0; }, plateau,
                       [](F& f, const P& p) { return f.plateau().x == p.plateauX; }});
        all.push_back({"plateau across", [](P& p) { p.plateauY = 0.0; }, plateau,
                       [](F& f, const P& p) { return f.plateau().y == p.plateauY; }});
        all.push_back({"angle", [](P& p) { p.angle = -1.0; },
                       [](F& f, const P& p) { f.angle(mvRadian(p.angle)); },
                       [](F& f, const P& p) { return f.angle().toDouble() == p.angle; }});
        return all;
    }

    static std::vector<BadValue<P>> badLobeValues(const char* badRadius) {
        const char* badSigma = "InvalidArgument: Sigma values must be positive.";
        const char* badPlateau = "InvalidArgument: Plateau values cannot be negative.";
        std::vector<BadValue<P>> bad = badSizesAndFrequencies<P>();
        for (const double s : {0.0, -0.0, -1.0, -kInfinity}) {
            bad.push_back({2, [s](P& p) { p.sigmaX = s; }, badSigma});
            bad.push_back({2, [s](P& p) { p.sigmaY = s; }, badSigma});
            bad.push_back({2, [s](P& p) { p.sigmaX = kNaN, p.sigmaY = s; }, badSigma});
        }
        for (const double v : {-1e-300, -1.0, -kInfinity}) {
            bad.push_back({3, [v](P& p) { p.plateauX = v; }, badPlateau});
            bad.push_back({3, [v](P& p) { p.plateauY = v; }, badPlateau});
            bad.push_back({3, [v](P& p) { p.plateauX = kNaN, p.plateauY = v; }, badPlateau});
        }
        addBadRadii(bad, badRadius);
        return bad;
    }

    /// Parameters that pass the checks, but whose support would not fit or is no number.
    static std::vector<std::function<void(P&)>> tooLarge() {
        return {[](P& p) { p.sigmaX = kNaN; },
                [](P& p) { p.sigmaY = kNaN; },
                [](P& p) { p.sigmaX = p.sigmaY = kNaN; },
                [](P& p) { p.sigmaX = kInfinity; },
                [](P& p) { p.sigmaY = 1e300; },
                [](P& p) { p.plateauX = kNaN; },
                [](P& p) { p.plateauY = kNaN; },
                [](P& p) { p.plateauX = kInfinity; },
                [](P& p) { p.plateauY = 1e300; },
                [](P& p) { p.angle = kNaN; },
                [](P& p) { p.angle = kInfinity; },
                [](P& p) { p.sigmaX = p.sigmaY = 1e5; },
                [](P& p) { p.plateauX = p.plateauY = 1e5; },
                [](P& p) { p.width = 1L << 40; },
                [](P& p) { p.height = 1L << 40; },
                [](P& p) { p.width = p.height = 1L << 22; }};
    }

    static std::vector<std::function<void(F&)>> nanSetters() {
        return {[](F& f) { f.frequency(kNaN); }, [](F& f) { f.sigma(mvPair<double>(kNaN, kNaN)); },
                [](F& f) { f.sigma(mvPair<double>(f.sigma().x, kNaN)); },
                [](F& f) { f.plateau(mvPair<double>(kNaN, f.plateau().y)); },
                [](F& f) { f.angle(mvRadian(kNaN)); }};
    }
};

// The twins differ in the name of their radius alone.
template <class Base>
struct RemovalRadius : Base {
    using F = typename Base::Filter;
    using P = typename Base::Parameters;
    static constexpr const char* kBadRadius =
        "InvalidArgument: DC Removal Radius cannot be negative.";
    static Parameter<F, P> radius() {
        return {"radius", [](P& p) { p.radius = 3; },
                [](F& f, const P& p) { f.dcRemovalRadius(p.radius); },
                [](F& f, const P& p) { return f.dcRemovalRadius() == p.radius; }};
    }
};

template <class Base>
struct ProtectionRadius : Base {
    using F = typename Base::Filter;
    using P = typename Base::Parameters;
    static constexpr const char* kBadRadius =
        "InvalidArgument: DC Protection Radius cannot be negative.";
    static Parameter<F, P> radius() {
        return {"radius", [](P& p) { p.radius = 3; },
                [](F& f, const P& p) { f.dcProtectionRadius(p.radius); },
                [](F& f, const P& p) { return f.dcProtectionRadius() == p.radius; }};
    }
};

template <class Twin>
struct WithRing : Twin {
    static auto allParameters() {
        auto all = Twin::ringParameters();
        all.push_back(Twin::radius());
        return all;
    }
    static auto badValues() { return Twin::badRingValues(Twin::kBadRadius); }
};

template <class Twin>
struct WithLobe : Twin {
    static auto allParameters() {
        auto all = Twin::lobeParameters();
        all.push_back(Twin::radius());
        return all;
    }
    static auto badValues() { return Twin::badLobeValues(Twin::kBadRadius); }
};

struct BandPass : WithRing<RemovalRadius<RingCase<mvFrequencyFilterBandPass>>> {
    static constexpr auto describe = reference::bandPass;
    static void apply(const reference::Ring& r, reference::Spectrum& b) { applyBandPass(r, b); }
    static void apply(const reference::Ring& r, const reference::Spectrum& s,
                      reference::Spectrum& d) {
        applyBandPass(r, s, d);
    }
};

struct BandReject : WithRing<ProtectionRadius<RingCase<mvFrequencyFilterBandReject>>> {
    static constexpr auto describe = reference::bandReject;
    static void apply(const reference::Ring& r, reference::Spectrum& b) { applyBandReject(r, b); }
    static void apply(const reference::Ring& r, const reference::Spectrum& s,
                      reference::Spectrum& d) {
        applyBandReject(r, s, d);
    }
};

struct Gabor : WithLobe<RemovalRadius<LobeCase<mvFrequencyFilterGabor>>> {
    static constexpr auto describe = reference::gabor;
    static void apply(const reference::Lobe& l, reference::Spectrum& b) { applyGabor(l, b); }
    static void apply(const reference::Lobe& l, const reference::Spectrum& s,
                      reference::Spectrum& d) {
        applyGabor(l, s, d);
    }
};

struct GaborReject : WithLobe<ProtectionRadius<LobeCase<mvFrequencyFilterGaborReject>>> {
    static constexpr auto describe = reference::gaborReject;
    static void apply(const reference::Lobe& l, reference::Spectrum& b) { applyGaborReject(l, b); }
    static void apply(const reference::Lobe& l, const reference::Spectrum& s,
                      reference::Spectrum& d) {
        applyGaborReject(l, s, d);
    }
};

using AllFilters = testing::Types<BandPass, BandReject, Gabor, GaborReject>;

}  // namespace cases
