// The picture call: its errors in their order, its polls, its threads, filters of a caller's own.
#include <filt/freqfilt.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <functional>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

#include "support/attention.h"
#include "support/buffer_record.h"
#include "support/compare.h"
#include "support/filter_records.h"
#include "support/loading.h"
#include "support/picture_cases.h"
#include "support/random_planes.h"
#include "support/three_calls.h"
#include "support/thrown.h"

namespace {

using Byte = unsigned char;
using cases::Kind;
using cases::PictureFilter;
using support::AttentionCounter;
using support::thrownBy;

// A call that is right in all respects; faults make it wrong in some.
struct Call {
    mvPelBuffer<double> image{20, 10};
    archive::RingRecord record{.supportWidth = 1, .width = 8, .height = 8};
    mvPelBuffer<Byte> bytes{20, 10};
    mvPelBuffer<double> doubles{20, 10};
    bool toDoubles = false;
    mvFilterImageOptions options;

    void run() {
        mvFrequencyFilterBandPass filter;
        archive::load(record.record().bytes(), filter);
        if (toDoubles) {
            mfFilterImage(image, filter, doubles, options);
        } else {
            mfFilterImage(image, filter, bytes, options);
        }
    }
};

struct Fault {
    const char* thrown;
    std::function<void(Call&)> make;
};

constexpr const char* kNoResponse = "Uninitialized: FrequencyFilter has not been initialized";
constexpr const char* kMargin = "InvalidArgument: The margin leaves nothing of a tile.";

// In the order of the checks.
const std::vector<Fault> kFaults = {
    {support::kUnbound, [](Call& c) { c.image = {}; }},
    {kNoResponse, [](Call& c) { c.record.hasResponse = false; }},
    {support::kTooLarge, [](Call& c) { c.record.height = 4096; }},
    {support::kNotPowerOfTwo, [](Call& c) { c.record.width = 12; }},
    {"InvalidArgument: Real parts need an output of doubles.",
     [](Call& c) { c.options.result = mvFilterResult::real; }},
    {"InvalidArgument: Rescaling needs an output of integers.",
     [](Call& c) {
         c.toDoubles = true;
         c.options.rescale = true;
     }},
    {kMargin, [](Call& c) { c.options.margin.y = 4; }},
    {"InvalidArgument: The number of threads must be positive.",
     [](Call& c) { c.options.threads = 0; }},
    {"InvalidSize: The output must have the size of the image.",
     [](Call& c) {
         c.bytes = mvPelBuffer<Byte>(10, 20);
         c.doubles = mvPelBuffer<double>(20, 11);
     }},
};

TEST(FilterImageErrors, ComeOneByOne) {
    EXPECT_EQ(thrownBy([] { Call().run(); }), "nothing");
    for (const Fault& fault : kFaults) {
        Call call;
        fault.make(call);
        EXPECT_EQ(thrownBy([&] { call.run(); }), fault.thrown);
    }
}

// Real parts of integers and rescaled doubles exclude one another: the second takes the first away.
TEST(FilterImageErrors, ComeInTheirOrder) {
    for (std::size_t first = 0; first < kFaults.size(); ++first) {
        for (std::size_t second = first + 1; second < kFaults.size(); ++second) {
            if (first == 4 && second == 5) continue;
            Call call;
            kFaults[second].make(call);
            kFaults[first].make(call);
            EXPECT_EQ(thrownBy([&] { call.run(); }), kFaults[first].thrown)
                << "also " << kFaults[second].thrown;
        }
    }
}

TEST(FilterImageErrors, ComeBeforeAnyPollAndAnyPel) {
    for (const Fault& fault : kFaults) {
        Call call;
        fault.make(call);
        mfPelSet(call.bytes, 7);
        mfPelSet(call.doubles, 7);
        const AttentionCounter counter(1);
        EXPECT_EQ(thrownBy([&] { call.run(); }), fault.thrown);
        EXPECT_EQ(counter.polls(), 0);
        EXPECT_EQ(call.bytes.pel(3, 3), 7);
        EXPECT_EQ(call.doubles.pel(3, 3), 7);
    }
}

struct MarginCase {
    mvPair<long> margin;
    mvBorder border;
    const char* thrown;
};

// The image has 20 x 10 pels, the plane 16 x 16.
TEST(FilterImageErrors, JudgeMarginsAxisByAxis) {
    const mvBorder zero = mvBorder::zero, mirror = mvBorder::mirror;
    const long huge = std::numeric_limits<long>::max();
    for (const auto& [margin, border, thrown] : std::vector<MarginCase>{
             {{-1, -1}, mirror, "nothing"},
             {{-2, -1}, mirror, kMargin},
             {{-1, -2}, zero, kMargin},
             {{std::numeric_limits<long>::min(), 0}, zero, kMargin},
             {{7, 3}, mirror, "nothing"},
             {{8, 3}, mirror, kMargin},
             {{0, 7}, mirror, "nothing"},
             {{0, 8}, mirror, kMargin},
             {{0, huge}, mirror, kMargin},
             {{0, 8}, zero, "nothing"},
             {{0, huge}, zero, "nothing"},
             {{8, 0}, zero, kMargin},
             {{huge, 0}, zero, kMargin},
         }) {
        SCOPED_TRACE(testing::Message() << margin.x << ", " << margin.y);
        Call call;
        call.record.width = call.record.height = 16;
        call.options.margin = margin;
        call.options.border = border;
        EXPECT_EQ(thrownBy([&] { call.run(); }), thrown);
    }
}

TEST(FilterImageErrors, RefuseLargeImagesForFiltersWithoutPlane) {
    const cases::OwnFilter own;
    const auto thrownFor = [&](long width, long height, mvBorder border) {
        mvPelBuffer<Byte> image(width, height), out;
        return thrownBy([&] { mfFilterImage(image, own, out, {.border = border}); });
    };
    EXPECT_EQ(thrownFor(2048, 1, mvBorder::zero), "nothing");
    EXPECT_EQ(thrownFor(2049, 1, mvBorder::zero), support::kTooLarge);
    EXPECT_EQ(thrownFor(1, 2049, mvBorder::zero), support::kTooLarge);
    EXPECT_EQ(thrownFor(1638, 1, mvBorder::mirror), "nothing");
    EXPECT_EQ(thrownFor(1639, 1, mvBorder::mirror), support::kTooLarge);
    EXPECT_EQ(thrownFor(1, 1639, mvBorder::mirror), support::kTooLarge);
}

// Filters of a caller's own have no tiles, so that no margin is too large; but one below -1 is
// wrong.
TEST(FilterImageErrors, JudgeMarginsForFiltersWithoutPlane) {
    const cases::OwnFilter own;
    mvPelBuffer<Byte> image(20, 10), out;
    EXPECT_EQ(thrownBy([&] { mfFilterImage(image, own, out, {.margin = {4000, 9}}); }), "nothing");
    EXPECT_EQ(thrownBy([&] { mfFilterImage(image, own, out, {.margin = {0, -2}}); }), kMargin);
}

TEST(FilterImageErrors, SayWhatApplySaysOfAnImageFilterWithoutImage) {
    const mvFrequencyFilterImage filter;
    mvPelBuffer<Byte> image(20, 10), out;
    EXPECT_EQ(thrownBy([&] { mfFilterImage(image, filter, out); }), support::kNoData);
}

mvFrequencyFilterImage imageFilterOf(support::BufferRecord record) {
    return mvFrequencyFilterImage(support::loaded(record));
}

TEST(FilterImageErrors, RefuseLoadedImageFiltersOfOddSizes) {
    mvPelBuffer<Byte> image(20, 10), out;
    EXPECT_EQ(thrownBy([&] { mfFilterImage(image, imageFilterOf(support::recordOf(12, 8)), out); }),
              support::kNotPowerOfTwo);
    EXPECT_EQ(
        thrownBy([&] { mfFilterImage(image, imageFilterOf(support::recordOf(4096, 1)), out); }),
        support::kTooLarge);
    support::BufferRecord spent = support::recordOf(8, 8);
    spent.inverseComputed = true;
    EXPECT_EQ(thrownBy([&] { mfFilterImage(image, imageFilterOf(spent), out); }), support::kSpent);
    EXPECT_FALSE(out.isBound());
}

// A DC square that does not fit the plane ends the first tile, as it ends `apply`.
TEST(FilterImageErrors, OfApplyLeaveTheCall) {
    const mvFrequencyFilterBandPass filter(0.1, 0.0, 0.2, mvPair<long>(8, 8), 9);
    mvPelBuffer<Byte> image(50, 50), out;
    for (const int threads : {1, 3}) {
        EXPECT_EQ(thrownBy([&] { mfFilterImage(image, filter, out, {.threads = threads}); }),
                  support::kOutOfBounds);
        EXPECT_FALSE(out.isBound());
    }
}

template <class T>
reference::Image<T> somePicture(long width, long height) {
    return support::randomImage<T>(width, height, 17);
}

// The sum over all tiles.
long pollsOfThreeCalls(const PictureFilter& filter, mvPair<long> plane, long tiles) {
    const auto tile = support::pelBufferOf(somePicture<Byte>(plane.x, plane.y));
    return tiles * support::pollsOf([&] { support::byThreeCalls<Byte>(tile, *filter.filter); });
}

// With one whole tile, with several, and with one that is filled up with zeros.
void expectNoFewerPollsThanThreeCalls(const PictureFilter& filter, mvPair<long> plane) {
    const auto expect = [&](long width, long height, long tiles) {
        const auto image = support::pelBufferOf(somePicture<Byte>(width, height));
        mvPelBuffer<Byte> out;
        const long polls = support::pollsOf([&] {
            mfFilterImage(image, *filter.filter, out, {.border = mvBorder::zero, .margin = {0, 0}});
        });
        EXPECT_GE(polls, pollsOfThreeCalls(filter, plane, tiles)) << width << " x " << height;
    };
    expect(plane.x, plane.y, 1);
    expect(3 * plane.x, 2 * plane.y, 6);
    expect(1, 1, 1);
}

constexpr mvPair<long> kPolledPlanes[] = {{4, 4},  {8, 8},  {16, 16}, {64, 64},  {256, 256},
                                          {4, 64}, {32, 2}, {256, 4}, {2048, 4}, {16, 128}};

TEST(FilterImagePolls, AreNoFewerThanThoseOfTheThreeCalls) {
    for (const mvPair<long> plane : kPolledPlanes) {
        for (const Kind kind : cases::kKinds) {
            if (kind == Kind::kOwn) continue;
            SCOPED_TRACE(testing::Message() << kind << ", " << plane.x << " x " << plane.y);
            expectNoFewerPollsThanThreeCalls(cases::makePictureFilter(kind, plane, 3), plane);
        }
    }
}

// Little or nothing is left to do then, but for the polls: a small disk around DC, of which a
// square is cleared. On small planes it is all of the disk, with the larger square on all that are
// square.
TEST(FilterImagePolls, AreNoFewerForAFilterThatLeavesLittle) {
    for (const mvPair<long> plane : kPolledPlanes) {
        const long side = std::min(plane.x, plane.y);
        for (const long radius : {1L, 1 + side / 16}) {
            SCOPED_TRACE(testing::Message() << plane.x << " x " << plane.y << ", " << radius);
            expectNoFewerPollsThanThreeCalls(
                {std::make_unique<mvFrequencyFilterBandPass>(1e-4, 0.0, 0.0, plane, radius),
                 plane,
                 {}},
                plane);
        }
    }
}

// Every poll ends the call when it fails, with a status or with an exception of its own.
TEST(FilterImagePolls, EndTheCallWhenTheyFail) {
    const auto image = support::pelBufferOf(somePicture<Byte>(20, 12));
    for (const Kind kind : cases::kKinds) {
        const PictureFilter filter = cases::makePictureFilter(kind, {8, 8}, 3);
        const auto run = [&](mvPelBuffer<Byte>& out) { mfFilterImage(image, *filter.filter, out); };
        mvPelBuffer<Byte> good;
        const long polls = support::pollsOf([&] { run(good); });
        ASSERT_GT(polls, 0);
        for (long n = 1; n <= polls; ++n) {
            mvPelBuffer<Byte> out;
            const AttentionCounter counter(
                n, n % 2 == 0 ? AttentionCounter::How::kStatus : AttentionCounter::How::kThrow);
            EXPECT_EQ(thrownBy([&] { run(out); }), n % 2 == 0 ? "status 77" : "Interrupted");
            EXPECT_EQ(counter.polls(), n);
            EXPECT_FALSE(out.isBound());
        }
    }
}

// An image filter's reach is a transform that can be ended as well.
TEST(FilterImagePolls, OfAnImageFiltersReachEndItWhenTheyFail) {
    const PictureFilter filter = cases::makePictureFilter(Kind::kImage, {16, 32}, 3);
    const long polls = support::pollsOf([&] { mfFilterReach(*filter.filter); });
    ASSERT_GT(polls, 0);
    const AttentionCounter counter(polls);
    EXPECT_EQ(thrownBy([&] { mfFilterReach(*filter.filter); }), "status 77");
}

// Half a plane leaves room for any margin beside it, a pel more does not.
TEST(FilterImagePolls, OfAnImageFiltersReachAreSparedWhereAPictureFitsWithAnyMargin) {
    const PictureFilter filter = cases::makePictureFilter(Kind::kImage, {16, 32}, 3);
    mvPair<long> reach;
    const long search = support::pollsOf([&] { reach = mfFilterReach(*filter.filter); });
    const mvPair<long> margin(std::min(reach.x, 4L), std::min(reach.y, 8L));
    const auto polls = [&](mvPair<long> size, mvPair<long> given) {
        const auto image = support::pelBufferOf(somePicture<Byte>(size.x, size.y));
        mvPelBuffer<Byte> out;
        return support::pollsOf(
            [&] { mfFilterImage(image, *filter.filter, out, {.margin = given}); });
    };
    EXPECT_EQ(polls({8, 16}, {-1, -1}), polls({8, 16}, margin));
    EXPECT_EQ(polls({9, 16}, {-1, -1}), polls({9, 16}, {margin.x, -1}) + search);
    EXPECT_EQ(polls({8, 17}, {-1, -1}), polls({8, 17}, {-1, margin.y}) + search);
}

long threadsOfThisProcess() {
    long count = 0;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/task")) {
        count += entry.is_directory() ? 1 : 0;
    }
    return count;
}

