// The picture call with several filters: their bits in turn, what it refuses, planes and reaches.
#include <filt/freqfilt.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

#include "support/attention.h"
#include "support/compare.h"
#include "support/filter_records.h"
#include "support/loading.h"
#include "support/picture_cases.h"
#include "support/picture_choice.h"
#include "support/sanitizers.h"
#include "support/thrown.h"

namespace {

using Byte = unsigned char;
using cases::Kind;
using cases::PictureFilter;
using reference::Image;
using support::AttentionCounter;
using support::thrownBy;
using Filters = std::vector<const mvFrequencyFilter*>;
using Pair = mvPair<long>;

constexpr long kFarthest = std::numeric_limits<std::int32_t>::max();
constexpr const char* kNoFilter = "InvalidArgument: There must be at least one filter.";
constexpr const char* kMissing = "InvalidArgument: A filter of the list is missing.";
constexpr const char* kNoResponse = "Uninitialized: FrequencyFilter has not been initialized";
constexpr const char* kSeveralPlanes = "InvalidSize: All filters must be built for one plane.";

// One filter that does what several do in turn: the definition.
class InTurn : public cases::OwnFilter {
  public:
    explicit InTurn(Filters filters) : filters_(std::move(filters)) {}
    void apply(mvFrequencyBuffer& buf) const override {
        for (const mvFrequencyFilter* filter : filters_) filter->apply(buf);
    }

  private:
    Filters filters_;
};

// A list, and what the call must know of it, by the tests' own formulas.
struct List {
    List(const std::vector<Kind>& kinds, Pair plane, unsigned variant) {
        for (const Kind kind : kinds) {
            parts.push_back(cases::makePictureFilter(kind, plane, variant++));
            filters.push_back(parts.back().filter.get());
        }
    }

    PictureFilter asOne() const {
        PictureFilter one{std::make_unique<InTurn>(filters), {}, {}};
        for (const PictureFilter& part : parts) {
            const bool isOwn = part.plane == Pair();
            if (!isOwn) one.plane = part.plane;
            one.reach.x += std::min(isOwn ? kFarthest : part.reach.x, kFarthest - one.reach.x);
            one.reach.y += std::min(isOwn ? kFarthest : part.reach.y, kFarthest - one.reach.y);
        }
        return one;
    }

