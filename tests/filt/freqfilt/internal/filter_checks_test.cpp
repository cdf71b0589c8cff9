// The checks of building and applying: class, message, order, and that nothing changes.
#include <stdexcept>

#include "support/filter_cases.h"
#include "support/random_planes.h"
#include "support/spectra.h"

namespace {

using support::thrownBy;

template <class Case>
struct FilterChecks : testing::Test {};
TYPED_TEST_SUITE(FilterChecks, cases::AllFilters);

TYPED_TEST(FilterChecks, EveryBadValueIsRefusedByTheConstructorAndBySet) {
    using F = typename TypeParam::Filter;
    F filter = TypeParam::make(TypeParam::parameters());
    F empty;
    int calls = 0;
    mvPersistent::watch(filter, [&] { ++calls; });
    for (const auto& bad : TypeParam::badValues()) {
        auto p = TypeParam::otherParameters();
        bad.spoil(p);
        EXPECT_EQ(thrownBy([&] { TypeParam::make(p); }), bad.thrown);
        EXPECT_EQ(thrownBy([&] { TypeParam::set(filter, p); }), bad.thrown);
        EXPECT_EQ(thrownBy([&] { TypeParam::set(empty, p); }), bad.thrown);
    }
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(filter == TypeParam::make(TypeParam::parameters()));
    EXPECT_TRUE(empty == F());
}

TYPED_TEST(FilterChecks, TheFirstOfTwoBadValuesIsReported) {
    const auto all = TypeParam::badValues();
    for (const auto& first : all) {
        for (const auto& second : all) {
            if (first.rank >= second.rank) continue;
            auto p = TypeParam::parameters();
            first.spoil(p);
            second.spoil(p);
            EXPECT_EQ(thrownBy([&] { TypeParam::make(p); }), first.thrown)
                << "ranks " << first.rank << " and " << second.rank;
        }
    }
}

TYPED_TEST(FilterChecks, EverySetterRefusesItsBadValues) {
    using F = typename TypeParam::Filter;
    F filter = TypeParam::make(TypeParam::parameters());
    int calls = 0;
    mvPersistent::watch(filter, [&] { ++calls; });
    for (const auto& bad : TypeParam::badValues()) {
        auto p = TypeParam::parameters();
        bad.spoil(p);
        int refused = 0;
        for (const auto& parameter : TypeParam::allParameters()) {
            const std::string thrown = thrownBy([&] { parameter.set(filter, p); });
            if (thrown == "nothing") continue;
            EXPECT_EQ(thrown, bad.thrown);
            ++refused;
        }
        if (!bad.isNaN) {
            EXPECT_GE(refused, 1) << bad.thrown;
        }
    }
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(filter == TypeParam::make(TypeParam::parameters()));
}

TYPED_TEST(FilterChecks, ANegativeRadiusIsRefusedByItsSetter) {
    auto filter = TypeParam::make(TypeParam::parameters());
    auto p = TypeParam::parameters();
    p.radius = -1;
    EXPECT_EQ(thrownBy([&] { TypeParam::radius().set(filter, p); }), TypeParam::kBadRadius);
    EXPECT_TRUE(filter == TypeParam::make(TypeParam::parameters()));
}

TYPED_TEST(FilterChecks, WhatDoesNotFitIsALengthErrorAndChangesNothing) {
    using F = typename TypeParam::Filter;
    F filter = TypeParam::make(TypeParam::parameters());
    F empty;
    int calls = 0;
    mvPersistent::watch(filter, [&] { ++calls; });
    mvPersistent::watch(empty, [&] { ++calls; });
    int index = 0;
    for (const auto& enlarge : TypeParam::tooLarge()) {
        SCOPED_TRACE(index++);
        auto p = TypeParam::parameters();
        enlarge(p);
        EXPECT_THROW(TypeParam::make(p), std::length_error);
        EXPECT_THROW(TypeParam::set(filter, p), std::length_error);
        EXPECT_THROW(TypeParam::set(empty, p), std::length_error);
    }
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(filter == TypeParam::make(TypeParam::parameters()));
    EXPECT_TRUE(empty == F());
    EXPECT_FALSE(empty.isInitialized());
}

TYPED_TEST(FilterChecks, BadParametersAreReportedBeforeWhatDoesNotFit) {
    for (const auto& enlarge : TypeParam::tooLarge()) {
        auto p = TypeParam::parameters();
        enlarge(p);
        p.frequency = 1.0;
        EXPECT_EQ(thrownBy([&] { TypeParam::make(p); }), cases::kBadFrequency);
    }
}

// Both forms of `apply`, on buffers that must not change.
template <class F>
void expectRefused(const F& filter, mvFrequencyBuffer buffer, const std::string& thrown) {
    const mvFrequencyBuffer before(buffer);
    mvFrequencyBuffer dst = support::bufferOf(support::randomPlane(8, 4, 1));
    const mvFrequencyBuffer dstBefore(dst);
    EXPECT_EQ(thrownBy([&] { filter.apply(buffer); }), thrown);
    EXPECT_EQ(thrownBy([&] { filter.apply(buffer, dst); }), thrown);
    EXPECT_TRUE(buffer == before);
    EXPECT_TRUE(dst == dstBefore);
}

TYPED_TEST(FilterChecks, ApplyAsksForDataThenResponseThenSize) {
    using F = typename TypeParam::Filter;
    const F built = TypeParam::make(TypeParam::parameters());
    const F empty;
    const mvFrequencyBuffer tooWide = support::bufferOf(support::randomPlane(128, 32, 2));
    const mvFrequencyBuffer tooHigh = support::bufferOf(support::randomPlane(64, 64, 3));
    expectRefused(empty, mvFrequencyBuffer(), support::kNoData);
    expectRefused(built, mvFrequencyBuffer(), support::kNoData);
    expectRefused(empty, tooWide, cases::kNoResponse);
    expectRefused(built, tooWide, cases::kOtherSize);
    expectRefused(built, tooHigh, cases::kOtherSize);
}

TYPED_TEST(FilterChecks, ApplyLooksAtThePaddedSize) {
    const auto filter = TypeParam::make(TypeParam::parameters());
    mvFrequencyBuffer buffer(33, 17);
    EXPECT_EQ(thrownBy([&] { filter.apply(buffer); }), "nothing");
}

TYPED_TEST(FilterChecks, NothingPolls) {
    const support::AttentionCounter counter(1);
    auto filter = TypeParam::make(TypeParam::parameters());
    mvFrequencyBuffer buffer(64, 32);
    mvFrequencyBuffer dst;
    filter.apply(buffer);
    filter.apply(buffer, dst);
    EXPECT_EQ(counter.polls(), 0);
}

}  // namespace