TEST(FilterImageThreads, AskTheCallingThreadsHandlerAlone) {
    const PictureFilter filter = cases::makePictureFilter(Kind::kBandPass, {16, 16}, 3);
    const auto image = support::pelBufferOf(somePicture<Byte>(200, 200));
    static std::mutex mutex;
    static std::set<std::thread::id> askers;
    const auto former = vsys_set_attention_handler(
        [](void*) {
            const std::lock_guard lock(mutex);
            askers.insert(std::this_thread::get_id());
            return 0;
        },
        nullptr);
    mvPelBuffer<Byte> out;
    mfFilterImage(image, *filter.filter, out, {.threads = 4});
    vsys_set_attention_handler(former.handler, former.context);
    EXPECT_EQ(askers, std::set{std::this_thread::get_id()});
}

TEST(FilterImageThreads, EndWithTheCall) {
    const PictureFilter filter = cases::makePictureFilter(Kind::kBandPass, {32, 32}, 3);
    const auto image = support::pelBufferOf(somePicture<Byte>(300, 300));
    const long before = threadsOfThisProcess();
    for (const long failAt : {0L, 1L, 5L, 40L}) {
        for (const int threads : {2, 4, 1000}) {
            mvPelBuffer<Byte> out;
            const AttentionCounter counter(failAt, AttentionCounter::How::kThrow);
            const std::string thrown =
                thrownBy([&] { mfFilterImage(image, *filter.filter, out, {.threads = threads}); });
            const bool failed = failAt > 0 && counter.polls() >= failAt;
            EXPECT_EQ(thrown, failed ? "Interrupted" : "nothing");
            EXPECT_EQ(out.isBound(), !failed);
            EXPECT_EQ(threadsOfThisProcess(), before);
            // The calling thread does a tile of its own in any case.
            EXPECT_GT(counter.polls(), 0);
        }
    }
}