    std::vector<PictureFilter> parts;
    Filters filters;
};

template <class U, class T>
void expectInTurn(const Image<T>& image, const List& list, const mvFilterImageOptions& options) {
    const PictureFilter one = list.asOne();
    SCOPED_TRACE(testing::Message()
                 << image.width << " x " << image.height << " on (" << one.plane.x << ", "
                 << one.plane.y << "), " << cases::textOf(options));
    const Image<U> expected = cases::expectedPicture<T, U>(image, one, options);
    mvPelBuffer<U> out;
    mfFilterImage(support::pelBufferOf(image), list.filters, out, options);
    ASSERT_TRUE(support::sameImage(support::at(expected, image.x, image.y), support::imageOf(out)));
}

template <class T, class U>
void expectAnyListInTurn(unsigned seed) {
    support::Random random(seed);
    for (unsigned i = 0; i < (support::kSanitized ? 12U : 120U); ++i) {
        std::vector<Kind> kinds(1 + random.below(3));
        for (Kind& kind : kinds) kind = cases::kKinds[random.below(6)];
        const Pair plane(2L << random.below(5), 2L << random.below(5));
        const List list(kinds, plane, i);
        const Image<T> image =
            cases::somePicture<T>(cases::someSide(random), cases::someSide(random), i);
        SCOPED_TRACE(testing::Message() << "case " << i << ", " << kinds.front());
        expectInTurn<U>(support::at(image, 3, -4), list, cases::someOptions<U>(random, plane));
        if (testing::Test::HasFatalFailure()) return;
    }
}

TEST(FilterList, GivesTheBitsOfItsFiltersInTurn) {
    expectAnyListInTurn<Byte, Byte>(1);
    expectAnyListInTurn<Byte, double>(2);
    expectAnyListInTurn<unsigned short, Byte>(3);
    expectAnyListInTurn<double, unsigned short>(4);
    expectAnyListInTurn<double, double>(5);
}

// A pass filter leaves a band of rows behind that the next filter must not take for its own.
TEST(FilterList, OfEveryTwoKindsIsTheOneThenTheOther) {
    for (const Kind first : cases::kKinds) {
        for (const Kind second : cases::kKinds) {
            SCOPED_TRACE(testing::Message() << first << ", " << second);
            expectInTurn<Byte>(cases::somePicture<Byte>(40, 19, 1),
                               List({first, second}, {32, 16}, 5), {.threads = 2});
        }
    }
}

TEST(FilterList, OfOneIsItsFilter) {
    const auto image = support::pelBufferOf(cases::somePicture<Byte>(50, 30, 1));
    for (const Kind kind : cases::kKinds) {
        const PictureFilter filter = cases::makePictureFilter(kind, {32, 16}, 2);
        mvPelBuffer<double> single, listed;
        const long polls = support::pollsOf([&] { mfFilterImage(image, *filter.filter, single); });
        EXPECT_EQ(support::pollsOf([&] { mfFilterImage(image, {filter.filter.get()}, listed); }),
                  polls);
        EXPECT_TRUE(support::sameImage(support::imageOf(single), support::imageOf(listed))) << kind;
    }
}

TEST(FilterList, TakesFiltersOfSeveralClassesInBraces) {
    const mvFrequencyFilterGaborReject lobe({0.05, 0.05}, {0, 0}, mvRadian(1), 0.2, Pair(32, 32),
                                            0);
    const mvFrequencyFilterBandPass ring({.sigma = 0.1, .frequency = 0.1, .size = {32, 32}});
    const auto image = support::pelBufferOf(cases::somePicture<Byte>(50, 30, 1));
    mvPelBuffer<Byte> braced, listed;
    mfFilterImage(image, {&lobe, &ring}, braced, {.rescale = true});
    mfFilterImage(image, Filters{&lobe, &ring}, listed, {.rescale = true});
    EXPECT_TRUE(support::sameImage(support::imageOf(braced), support::imageOf(listed)));
    EXPECT_EQ(mfFilterPlane({&lobe, &ring}), Pair(32, 32));
    EXPECT_EQ(mfFilterReach({&lobe, &ring}), Pair(13 + 7, 13 + 7));
}

TEST(FilterList, WorksInPlace) {
    const List list({Kind::kGaborReject, Kind::kBandPass}, {16, 8}, 3);
    const Image<Byte> image = cases::somePicture<Byte>(41, 23, 3);
    mvPelBuffer<Byte> pels = support::pelBufferOf(image);
    mfFilterImage(pels, list.filters, pels);
    EXPECT_TRUE(support::sameImage(cases::expectedPicture<Byte, Byte>(image, list.asOne(), {}),
                                   support::imageOf(pels)));
}

// A call that is right in all respects; faults make it wrong in some.
struct Call {
    mvPelBuffer<Byte> image{20, 10}, out{20, 10};
    archive::RingRecord first{.supportWidth = 1, .width = 8, .height = 8};
    archive::RingRecord second{.supportWidth = 1, .width = 8, .height = 8};
    enum class How { kWhole, kEmpty, kHole } how = How::kWhole;
    mvFilterImageOptions options;

