// The parameters of the ring filters.
#pragma once

#include "reference/freqfilt/ring.h"
#include "support/parameter_cases.h"

namespace cases {

template <class F>
struct RingCase : FilterCase<F, reference::RingParameters> {
    using P = reference::RingParameters;
    using Change = Parameter<F, P>;

    static P parameters() { return {0.05, 0.02, 0.2, 64, 32, 1}; }
    static P otherParameters() { return {0.1, 0.0, 0.3, 32, 64, 0}; }

    static F make(const P& p) {
        return F(p.sigma, p.plateau, p.frequency, mvPair<long>(p.width, p.height), p.radius);
    }
    static mvRingParameters named(const P& p) {
        return {.sigma = p.sigma,
                .plateau = p.plateau,
                .frequency = p.frequency,
                .size = {p.width, p.height},
                .dcRadius = p.radius};
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
        for (const double s : {0.0, -0.0, -1.0, -kInfinity, kNaN}) {
            bad.push_back({2, [s](P& p) { p.sigma = s; },
                           "InvalidArgument: Sigma must be positive.", std::isnan(s)});
        }
        for (const double v : {-1e-300, -1.0, -kInfinity, kNaN}) {
            bad.push_back({3, [v](P& p) { p.plateau = v; },
                           "InvalidArgument: Plateau cannot be negative.", std::isnan(v)});
        }
        addBadRadii(bad, badRadius);
        return bad;
    }

    /// Valid parameters whose profile would not fit.
    static std::vector<std::function<void(P&)>> tooLarge() {
        using Changes = std::vector<std::function<void(P&)>>;
        return support::thatLongsHold<Changes>(
            {[](P& p) { p.sigma = kInfinity; }, [](P& p) { p.sigma = 1e300; },
             [](P& p) { p.sigma = 1e8; },
             [](P& p) {
                 p.sigma = 1e6;
                 p.width = 1024;
             },
             [](P& p) { p.plateau = kInfinity; }, [](P& p) { p.plateau = 1e300; },
             [](P& p) { p.plateau = 1e9; }, [](P& p) { p.plateau = 3e7; }},
            {[](P& p) { p.width = support::powerOfTwo(33); },
             [](P& p) { p.width = support::powerOfTwo(62); }});
    }

    /// The setters whose parameter is a plain double, with a NaN.
    static std::vector<std::function<void(F&)>> nanSetters() {
        return {[](F& f) { f.frequency(kNaN); }, [](F& f) { f.sigma(kNaN); },
                [](F& f) { f.plateau(kNaN); }};
    }
};

}  // namespace cases