// A filter that is derived from one of the five has its plane; what it does is its own affair.
class Counting : public mvFrequencyFilterBandPass {
  public:
    explicit Counting(long throwAt = 0)
        : mvFrequencyFilterBandPass(0.1, 0.0, 0.2, mvPair<long>(16, 16), 0), throwAt_(throwAt) {}

    void apply(mvFrequencyBuffer& buf) const override {
        if (++calls_ == throwAt_) throw mvFrequencyDefs::BadCoord("ours");
        mvFrequencyFilterBandPass::apply(buf);
        for (long x = 0; x < buf.width(); ++x) buf.put(x, 3, {1.0, 2.0}, false);
    }
    long calls() const { return calls_; }

  private:
    long throwAt_;
    mutable std::atomic<long> calls_ = 0;
};

TEST(FilterImageDerived, UsesTheFiltersOwnApply) {
    const auto image = somePicture<Byte>(40, 40);
    const PictureFilter filter{std::make_unique<Counting>(), {16, 16}, {7, 7}};
    const mvFilterImageOptions options{.margin = {2, 2}, .threads = 3};
    const auto expected = cases::expectedPicture<Byte, Byte>(image, filter, options);
    const Counting counting;
    EXPECT_EQ(mfFilterPlane(counting), mvPair<long>(16, 16));
    mvPelBuffer<Byte> out;
    mfFilterImage(support::pelBufferOf(image), counting, out, options);
    EXPECT_TRUE(support::sameImage(expected, support::imageOf(out)));
    EXPECT_EQ(counting.calls(), 16);
}

