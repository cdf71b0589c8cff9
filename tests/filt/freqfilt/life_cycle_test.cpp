// What the four parametric filters share: building, copying, comparing, changing.
#include <memory>
#include <type_traits>
#include <typeinfo>

#include "support/filter_cases.h"
#include "support/longs.h"
#include "support/spectra.h"

namespace {

using support::thrownBy;

template <class Case>
struct FilterLifeCycle : testing::Test {};
TYPED_TEST_SUITE(FilterLifeCycle, cases::AllFilters);

// A filter whose response was dropped by assignment.
template <class F>
F& drop(F& filter) {
    const F empty;
    filter = empty;
    return filter;
}

template <class Case>
void expectHolds(typename Case::Filter& filter, const typename Case::Parameters& p) {
    for (const auto& parameter : Case::allParameters()) {
        EXPECT_TRUE(parameter.holds(filter, p)) << parameter.name;
    }
}

TYPED_TEST(FilterLifeCycle, ADefaultOneHasNoResponse) {
    typename TypeParam::Filter filter;
    EXPECT_FALSE(filter.isInitialized());
    const auto p = TypeParam::parameters();
    for (const auto& parameter : TypeParam::allParameters()) {
        EXPECT_EQ(thrownBy([&] { parameter.set(filter, p); }), cases::kNoResponse);
        EXPECT_EQ(thrownBy([&] { parameter.holds(filter, p); }), cases::kNoResponse);
    }
    EXPECT_EQ(thrownBy([&] { filter.supportWidth(); }), cases::kNoResponse);
    EXPECT_EQ(cases::Open<typename TypeParam::Filter>(filter).data(), nullptr);
}

TYPED_TEST(FilterLifeCycle, TheConstructorBuilds) {
    const auto p = TypeParam::parameters();
    typename TypeParam::Filter filter = TypeParam::make(p);
    EXPECT_TRUE(filter.isInitialized());
    expectHolds<TypeParam>(filter, p);
    EXPECT_EQ(filter.supportWidth() % 2, 1);
}

TYPED_TEST(FilterLifeCycle, SetBuildsADefaultOne) {
    typename TypeParam::Filter filter;
    TypeParam::set(filter, TypeParam::parameters());
    EXPECT_TRUE(filter.isInitialized());
    EXPECT_TRUE(filter == TypeParam::make(TypeParam::parameters()));
}

TYPED_TEST(FilterLifeCycle, NamedParametersBuildTheSame) {
    using F = typename TypeParam::Filter;
    const F expected = TypeParam::make(TypeParam::parameters());
    EXPECT_TRUE(F(TypeParam::named(TypeParam::parameters())) == expected);
    F filter;
    filter.set(TypeParam::named(TypeParam::otherParameters()));
    EXPECT_TRUE(filter == TypeParam::make(TypeParam::otherParameters()));
    filter.set(expected.parameters());
    EXPECT_TRUE(filter == expected);
}

TYPED_TEST(FilterLifeCycle, TellsTheParametersThatItWasBuiltFrom) {
    using F = typename TypeParam::Filter;
    const auto p = TypeParam::parameters();
    const F filter = TypeParam::make(p);
    EXPECT_EQ(filter.parameters(), TypeParam::named(p));
    EXPECT_NE(filter.parameters(), TypeParam::named(TypeParam::otherParameters()));
    for (const auto& parameter : TypeParam::allParameters()) {
        F changed(filter);
        auto other = p;
        parameter.change(other);
        parameter.set(changed, other);
        EXPECT_EQ(changed.parameters(), TypeParam::named(other)) << parameter.name;
        EXPECT_NE(changed.parameters(), filter.parameters()) << parameter.name;
    }
}

TYPED_TEST(FilterLifeCycle, NamedParametersAreCheckedAlike) {
    using F = typename TypeParam::Filter;
    for (const auto& bad : TypeParam::badValues()) {
        auto p = TypeParam::parameters();
        bad.spoil(p);
        F filter = TypeParam::make(TypeParam::otherParameters());
        EXPECT_EQ(thrownBy([&] { F refused(TypeParam::named(p)); }), bad.thrown);
        EXPECT_EQ(thrownBy([&] { filter.set(TypeParam::named(p)); }), bad.thrown);
        EXPECT_TRUE(filter == TypeParam::make(TypeParam::otherParameters()));
    }
}

TYPED_TEST(FilterLifeCycle, HasAResponseFromBuildingToDropping) {
    using F = typename TypeParam::Filter;
    F filter;
    EXPECT_FALSE(filter.hasResponse());
    EXPECT_EQ(thrownBy([&] { static_cast<void>(filter.parameters()); }), cases::kNoResponse);
    filter = TypeParam::make(TypeParam::parameters());
    EXPECT_TRUE(static_cast<const mvFrequencyFilter&>(filter).hasResponse());
    const F taker(std::move(filter));
    EXPECT_FALSE(filter.hasResponse());
    EXPECT_TRUE(taker.hasResponse());
    filter = taker;
    EXPECT_FALSE(drop(filter).hasResponse());
    EXPECT_TRUE(filter.isInitialized());
    EXPECT_EQ(thrownBy([&] { static_cast<void>(filter.parameters()); }), cases::kNoResponse);
}

TYPED_TEST(FilterLifeCycle, TheGainsStandOnA16ByteBoundary) {
    using Open = cases::Open<typename TypeParam::Filter>;
    const Open filter(TypeParam::make(TypeParam::parameters()));
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(filter.data()) % 16, 0U);
}

