// The records of the filters: bytes, versions, visits, round trips, failed loads.
#include <initializer_list>
#include <memory>

#include "support/filter_classes.h"
#include "support/loading.h"
#include "support/random_planes.h"
#include "support/spectra.h"
#include "support/thrown.h"
#include "support/use.h"

namespace {

using archive::Record;

template <class Kind>
struct FilterRecord : testing::Test {};
TYPED_TEST_SUITE(FilterRecord, archive::ParametricFilters);

// A filter with a response of its own making.
mvFrequencyFilterBandPass built(const archive::BandPass&) {
    return {0.05, 0.02, 0.2, {16, 8}, 1};
}
mvFrequencyFilterBandReject built(const archive::BandReject&) {
    return {0.05, 0.02, 0.2, {16, 8}, 1};
}
mvFrequencyFilterGabor built(const archive::Gabor&) {
    return {{0.05, 0.03}, {0.02, 0}, mvRadian(2.2), 0.2, {16, 8}, 1};
}
mvFrequencyFilterGaborReject built(const archive::GaborReject&) {
    return {{0.05, 0.03}, {0.02, 0}, mvRadian(2.2), 0.2, {16, 8}, 1};
}

// The fields with one of them changed, for each of them; the response stays.
template <class Fields>
std::vector<Fields> changedIn(const Fields& fields,
                              std::initializer_list<double Fields::*> parameters) {
    std::vector<Fields> all;
    const auto changed = [&]() -> Fields& { return all.emplace_back(fields); };
    changed().initialized = !fields.initialized;
    for (const auto parameter : parameters) changed().*parameter += 0.125;
    for (const auto integer : {&Fields::width, &Fields::height, &Fields::radius}) {
        changed().*integer += 1;
    }
    Fields& inOneRow = changed();
    inOneRow.supportWidth = fields.supportWidth * fields.supportHeight;
    inOneRow.supportHeight = 1;
    return all;
}
std::vector<archive::RingRecord> changedIn(const archive::RingRecord& fields) {
    using R = archive::RingRecord;
    return changedIn(fields, {&R::frequency, &R::sigma, &R::plateau});
}
std::vector<archive::LobeRecord> changedIn(const archive::LobeRecord& fields) {
    using L = archive::LobeRecord;
    return changedIn(
        fields, {&L::angle, &L::frequency, &L::sigmaX, &L::sigmaY, &L::plateauX, &L::plateauY});
}

template <class F>
struct Open : F {
    using F::data;
    explicit Open(const F& filter) : F(filter) {}
};

template <class F>
std::vector<float> gainsOf(const F& filter, long count) {
    const Open<F> open(filter);
    return {open.data(), open.data() + count};
}

// The record of a built filter, from what its getters say.
template <class F>
archive::RingRecord ringFields(F& filter, long radius) {
    archive::RingRecord fields;
    fields.supportWidth = static_cast<std::int32_t>(filter.supportWidth());
    fields.frequency = filter.frequency();
    fields.sigma = filter.sigma();
    fields.plateau = filter.plateau();
    fields.width = static_cast<std::int32_t>(filter.size().x);
    fields.height = static_cast<std::int32_t>(filter.size().y);
    fields.radius = static_cast<std::int32_t>(radius);
    fields.response = gainsOf(filter, filter.supportWidth() * 32);
    return fields;
}

template <class F>
archive::LobeRecord lobeFields(F& filter, long radius) {
    archive::LobeRecord fields;
    fields.supportWidth = static_cast<std::int32_t>(filter.supportWidth());
    fields.supportHeight = static_cast<std::int32_t>(filter.supportHeight());
    fields.angle = filter.angle().toDouble();
    fields.frequency = filter.frequency();
    fields.sigmaX = filter.sigma().x;
    fields.sigmaY = filter.sigma().y;
    fields.plateauX = filter.plateau().x;
    fields.plateauY = filter.plateau().y;
    fields.width = static_cast<std::int32_t>(filter.size().x);
    fields.height = static_cast<std::int32_t>(filter.size().y);
    fields.radius = static_cast<std::int32_t>(radius);
    fields.response = gainsOf(filter, filter.supportWidth() * filter.supportHeight());
    return fields;
}

archive::RingRecord fieldsOf(mvFrequencyFilterBandPass& f) {
    return ringFields(f, f.dcRemovalRadius());
}
archive::RingRecord fieldsOf(mvFrequencyFilterBandReject& f) {
    return ringFields(f, f.dcProtectionRadius());
}
archive::LobeRecord fieldsOf(mvFrequencyFilterGabor& f) {
    return lobeFields(f, f.dcRemovalRadius());
}
archive::LobeRecord fieldsOf(mvFrequencyFilterGaborReject& f) {
    return lobeFields(f, f.dcProtectionRadius());
}

TYPED_TEST(FilterRecord, HasTheseBytes) {
    auto filter = built(TypeParam());
    EXPECT_EQ(archive::hex(archive::stored(filter)),
              archive::hex(fieldsOf(filter).record().bytes()));
}

TYPED_TEST(FilterRecord, OfAConstFilterIsTheSame) {
    auto filter = built(TypeParam());
    const auto constant = built(TypeParam());
    EXPECT_EQ(archive::stored(constant), archive::stored(filter));
    support::Loading loading(support::storedBy([&](mvArchive& ar) { mfStore(ar, constant); }));
    const auto loaded = mfLoad<typename TypeParam::Filter>(loading.archive());
    ASSERT_NE(loaded, nullptr);
    EXPECT_TRUE(*loaded == constant);
}

TYPED_TEST(FilterRecord, IsNotLoadedIntoAConstFilter) {
    const auto constant = built(TypeParam());
    support::Loading loading(archive::stored(constant));
    const std::size_t size = loading.rest();
    EXPECT_THROW(loading.archive() || constant, mvArchive::BadValue);
    EXPECT_EQ(loading.rest(), size);
}

TYPED_TEST(FilterRecord, IsStoredAsItWasLoaded) {
    const std::string bytes = typename TypeParam::Fields().record().bytes();
    typename TypeParam::Filter filter;
    archive::load(bytes, filter);
    EXPECT_TRUE(filter.isInitialized());
    EXPECT_EQ(archive::hex(archive::stored(filter)), archive::hex(bytes));
    EXPECT_EQ(archive::hex(fieldsOf(filter).record().bytes()), archive::hex(bytes));
}

TYPED_TEST(FilterRecord, NothingIsValidatedOrComputed) {
    typename TypeParam::Fields fields;
    fields.initialized = false;
    fields.frequency = -77.5;
    fields.width = 6;
    fields.radius = -9;
    const std::string bytes = fields.record().bytes();
    typename TypeParam::Filter filter;
    archive::load(bytes, filter);
    EXPECT_FALSE(filter.isInitialized());
    EXPECT_EQ(filter.frequency(), -77.5);
    EXPECT_EQ(filter.size(), mvPair<long>(6, 4));
    EXPECT_EQ(archive::stored(filter), bytes);
}

TYPED_TEST(FilterRecord, EachFieldAloneCountsForEquality) {
    using F = typename TypeParam::Filter;
    const typename TypeParam::Fields fields;
    const auto filterOf = [](const typename TypeParam::Fields& of) {
        F filter;
        archive::load(of.record().bytes(), filter);
        return filter;
    };
    EXPECT_TRUE(filterOf(fields) == filterOf(fields));
    for (const auto& other : changedIn(fields)) {
        const std::string bytes = archive::hex(other.record().bytes());
        EXPECT_FALSE(filterOf(fields) == filterOf(other)) << bytes;
        EXPECT_FALSE(filterOf(other) == filterOf(fields)) << bytes;
    }
}

TYPED_TEST(FilterRecord, OfADefaultFilterLoads) {
    typename TypeParam::Filter filter;
    const std::string bytes = archive::stored(filter);
    typename TypeParam::Fields fields;
    fields.response.clear();
    EXPECT_EQ(bytes.size(), fields.record().bytes().size());
    EXPECT_EQ(archive::hex(bytes.substr(0, 3)), "00 00 00");
    EXPECT_EQ(archive::hex(bytes.substr(bytes.size() - 6)), "00 00 00 00 00 00");
    auto other = built(TypeParam());
    archive::load(bytes, other);
    EXPECT_TRUE(other == filter);
    EXPECT_FALSE(other.isInitialized());
    EXPECT_EQ(archive::stored(other), bytes);
}

TYPED_TEST(FilterRecord, OfADroppedResponseKeepsTheParameters) {
    using F = typename TypeParam::Filter;
    F filter = built(TypeParam());
    auto fields = fieldsOf(filter);
    const F empty;
    filter = empty;
    fields.hasResponse = false;
    fields.response.clear();
    const std::string bytes = fields.record().bytes();
    EXPECT_EQ(archive::hex(archive::stored(filter)), archive::hex(bytes));
    F again;
    archive::load(bytes, again);
    EXPECT_TRUE(again == filter);
    EXPECT_TRUE(again.isInitialized());
    EXPECT_EQ(archive::stored(again), bytes);
}

TYPED_TEST(FilterRecord, AFlagWithoutAResponseDropsTheFloats) {
    typename TypeParam::Fields fields;
    fields.hasResponse = false;
    auto filter = built(TypeParam());
    archive::load(fields.record().bytes(), filter);
    EXPECT_EQ(support::thrownBy([&] { filter.frequency(); }),
              "Uninitialized: FrequencyFilter has not been initialized");
}

TYPED_TEST(FilterRecord, ALoadedFilterActsAsTheStoredOne) {
    using F = typename TypeParam::Filter;
    F filter = built(TypeParam());
    const std::string bytes = archive::stored(filter);
    F again;
    archive::load(bytes, again);
    EXPECT_TRUE(again == filter);
    EXPECT_EQ(archive::stored(again), bytes);
    mvFrequencyBuffer a = support::bufferOf(support::randomPlane(16, 8, 5));
    mvFrequencyBuffer b(a);
    filter.apply(a);
    again.apply(b);
    EXPECT_TRUE(support::samePlane(support::planeOf(a), support::planeOf(b)));
}

TYPED_TEST(FilterRecord, UnknownVersionsNameTheirPlace) {
    using F = typename TypeParam::Filter;
    for (const unsigned version : {1U, 2U, 255U}) {
        F filter = built(TypeParam());
        typename TypeParam::Fields fields;
        fields.version = version;
        EXPECT_EQ(archive::loadingThrows(fields.record().bytes(), filter), TypeParam::kUnknown);
        fields.baseVersion = version;
        EXPECT_EQ(archive::loadingThrows(fields.record().bytes(), filter), TypeParam::kUnknown);
        EXPECT_TRUE(filter == built(TypeParam()));
        fields.version = 0;
        EXPECT_EQ(archive::loadingThrows(fields.record().bytes(), filter), archive::kUnknownBase);
        EXPECT_TRUE(filter == built(TypeParam()));
    }
}

TYPED_TEST(FilterRecord, IsWrittenOnceForEachArchive) {
    auto filter = built(TypeParam());
    const std::string once = archive::stored(filter);
    std::ostringstream out;
    {
        mvArchive ar(out);
        ar || filter || filter;
        EXPECT_EQ(out.str(), once);
        auto other = built(TypeParam());
        ar || other;
        EXPECT_EQ(out.str(), once + once);
    }
    mvArchive ar(out);
    ar || filter;
    EXPECT_EQ(out.str(), once + once + once);
}

TYPED_TEST(FilterRecord, IsReadOnceForEachArchive) {
    const std::string bytes = typename TypeParam::Fields().record().bytes();
    typename TypeParam::Filter filter;
    archive::Loading loading(bytes + bytes);
    loading.archive() || filter || filter;
    EXPECT_EQ(loading.rest(), bytes.size());
}

TYPED_TEST(FilterRecord, AnotherFilterAtTheSameAddressIsWritten) {
    using F = typename TypeParam::Filter;
    alignas(F) unsigned char place[sizeof(F)];
    std::ostringstream out;
    mvArchive ar(out);
    std::string once;
    for (int i = 0; i < 2; ++i) {
        F* filter = new (place) F(built(TypeParam()));
        ar || *filter;
        once = archive::stored(*filter);
        filter->~F();
    }
    EXPECT_EQ(out.str(), once + once);
}

// Lets the base part be archived by itself.
template <class F>
struct WithBasePart : F {
    explicit WithBasePart(const F& filter) : F(filter) {}
    void basePart(mvArchive& ar) { mvFrequencyFilter::dispatchSerialize(ar); }
};

TYPED_TEST(FilterRecord, TheBasePartIsVisitedByItself) {
    using F = typename TypeParam::Filter;
    WithBasePart<F> filter(built(TypeParam()));
    std::ostringstream out;
    mvArchive ar(out);
    filter.basePart(ar);
    filter.basePart(ar);
    EXPECT_EQ(archive::hex(out.str()), "00 01");
    ar || filter;
    // The whole record, but without its base part.
    const std::string whole = archive::stored(filter);
    EXPECT_EQ(archive::hex(out.str().substr(2)),
              archive::hex(whole.substr(0, 1) + whole.substr(3)));
}

TYPED_TEST(FilterRecord, AFailedLoadLeavesAFilterThatCanBeUsed) {
    using F = typename TypeParam::Filter;
    const std::string good = typename TypeParam::Fields().record().bytes();
    F expected;
    archive::load(good, expected);
    for (std::size_t length = 0; length < good.size(); ++length) {
        F filter = built(TypeParam());
        EXPECT_EQ(archive::loadingThrows(good.substr(0, length), filter), "Truncated") << length;
        archive::use(filter);
        F copy(filter);
        copy = expected;
        EXPECT_TRUE(copy == expected);
        archive::load(good, filter);
        EXPECT_TRUE(filter == expected);
    }
}

TYPED_TEST(FilterRecord, UnknownVersionsOfTheRoutinesAreRefused) {
    const std::string good = typename TypeParam::Fields().record().bytes();
    // The float array's version stands before its count and floats.
    const std::size_t count = typename TypeParam::Fields().response.size();
    std::string bad = good;
    bad[good.size() - 4 * count - 5] = 1;
    typename TypeParam::Filter filter;
    EXPECT_EQ(archive::loadingThrows(bad, filter), archive::kUnknownRoutine);
    // The size's version stands before its two numbers, the radius and the flag.
    bad = good;
    bad[good.size() - 4 * count - 5 - 1 - 4 - 9] = 7;
    EXPECT_EQ(archive::loadingThrows(bad, filter), archive::kUnknownRoutine);
}

TYPED_TEST(FilterRecord, AFlagThatIsNoBoolIsRefused) {
    std::string bad = typename TypeParam::Fields().record().bytes();
    bad[2] = 2;
    typename TypeParam::Filter filter;
    EXPECT_EQ(archive::loadingThrows(bad, filter), "BadValue");
}

// 64 MiB of gains may be missing, and are zeros then; of more, none.
TEST(LobeRecord, LacksNoMoreThan64MiBOfGains) {
    archive::LobeRecord record;
    mvFrequencyFilterGabor filter;
    record.supportWidth = record.supportHeight = 4096;
    EXPECT_EQ(archive::loadingThrows(record.record().bytes(), filter), "nothing");
    EXPECT_EQ(filter.supportHeight(), 4096);
    record.supportWidth = 257;
    record.supportHeight = 65281;
    EXPECT_EQ(archive::loadingThrows(record.record().bytes(), filter), "BadValue");
}

TEST(LobeRecord, KeepsTheGainsBehindItsSupport) {
    archive::LobeRecord record;
    record.response.push_back(0.5F);
    mvFrequencyFilterGabor filter;
    archive::load(record.record().bytes(), filter);
    EXPECT_EQ(filter.data()[record.response.size() - 1], 0.5F);
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(filter.data()[record.response.size() + i], 0.0F);
    record.response.pop_back();
    EXPECT_EQ(archive::stored(filter), record.record().bytes());
}

TEST(RingRecord, WithoutGainsOrANumberRejectsNothing) {
    archive::RingRecord fields;
    fields.supportWidth = 0;
    fields.response.clear();
    for (const double frequency : {0.25, std::numeric_limits<double>::quiet_NaN()}) {
        fields.frequency = frequency;
        mvFrequencyFilterBandReject filter;
        archive::load(fields.record().bytes(), filter);
        const auto source = support::bufferOf(support::randomPlane(8, 4, 1));
        mvFrequencyBuffer result;
        filter.apply(source, result);
        EXPECT_TRUE(support::samePlane(support::planeOf(result), support::planeOf(source)));
    }
}

TEST(RingEquality, IsExact) {
    // Only an archive can put a NaN into a profile.
    archive::RingRecord fields;
    fields.response[5] = std::numeric_limits<float>::quiet_NaN();
    mvFrequencyFilterBandPass filter;
    archive::load(fields.record().bytes(), filter);
    const mvFrequencyFilterBandPass copy(filter);
    EXPECT_FALSE(copy == filter);
}

TEST(LobeEquality, TakesANaNForAnything) {
    archive::LobeRecord fields;
    mvFrequencyFilterGabor one;
    archive::load(fields.record().bytes(), one);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (double* field : {&fields.frequency, &fields.angle, &fields.sigmaX, &fields.plateauY}) {
        *field = nan;
    }
    mvFrequencyFilterGabor other;
    archive::load(fields.record().bytes(), other);
    EXPECT_TRUE(one == other);
    EXPECT_TRUE(other == one);
}

}  // namespace