TEST(FilterImageDerived, EndsTheCallFromWhateverThread) {
    const auto image = support::pelBufferOf(somePicture<Byte>(100, 100));
    for (const int threads : {1, 2, 4}) {
        for (long n = 1; n < 30; n += 7) {
            const Counting counting(n);
            mvPelBuffer<Byte> out;
            EXPECT_EQ(thrownBy([&] { mfFilterImage(image, counting, out, {.threads = threads}); }),
                      "BadCoord: ours");
            EXPECT_FALSE(out.isBound());
            // How far other threads come until they know is a matter of time.
            if (threads == 1) {
                EXPECT_EQ(counting.calls(), n);
            }
        }
    }
}

// What a filter of a caller's own may do to its buffer, and what becomes of the call.
class Rough : public cases::OwnFilter {
  public:
    explicit Rough(std::function<void(mvFrequencyBuffer&)> act) : act_(std::move(act)) {}
    void apply(mvFrequencyBuffer& buf) const override { act_(buf); }

  private:
    std::function<void(mvFrequencyBuffer&)> act_;
};

std::string thrownWith(std::function<void(mvFrequencyBuffer&)> act, mvPelBuffer<double>& out) {
    mvPelBuffer<double> image(5, 3);
    mfPelSet(image, 9);
    return thrownBy(
        [&] { mfFilterImage(image, Rough(std::move(act)), out, {.border = mvBorder::zero}); });
}