TYPED_TEST(FilterLifeCycle, ACopyStandsAlone) {
    using F = typename TypeParam::Filter;
    F filter = TypeParam::make(TypeParam::parameters());
    F copy(filter);
    EXPECT_TRUE(copy == filter);
    EXPECT_TRUE(copy.isInitialized());
    expectHolds<TypeParam>(copy, TypeParam::parameters());
    TypeParam::set(filter, TypeParam::otherParameters());
    EXPECT_FALSE(copy == filter);
    EXPECT_TRUE(copy == TypeParam::make(TypeParam::parameters()));
}

TYPED_TEST(FilterLifeCycle, ACloneIsOfTheSameClass) {
    using F = typename TypeParam::Filter;
    const F filter = TypeParam::make(TypeParam::parameters());
    const mvFrequencyFilter& base = filter;
    const std::unique_ptr<mvFrequencyFilter> clone(base.clone());
    const mvFrequencyFilter& cloned = *clone;
    ASSERT_EQ(typeid(cloned), typeid(F));
    EXPECT_TRUE(dynamic_cast<const F&>(cloned) == filter);
    EXPECT_TRUE(clone->isInitialized());
}

TYPED_TEST(FilterLifeCycle, ACloneOfADefaultOneHasNoResponse) {
    using F = typename TypeParam::Filter;
    const std::unique_ptr<mvFrequencyFilter> clone(F().clone());
    EXPECT_NE(dynamic_cast<F*>(clone.get()), nullptr);
    EXPECT_FALSE(clone->isInitialized());
}

TYPED_TEST(FilterLifeCycle, AssignmentCopiesAll) {
    using F = typename TypeParam::Filter;
    const F filter = TypeParam::make(TypeParam::parameters());
    F other = TypeParam::make(TypeParam::otherParameters());
    F empty;
    EXPECT_EQ(&(other = filter), &other);
    EXPECT_EQ(&(empty = filter), &empty);
    EXPECT_TRUE(other == filter);
    EXPECT_TRUE(empty == filter);
    EXPECT_TRUE(empty.isInitialized());
}

TYPED_TEST(FilterLifeCycle, AssignmentToItselfDoesNothing) {
    cases::expectAssignmentToItselfDoesNothing(TypeParam::make(TypeParam::parameters()));
}

TYPED_TEST(FilterLifeCycle, AssignmentFromAnEmptyOneDropsTheResponseAlone) {
    using F = typename TypeParam::Filter;
    F filter = TypeParam::make(TypeParam::parameters());
    drop(filter);
    EXPECT_TRUE(filter.isInitialized());
    EXPECT_EQ(thrownBy([&] { filter.frequency(); }), cases::kNoResponse);
    EXPECT_EQ(thrownBy([&] { filter.frequency(0.1); }), cases::kNoResponse);
    mvFrequencyBuffer buffer(64, 32);
    EXPECT_EQ(thrownBy([&] { filter.apply(buffer); }), cases::kNoResponse);
}

