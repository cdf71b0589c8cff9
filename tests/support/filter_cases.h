// The four parametric filters behind one face, for tests that each of them must pass.
#pragma once

#include <utility>

#include "support/lobe_cases.h"
#include "support/ring_cases.h"

namespace cases {

/// Assignments from `other`, copying and moving, call the watcher of a copy of `before` while that
/// is still as it was.
template <class F>
void expectAssignmentsTellTheWatcherFirst(const F& before, F other) {
    F copied(before), moved(before);
    int calls = 0;
    for (F* const filter : {&copied, &moved}) {
        mvPersistent::watch(*filter, [&calls, &before, filter] {
            ++calls;
            EXPECT_TRUE(*filter == before);
        });
    }
    copied = other;
    EXPECT_EQ(calls, 1);
    moved = std::move(other);
    EXPECT_EQ(calls, 2);
    EXPECT_TRUE(moved == copied);
}

/// Assignments to itself, copying and moving, neither change the filter nor call its watcher.
template <class F>
void expectAssignmentToItselfDoesNothing(F filter) {
    const F before = filter;
    int calls = 0;
    mvPersistent::watch(filter, [&calls] { ++calls; });
    F& same = filter;
    filter = same;
    EXPECT_TRUE(filter == before);
    filter = std::move(same);
    EXPECT_TRUE(filter == before);
    EXPECT_EQ(calls, 0);
}

// The twins differ only in the name of their radius.
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
    static auto describe(const reference::RingParameters& p) { return reference::bandPass(p); }
    static void apply(const reference::Ring& r, reference::Spectrum& b) { applyBandPass(r, b); }
    static void apply(const reference::Ring& r, const reference::Spectrum& s,
                      reference::Spectrum& d) {
        applyBandPass(r, s, d);
    }
};

struct BandReject : WithRing<ProtectionRadius<RingCase<mvFrequencyFilterBandReject>>> {
    static auto describe(const reference::RingParameters& p) { return reference::bandReject(p); }
    static void apply(const reference::Ring& r, reference::Spectrum& b) { applyBandReject(r, b); }
    static void apply(const reference::Ring& r, const reference::Spectrum& s,
                      reference::Spectrum& d) {
        applyBandReject(r, s, d);
    }
};

struct Gabor : WithLobe<RemovalRadius<LobeCase<mvFrequencyFilterGabor>>> {
    static auto describe(const reference::LobeParameters& p) { return reference::gabor(p); }
    static void apply(const reference::Lobe& l, reference::Spectrum& b) { applyGabor(l, b); }
    static void apply(const reference::Lobe& l, const reference::Spectrum& s,
                      reference::Spectrum& d) {
        applyGabor(l, s, d);
    }
};

struct GaborReject : WithLobe<ProtectionRadius<LobeCase<mvFrequencyFilterGaborReject>>> {
    static auto describe(const reference::LobeParameters& p) { return reference::gaborReject(p); }
    static void apply(const reference::Lobe& l, reference::Spectrum& b) { applyGaborReject(l, b); }
    static void apply(const reference::Lobe& l, const reference::Spectrum& s,
                      reference::Spectrum& d) {
        applyGaborReject(l, s, d);
    }
};

using AllFilters = testing::Types<BandPass, BandReject, Gabor, GaborReject>;

}  // namespace cases