    void run() {
        mvFrequencyFilterBandPass a;
        mvFrequencyFilterBandReject b;
        archive::load(first.record().bytes(), a);
        archive::load(second.record().bytes(), b);
        Filters filters{&a, &b};
        if (how == How::kEmpty) filters.clear();
        if (how == How::kHole) filters[1] = nullptr;
        mfFilterImage(image, filters, out, options);
    }
};

struct Fault {
    const char* thrown;
    std::function<void(Call&)> make;
};

// In the order of the checks; each holds for what the one before it leaves.
const std::vector<Fault> kFaults = {
    {support::kUnbound, [](Call& c) { c.image = {}; }},
    {kNoFilter, [](Call& c) { c.how = Call::How::kEmpty; }},
    {kMissing, [](Call& c) { c.how = Call::How::kHole; }},
    {kNoResponse, [](Call& c) { c.second.hasResponse = false; }},
    {kSeveralPlanes, [](Call& c) { c.second.width = 16; }},
    {support::kTooLarge, [](Call& c) { c.first.height = c.second.height = 4096; }},
    {support::kNotPowerOfTwo, [](Call& c) { c.first.width = c.second.width = 12; }},
    {"InvalidArgument: The number of threads must be positive.",
     [](Call& c) { c.options.threads = 0; }},
};

TEST(FilterListErrors, ComeInTheirOrderBeforeAnyPoll) {
    EXPECT_EQ(thrownBy([] { Call().run(); }), "nothing");
    for (std::size_t first = 0; first < kFaults.size(); ++first) {
        for (std::size_t second = first; second < kFaults.size(); ++second) {
            // An empty list has no hole.
            if (first == 1 && second == 2) continue;
            Call call;
            kFaults[second].make(call);
            kFaults[first].make(call);
            const AttentionCounter counter(1);
            EXPECT_EQ(thrownBy([&] { call.run(); }), kFaults[first].thrown)
                << "also " << kFaults[second].thrown;
            EXPECT_EQ(counter.polls(), 0);
        }
    }
}

TEST(FilterListErrors, NameTheFirstFilterWithoutResponse) {
    const mvFrequencyFilterBandPass ring;
    const mvFrequencyFilterImage image;
    mvPelBuffer<Byte> pels(5, 5), out;
    EXPECT_EQ(thrownBy([&] { mfFilterImage(pels, {&ring, &image}, out); }), kNoResponse);
    EXPECT_EQ(thrownBy([&] { mfFilterImage(pels, {&image, &ring}, out); }), support::kNoData);
    EXPECT_FALSE(out.isBound());
}

TEST(FilterListErrors, OfAnyPlaceInTheListAreSeen) {
    const mvFrequencyFilterBandPass a({.sigma = 0.1, .frequency = 0.1, .size = {16, 16}});
    const mvFrequencyFilterBandPass b({.sigma = 0.1, .frequency = 0.1, .size = {16, 32}});
    const cases::OwnFilter own;
    for (const Filters& filters : std::vector<Filters>{
             {&a, &a, &b}, {&a, &b, &a}, {&b, &a, &a}, {&own, &a, &b}, {&a, &own, &b}}) {
        EXPECT_EQ(thrownBy([&] { mfFilterPlane(filters); }), kSeveralPlanes);
        EXPECT_EQ(thrownBy([&] { mfFilterReach(filters); }), kSeveralPlanes);
    }
    for (const Filters& filters : std::vector<Filters>{{nullptr}, {&a, nullptr}, {nullptr, &a}}) {
        EXPECT_EQ(thrownBy([&] { mfFilterPlane(filters); }), kMissing);
        EXPECT_EQ(thrownBy([&] { mfFilterReach(filters); }), kMissing);
    }
    EXPECT_EQ(thrownBy([] { mfFilterPlane(Filters()); }), kNoFilter);
    EXPECT_EQ(thrownBy([] { mfFilterReach(Filters()); }), kNoFilter);
}

long pollsOfThreeCalls(const List& list, Pair plane, long tiles) {
    const auto tile = support::pelBufferOf(cases::somePicture<Byte>(plane.x, plane.y, 1));
    return tiles * support::pollsOf([&] {
               mvFrequencyBuffer spectrum;
               mfForwardFFT<Byte>(tile, spectrum);
               for (const mvFrequencyFilter* filter : list.filters) filter->apply(spectrum);
               mvPelBuffer<Byte> out;
               mfInverseFFT<Byte>(spectrum, out, false, true);
           });
}

TEST(FilterListPolls, AreNoFewerThanThoseOfTheThreeCalls) {
    const Pair plane(16, 32);
    const auto image = support::pelBufferOf(cases::somePicture<Byte>(3 * 16, 2 * 32, 1));
    for (const Kind kind : cases::kKinds) {
        const List list({Kind::kGabor, kind, Kind::kImage}, plane, 3);
        mvPelBuffer<Byte> out;
        const long polls = support::pollsOf([&] {
            mfFilterImage(image, list.filters, out, {.border = mvBorder::zero, .margin = {0, 0}});
        });
        EXPECT_GE(polls, pollsOfThreeCalls(list, plane, 6)) << kind;
    }
}

// The polls of the filters' reaches are among them.
TEST(FilterListPolls, EndTheCallWhenTheyFail) {
    const auto image = support::pelBufferOf(cases::somePicture<Byte>(20, 12, 1));
    const List list({Kind::kImage, Kind::kGaborReject, Kind::kBandPass, Kind::kImage}, {8, 8}, 3);
    const auto run = [&](mvPelBuffer<Byte>& out) { mfFilterImage(image, list.filters, out); };
    mvPelBuffer<Byte> good;
    const long polls = support::pollsOf([&] { run(good); });
    ASSERT_GT(polls, 0);
    for (long n = 1; n <= polls; ++n) {
        mvPelBuffer<Byte> out;
        const AttentionCounter counter(n);
        EXPECT_EQ(thrownBy([&] { run(out); }), "status 77");
        EXPECT_EQ(counter.polls(), n);
        EXPECT_FALSE(out.isBound());
    }
}

// A filter of a caller's own that changes the size is named before the next one meets the buffer.
class Resizing : public cases::OwnFilter {
  public:
    void apply(mvFrequencyBuffer& buf) const override { buf = mvFrequencyBuffer(4, 4); }
};

TEST(FilterListOwn, MayNotChangeTheSize) {
    const mvFrequencyFilterBandPass ring({.sigma = 0.1, .frequency = 0.1, .size = {16, 16}});
    const Resizing resizing;
    mvPelBuffer<Byte> image(30, 30), out;
    for (const int threads : {1, 3}) {
        EXPECT_EQ(thrownBy([&] {
                      mfFilterImage(image, {&resizing, &ring}, out, {.threads = threads});
                  }),
                  "InvalidSize: The filter has changed the size of its buffer.");
    }
}

TEST(FilterListOwn, OfNothingElseHasNoPlane) {
    const cases::OwnFilter a, b;
    EXPECT_EQ(mfFilterPlane({&a, &b}), Pair(0, 0));
    EXPECT_EQ(mfFilterReach({&a, &b}), Pair(0, 0));
}

TEST(FilterListOwn, HasThePlaneOfTheOthersAndNoReach) {
    const cases::OwnFilter own;
    const mvFrequencyFilterBandPass ring({.sigma = 0.1, .frequency = 0.1, .size = {16, 8}});
    EXPECT_EQ(mfFilterPlane({&own, &ring}), Pair(16, 8));
    EXPECT_EQ(mfFilterReach({&ring, &own}), Pair(0, 0));
}

mvFrequencyFilterBandPass ringOfSigma(double sigma) {
    mvFrequencyFilterBandPass ring;
    archive::load(archive::RingRecord{.sigma = sigma}.record().bytes(), ring);
    return ring;
}

TEST(FilterListReach, IsTheSumOfTheReaches) {
    const List list({Kind::kBandPass, Kind::kGabor, Kind::kImage}, {32, 16}, 4);
    EXPECT_EQ(mfFilterReach(list.filters), list.asOne().reach);
}

TEST(FilterListReach, StaysWithinItsLimits) {
    const mvFrequencyFilterBandPass narrow = ringOfSigma(1e-9), none = ringOfSigma(0);
    EXPECT_EQ(mfFilterReach({&narrow, &narrow}), Pair(2 * 636619773, 2 * 636619773));
    EXPECT_EQ(mfFilterReach({&narrow, &none, &none}), Pair(kFarthest, kFarthest));
}

}  // namespace