TYPED_TEST(FilterLifeCycle, AssignmentFromAnEmptyTemporaryDoesNoMore) {
    using F = typename TypeParam::Filter;
    F filter = TypeParam::make(TypeParam::parameters());
    filter = F();
    EXPECT_TRUE(filter.isInitialized());
    EXPECT_EQ(thrownBy([&] { filter.frequency(); }), cases::kNoResponse);
}

TYPED_TEST(FilterLifeCycle, WithoutResponseOnlyTheFlagCounts) {
    using F = typename TypeParam::Filter;
    F dropped = TypeParam::make(TypeParam::parameters());
    drop(dropped);
    F otherDropped = TypeParam::make(TypeParam::otherParameters());
    drop(otherDropped);
    EXPECT_TRUE(dropped == otherDropped);
    EXPECT_FALSE(dropped == F());
    EXPECT_TRUE(F() == F());
    EXPECT_FALSE(dropped == TypeParam::make(TypeParam::parameters()));
    EXPECT_FALSE(TypeParam::make(TypeParam::parameters()) == dropped);
    EXPECT_FALSE(F() == TypeParam::make(TypeParam::parameters()));
    EXPECT_FALSE(TypeParam::make(TypeParam::parameters()) == F());
}

TYPED_TEST(FilterLifeCycle, ADroppedResponseComesBackBySet) {
    using F = typename TypeParam::Filter;
    for (const auto& p : {TypeParam::parameters(), TypeParam::otherParameters()}) {
        F filter = TypeParam::make(TypeParam::parameters());
        drop(filter);
        TypeParam::set(filter, p);
        EXPECT_TRUE(filter == TypeParam::make(p));
    }
}

TYPED_TEST(FilterLifeCycle, AsManyGainsTakeThePlaceOfTheFormerOnes) {
    using F = typename TypeParam::Filter;
    const F other = TypeParam::make(TypeParam::parameters());
    cases::Open<F> filter(other);
    const float* const gains = filter.data();
    static_cast<F&>(filter) = other;
    EXPECT_EQ(filter.data(), gains);
    TypeParam::set(drop<F>(filter), TypeParam::parameters());
    EXPECT_EQ(filter.data(), gains);
}

TYPED_TEST(FilterLifeCycle, ACopyWithoutResponseIsADefaultOne) {
    using F = typename TypeParam::Filter;
    F filter = TypeParam::make(TypeParam::parameters());
    drop(filter);
    F copy(filter);
    EXPECT_FALSE(copy.isInitialized());
    EXPECT_TRUE(copy == F());
    const std::unique_ptr<mvFrequencyFilter> clone(filter.clone());
    EXPECT_FALSE(clone->isInitialized());
}

TYPED_TEST(FilterLifeCycle, MovingLeavesNoResponse) {
    using F = typename TypeParam::Filter;
    static_assert(std::is_nothrow_move_constructible_v<F>);
    F filter = TypeParam::make(TypeParam::parameters());
    F moved(std::move(filter));
    EXPECT_TRUE(moved == TypeParam::make(TypeParam::parameters()));
    EXPECT_EQ(thrownBy([&] { filter.frequency(); }), cases::kNoResponse);
    filter = std::move(moved);
    EXPECT_TRUE(filter == TypeParam::make(TypeParam::parameters()));
    EXPECT_EQ(thrownBy([&] { moved.frequency(); }), cases::kNoResponse);
    TypeParam::set(moved, TypeParam::parameters());
    EXPECT_TRUE(moved == filter);
}

TYPED_TEST(FilterLifeCycle, EveryParameterCountsForEquality) {
    using F = typename TypeParam::Filter;
    const F filter = TypeParam::make(TypeParam::parameters());
    for (const auto& parameter : TypeParam::allParameters()) {
        auto p = TypeParam::parameters();
        parameter.change(p);
        const F other = TypeParam::make(p);
        EXPECT_FALSE(filter == other) << parameter.name;
        EXPECT_FALSE(other == filter) << parameter.name;
    }
}

