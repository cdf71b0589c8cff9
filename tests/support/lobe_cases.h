// The parameters of the lobe filters.
#pragma once

#include "reference/freqfilt/lobe.h"
#include "support/parameter_cases.h"

namespace cases {

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
    static mvLobeParameters named(const P& p) {
        return {.sigma = {p.sigmaX, p.sigmaY},
                .plateau = {p.plateauX, p.plateauY},
                .angle = mvRadian(p.angle),
                .frequency = p.frequency,
                .size = {p.width, p.height},
                .dcRadius = p.radius};
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
        using Changes = std::vector<std::function<void(P&)>>;
        return support::thatLongsHold<Changes>(
            {[](P& p) { p.sigmaX = kNaN; }, [](P& p) { p.sigmaY = kNaN; },
             [](P& p) { p.sigmaX = p.sigmaY = kNaN; }, [](P& p) { p.sigmaX = kInfinity; },
             [](P& p) { p.sigmaY = 1e300; }, [](P& p) { p.plateauX = kNaN; },
             [](P& p) { p.plateauY = kNaN; }, [](P& p) { p.plateauX = kInfinity; },
             [](P& p) { p.plateauY = 1e300; }, [](P& p) { p.angle = kNaN; },
             [](P& p) { p.angle = kInfinity; }, [](P& p) { p.sigmaX = p.sigmaY = 1e5; },
             [](P& p) { p.plateauX = p.plateauY = 1e5; },
             [](P& p) { p.width = p.height = 1L << 22; }},
            {[](P& p) { p.width = support::powerOfTwo(40); },
             [](P& p) { p.height = support::powerOfTwo(40); }});
    }

    static std::vector<std::function<void(F&)>> nanSetters() {
        return {[](F& f) { f.frequency(kNaN); }, [](F& f) { f.sigma(mvPair<double>(kNaN, kNaN)); },
                [](F& f) { f.sigma(mvPair<double>(f.sigma().x, kNaN)); },
                [](F& f) { f.plateau(mvPair<double>(kNaN, f.plateau().y)); },
                [](F& f) { f.angle(mvRadian(kNaN)); }};
    }
};

}  // namespace cases