TEST(FilterImageOwn, MayLeaveABufferInAnyState) {
    mvPelBuffer<double> out;
    EXPECT_EQ(thrownWith([](mvFrequencyBuffer& buf) { buf = mvFrequencyBuffer(); }, out),
              support::kNoData);
    constexpr const char* kSize = "InvalidSize: The filter has changed the size of its buffer.";
    EXPECT_EQ(thrownWith([](mvFrequencyBuffer& buf) { buf = mvFrequencyBuffer(4, 4); }, out),
              kSize);
    EXPECT_EQ(thrownWith([](mvFrequencyBuffer& buf) { buf = mvFrequencyBuffer(8, 8); }, out),
              kSize);
    EXPECT_FALSE(out.isBound());
    // A smaller image in a plane of the size, at an offset: the plane counts.
    EXPECT_EQ(thrownWith(
                  [](mvFrequencyBuffer& buf) {
                      mvPelBuffer<double> other(5, 3);
                      other.offset(2, 1);
                      mfPelSet(other, 4);
                      mfForwardFFT<double>(other, buf);
                  },
                  out),
              "nothing");
    EXPECT_EQ(out.pel(4, 2), 4);
    EXPECT_EQ(out.offset(), mvPair<long>(0, 0));
    // One that an inverse has overwritten is taken as it is.
    EXPECT_EQ(thrownWith(
                  [](mvFrequencyBuffer& buf) {
                      mvFrequencyBuffer plane;
                      mfInverseFFT(buf, plane, true);
                  },
                  out),
              "nothing");
    EXPECT_EQ(out.pel(4, 2), 9);
}