TYPED_TEST(FilterLifeCycle, TheGainsCountForEquality) {
    using F = typename TypeParam::Filter;
    const F filter = TypeParam::make(TypeParam::parameters());
    const cases::Open<F> other(filter);
    other.data()[3] += 0.5F;
    EXPECT_FALSE(filter == other);
    EXPECT_FALSE(static_cast<const F&>(other) == filter);
}

TYPED_TEST(FilterLifeCycle, ASetterBuildsAnew) {
    using F = typename TypeParam::Filter;
    for (const auto& parameter : TypeParam::allParameters()) {
        auto p = TypeParam::parameters();
        F filter = TypeParam::make(p);
        parameter.change(p);
        parameter.set(filter, p);
        expectHolds<TypeParam>(filter, p);
        EXPECT_TRUE(filter == TypeParam::make(p)) << parameter.name;
    }
}

TYPED_TEST(FilterLifeCycle, ASetterTellsTheWatcherBeforeItChanges) {
    using F = typename TypeParam::Filter;
    for (const auto& parameter : TypeParam::allParameters()) {
        auto p = TypeParam::parameters();
        F filter = TypeParam::make(p);
        int calls = 0;
        mvPersistent::watch(filter, [&] {
            ++calls;
            EXPECT_TRUE(filter == TypeParam::make(TypeParam::parameters()));
        });
        parameter.change(p);
        parameter.set(filter, p);
        EXPECT_EQ(calls, 1) << parameter.name;
    }
}

TYPED_TEST(FilterLifeCycle, SetTellsTheWatcherEvenWithTheSameParameters) {
    using F = typename TypeParam::Filter;
    F filter;
    int calls = 0;
    mvPersistent::watch(filter, [&] { ++calls; });
    TypeParam::set(filter, TypeParam::parameters());
    TypeParam::set(filter, TypeParam::parameters());
    EXPECT_EQ(calls, 2);
}

TYPED_TEST(FilterLifeCycle, AssignmentsTellTheWatcherFirst) {
    cases::expectAssignmentsTellTheWatcherFirst(TypeParam::make(TypeParam::parameters()),
                                                TypeParam::make(TypeParam::otherParameters()));
}

TYPED_TEST(FilterLifeCycle, AWatcherThatThrowsKeepsTheFilter) {
    using F = typename TypeParam::Filter;
    const F before = TypeParam::make(TypeParam::parameters());
    F other = TypeParam::make(TypeParam::otherParameters());
    F filter(before);
    mvPersistent::watch(filter, [] { throw support::Interrupted(); });
    EXPECT_THROW(TypeParam::set(filter, TypeParam::otherParameters()), support::Interrupted);
    EXPECT_THROW(filter = other, support::Interrupted);
    EXPECT_THROW(filter = std::move(other), support::Interrupted);
    EXPECT_TRUE(filter == before);
    EXPECT_TRUE(other == TypeParam::make(TypeParam::otherParameters()));
}

TYPED_TEST(FilterLifeCycle, ASetterWithTheStoredValueDoesNothing) {
    using F = typename TypeParam::Filter;
    const auto p = TypeParam::parameters();
    F filter = TypeParam::make(p);
    int calls = 0;
    mvPersistent::watch(filter, [&] { ++calls; });
    for (const auto& parameter : TypeParam::allParameters()) parameter.set(filter, p);
    EXPECT_EQ(calls, 0);
}

TYPED_TEST(FilterLifeCycle, ANaNEqualsTheStoredValue) {
    using F = typename TypeParam::Filter;
    F filter = TypeParam::make(TypeParam::parameters());
    int calls = 0;
    mvPersistent::watch(filter, [&] { ++calls; });
    for (const auto& setNaN : TypeParam::nanSetters()) {
        EXPECT_EQ(thrownBy([&] { setNaN(filter); }), "nothing");
    }
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(filter == TypeParam::make(TypeParam::parameters()));
}

TYPED_TEST(FilterLifeCycle, ALongBeyond32BitsIsHeldAtTheEnd) {
    typename TypeParam::Filter filter;
    auto p = TypeParam::parameters();
    p.radius = support::powerOfTwo(40);
    TypeParam::set(filter, p);
    p.radius = std::numeric_limits<std::int32_t>::max();
    expectHolds<TypeParam>(filter, p);
}

}  // namespace