TEST(FilterImagePlacement, OfANewImageIsThatOfTheInput) {
    const mvFrequencyFilterBandPass filter(0.1, 0.0, 0.2, mvPair<long>(16, 16), 0);
    mvPelBuffer<Byte> image = support::pelBufferOf(support::at(somePicture<Byte>(9, 7), 5, -3));
    image.copyXforms(support::someXformCache());
    mvPelBuffer<double> out;
    out.offset(77, 78);
    mfFilterImage(image, filter, out);
    EXPECT_EQ(out.offset(), mvPair<long>(5, -3));
    EXPECT_EQ(out.xformCache(), support::someXformCache());
}

TEST(FilterImagePlacement, OfABoundImageStays) {
    const mvFrequencyFilterBandPass filter(0.1, 0.0, 0.2, mvPair<long>(16, 16), 0);
    mvPelBuffer<Byte> image = support::pelBufferOf(support::at(somePicture<Byte>(9, 7), 5, -3));
    mvPelBuffer<double> out(9, 7);
    out.offset(77, 78);
    out.copyXforms(support::someXformCache());
    const double* const pels = out.pointToOffset();
    mfFilterImage(image, filter, out);
    EXPECT_EQ(out.offset(), mvPair<long>(77, 78));
    EXPECT_EQ(out.xformCache(), support::someXformCache());
    EXPECT_EQ(out.pointToOffset(), pels);
}

TEST(FilterImageErrors, OfASquareBeyondThePlaneAreThoseOfApply) {
    const mvPelBuffer<Byte> image(4, 4);
    for (const mvPair<long> plane : {mvPair<long>(16, 16), mvPair<long>(32, 16)}) {
        const mvFrequencyFilterBandPass ring(0.1, 0.05, 0.2, plane, 9);
        mvFrequencyBuffer spectrum(plane.x, plane.y);
        mvPelBuffer<Byte> out;
        EXPECT_EQ(thrownBy([&] { ring.apply(spectrum); }), support::kOutOfBounds);
        EXPECT_EQ(thrownBy([&] { mfFilterImage(image, ring, out); }), support::kOutOfBounds);
    }
}

// An inverse makes these two pels of it, 4 apart. All sums and differences are exact.
mvFrequencyFilterImage twoPels(double first, double second) {
    mvFrequencyBuffer spectrum(8, 1);
    for (long u = 0; u < 8; ++u) {
        const double element = u % 2 == 0 ? first + second : first - second;
        spectrum.put(u, 0, {element / 8, 0.0}, false);
    }
    return mvFrequencyFilterImage(spectrum);
}

TEST(FilterReach, OfAnImageLeavesOneIn1024) {
    EXPECT_EQ(mfFilterReach(twoPels(1023, 1)), mvPair<long>(1, 1));
    EXPECT_EQ(mfFilterReach(twoPels(1022, 1)), mvPair<long>(4, 1));
}

TEST(FilterImageCall, TakesPlanesOfTheLargestSides) {
    const mvPelBuffer<Byte> image(4, 4);
    mvPelBuffer<Byte> out;
    for (const mvPair<long> plane : {mvPair<long>(2048, 4), mvPair<long>(4, 2048)}) {
        const mvFrequencyFilterBandPass ring(0.1, 0.05, 0.2, plane, 1);
        EXPECT_EQ(thrownBy([&] { mfFilterImage(image, ring, out); }), "nothing");
    }
}

}  // namespace
