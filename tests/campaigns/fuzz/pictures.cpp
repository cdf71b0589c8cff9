// The picture call with any arguments: it refuses what it must, in order, and gives the bits of the
// definition otherwise.
//
// An input is the bytes that makeCase reads, and pels. An image larger than the pels continues with
// random values.
#include <base/archive.h>
#include <filt/freqfilt.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "bytes.h"
#include "input.h"
#include "support/archive_bytes.h"
#include "support/attention.h"
#include "support/compare.h"
#include "support/filter_records.h"
#include "support/picture_cases.h"
#include "support/random_planes.h"
#include "support/thrown.h"

namespace {

using cases::PictureFilter;
using fuzz::Bytes;
using reference::Image;
using Byte = unsigned char;
using Word = unsigned short;
using Plane = mvPair<long>;

constexpr const char* kNoResponse = "Uninitialized: FrequencyFilter has not been initialized";

// Filter classes of a caller's own that do to a buffer what they must not, or may.
enum class Deed { kResize, kThrow, kInvert, kMark };

class WilfulFilter : public mvFrequencyFilter {
  public:
    explicit WilfulFilter(Deed deed) : deed_(deed) {}
    WilfulFilter(const WilfulFilter& other)
        : mvPersistent(other), mvRepBase(other), mvFrequencyFilter(), deed_(other.deed_) {}
    mvFrequencyFilter* clone() const override { return new WilfulFilter(*this); }
    void apply(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst) const override {
        dst = src;
        apply(dst);
    }
    void apply(mvFrequencyBuffer& buf) const override {
        mvPelBuffer<double> real, imaginary;
        switch (deed_) {
            case Deed::kResize:
                buf = mvFrequencyBuffer(2 * buf.width(), 1);
                return;
            case Deed::kThrow:
                throw support::Interrupted{};
            case Deed::kInvert:
                return mfInverseFFT(buf, real, imaginary, true);
            case Deed::kMark:
                mvFrequencyFilterGabor({0.1, 0.1}, {0.1, 0.0}, mvRadian(0.3), 0.2,
                                       mvPair<long>(buf.width(), buf.height()), 0)
                    .apply(buf);
        }
    }

  private:
    Deed deed_;
};

// What a filter throws before anything is done, and what its `apply` throws.
struct Filter {
    PictureFilter picture;
    std::string refused;
    std::string thrown;
};

Filter loadedRing(Plane sides, bool hasResponse) {
    archive::RingRecord record{.supportWidth = 1,
                               .width = static_cast<std::int32_t>(sides.x),
                               .height = static_cast<std::int32_t>(sides.y),
                               .hasResponse = hasResponse};
    auto ring = std::make_unique<mvFrequencyFilterBandPass>();
    support::Loading(record.record().bytes()).archive() || *ring;
    const bool isLarge = sides.x > 2048 || sides.y > 2048;
    return {{std::move(ring), sides, {}},
            !hasResponse ? kNoResponse
            : isLarge    ? support::kTooLarge
                         : support::kNotPowerOfTwo,
            ""};
}

Filter wilful(Deed deed) {
    const char* thrown = deed == Deed::kResize
                             ? "InvalidSize: The filter has changed the size of its buffer."
                         : deed == Deed::kThrow ? "Interrupted"
                                                : "";
    return {{std::make_unique<WilfulFilter>(deed), {}, {}}, "", thrown};
}

Filter makeFilter(Bytes& bytes) {
    const unsigned kind = bytes.next<Byte>() % 16U, variant = bytes.next<Byte>();
    const Plane plane(1L << bytes.next<Byte>() % 6, 1L << bytes.next<Byte>() % 6);
    if (kind < 12) return {makePictureFilter(cases::kKinds[kind % 6], plane, variant), "", ""};
    if (kind == 12) return loadedRing(plane, false);
    if (kind == 13) return loadedRing({plane.x * 4096, 1 + 2 * plane.y}, true);
    if (kind == 14) return loadedRing({1 + 2 * (plane.x + 1), plane.y}, true);
    return wilful(static_cast<Deed>(variant % 4));
}

// Small values of either sign, and now and then an end of the range.
long someMargin(Bytes& bytes) {
    const auto value = bytes.next<signed char>();
    if (value == 127) return LONG_MAX;
    if (value == -128) return LONG_MIN;
    return value < -3 ? -1 : value % 40;
}

int someThreads(Bytes& bytes) {
    constexpr int kChoices[] = {1, 2, 3, 4, 1, 2, 0, INT_MIN};
    return kChoices[bytes.next<Byte>() % 8U];
}

mvFilterImageOptions makeOptions(Bytes& bytes) {
    const auto flags = bytes.next<Byte>();
    mvFilterImageOptions options;
    options.border = (flags & 1) != 0 ? mvBorder::zero : mvBorder::mirror;
    options.result = (flags & 6) == 2 ? mvFilterResult::real : mvFilterResult::magnitude;
    options.rescale = (flags & 24) == 8;
    options.margin.x = someMargin(bytes);
    options.margin.y = someMargin(bytes);
    options.threads = someThreads(bytes);
    return options;
}

enum class Target { kUnbound, kBound, kWrongSize, kShared };

// All but the filter and the pels.
struct Case {
    Plane size;
    bool isBound;
    Plane offset;
    long stepIn, stepOut;
    std::size_t shift;
    Target target;
    long failAt;
    mvFilterImageOptions options;
};

Case makeCase(Bytes& bytes) {
    Case c;
    c.size = {1 + bytes.next<Byte>() % 48, 1 + bytes.next<Byte>() % 48};
    c.isBound = bytes.next<Byte>() % 32 != 31;
    c.offset = {bytes.next<int>(), bytes.next<int>()};
    c.stepIn = c.size.x + bytes.next<Byte>() % 8;
    c.stepOut = c.size.x + bytes.next<Byte>() % 8;
    c.shift = bytes.next<Word>() % 2048;
    c.target = static_cast<Target>(bytes.next<Byte>() % 4);
    c.failAt = bytes.next<Byte>() % 2 == 0 ? 0 : bytes.next<Byte>();
    c.options = makeOptions(bytes);
    return c;
}

bool leavesNothing(long image, long plane, long margin, mvBorder border) {
    const long m = std::min(margin, 1L << 20);
    const long room = border == mvBorder::mirror ? image + 2 * m : image;
    return room > plane && 2 * m >= plane;
}

template <class U>
std::string refusedOptions(const Case& c, Plane plane) {
    constexpr bool kDoubles = std::is_same_v<U, double>;
    const mvFilterImageOptions& o = c.options;
    if (o.result == mvFilterResult::real && !kDoubles) {
        return "InvalidArgument: Real parts need an output of doubles.";
    }
    if (o.rescale && kDoubles) return "InvalidArgument: Rescaling needs an output of integers.";
    if (o.margin.x < -1 || o.margin.y < -1 ||
        (plane.x > 0 && (leavesNothing(c.size.x, plane.x, o.margin.x, o.border) ||
                         leavesNothing(c.size.y, plane.y, o.margin.y, o.border)))) {
        return "InvalidArgument: The margin leaves nothing of a tile.";
    }
    if (o.threads < 1) return "InvalidArgument: The number of threads must be positive.";
    if (c.target == Target::kWrongSize) {
        return "InvalidSize: The output must have the size of the image.";
    }
    return "";
}

// What the call must throw before it does anything.
template <class U>
std::string refused(const Case& c, const Filter& filter) {
    if (!c.isBound) return support::kUnbound;
    if (!filter.refused.empty()) return filter.refused;
    return refusedOptions<U>(c, filter.picture.plane);
}

// Tiles of a pel or two on large planes take long: such a margin becomes that of the filter.
void bound(long image, long plane, long& margin) {
    if (margin > 0 && margin < plane / 2 && image / (plane - 2 * margin) > 6) margin = -1;
}

template <class T>
Image<T> makeImage(Bytes& bytes, Plane size, unsigned seed) {
    Image<T> image = support::randomImage<T>(size.x, size.y, seed);
    for (T& pel : image.pels) {
        if (!bytes.holds(sizeof(T))) break;
        pel = bytes.next<T>();
    }
    return image;
}

// One block of memory for the pels of both, and a copy of it to see what was written outside.
template <class T, class U>
class Pels {
  public:
    Pels(const Case& c, const Image<T>& image)
        : memory_(kBytes, 113), case_(c), in_(view<T>(0, c.stepIn)) {
        for (long y = 0; y < image.height; ++y) {
            std::copy_n(&image.pels[static_cast<std::size_t>(image.width * y)], image.width,
                        in_.pointToRow(y));
        }
        in_.offset(c.offset);
        if (!c.isBound) in_ = {};
        if (c.target == Target::kShared) out_ = view<U>(c.shift, c.stepOut);
        if (c.target == Target::kBound) out_ = view<U>(kBytes / sizeof(U) / 2, c.stepOut);
        if (c.target == Target::kWrongSize) out_ = mvPelBuffer<U>(c.size.x + 1, c.size.y);
        before_ = memory_;
    }

    const mvPelBuffer<T>& in() const { return in_; }
    mvPelBuffer<U>& out() { return out_; }

    /// Nothing but pels of a bound output has changed.
    bool outsideIsIntact() {
        if (case_.target != Target::kShared && case_.target != Target::kBound) {
            return memory_ == before_;
        }
        for (long y = 0; y < out_.height(); ++y) {
            auto* row = reinterpret_cast<Byte*>(out_.pointToRow(y));
            const auto at = static_cast<std::size_t>(row - memory_.data());
            std::copy_n(&before_[at], sizeof(U) * static_cast<std::size_t>(out_.width()), row);
        }
        return memory_ == before_;
    }

  private:
    static constexpr std::size_t kBytes = std::size_t{1} << 17;

    template <class P>
    mvPelBuffer<P> view(std::size_t first, long step) {
        return {reinterpret_cast<P*>(memory_.data()) + first, case_.size.x, case_.size.y, step};
    }

    std::vector<Byte> memory_, before_;
    const Case& case_;
    mvPelBuffer<T> in_;
    mvPelBuffer<U> out_;
};

[[noreturn]] void report(const Case& c, const std::string& what) {
    std::fprintf(stderr, "%ld x %ld, margin %ld, %ld, threads %d: %s differs\n", c.size.x, c.size.y,
                 c.options.margin.x, c.options.margin.y, c.options.threads, what.c_str());
    std::abort();
}

// What the call must give, or throw.
template <class U>
struct Expected {
    std::string thrown;
    Image<U> image{0, 0};
};

template <class T, class U>
Expected<U> expectedOf(const Case& c, const Filter& filter, const Image<T>& image) {
    Expected<U> expected{refused<U>(c, filter)};
    if (expected.thrown.empty()) expected.thrown = filter.thrown;
    if (!expected.thrown.empty()) return expected;
    expected.thrown = support::thrownBy(
        [&] { expected.image = cases::expectedPicture<T, U>(image, filter.picture, c.options); });
    if (c.target == Target::kUnbound) {
        expected.image.x = c.offset.x;
        expected.image.y = c.offset.y;
    }
    return expected;
}

// What the call threw, and how often it polled.
struct Outcome {
    std::string thrown;
    long polls;
};

template <class T, class U>
Outcome outcomeOf(const Case& c, const Filter& filter, Pels<T, U>& pels) {
    const support::AttentionCounter counter(c.failAt);
    std::string thrown = support::thrownBy(
        [&] { mfFilterImage(pels.in(), *filter.picture.filter, pels.out(), c.options); });
    return {std::move(thrown), counter.polls()};
}

template <class U>
void expectOutcome(const Case& c, const Expected<U>& expected, bool isRefused,
                   const Outcome& outcome) {
    if (isRefused && outcome.polls != 0) report(c, "number of polls before a refusal");
    const bool isStopped = c.failAt > 0 && outcome.polls >= c.failAt;
    const std::string due = isStopped ? "status 77" : expected.thrown;
    if (outcome.thrown != due) report(c, outcome.thrown + ", where due was " + due + ",");
}

template <class T, class U>
void tryTypes(Bytes bytes, Case c, unsigned seed) {
    const Filter filter = makeFilter(bytes);
    const bool isRefused = !refused<U>(c, filter).empty();
    if (!isRefused) {
        bound(c.size.x, filter.picture.plane.x, c.options.margin.x);
        bound(c.size.y, filter.picture.plane.y, c.options.margin.y);
    }
    const Image<T> image = makeImage<T>(bytes, c.size, seed);
    const auto expected = expectedOf<T, U>(c, filter, image);
    Pels<T, U> pels(c, image);
    const Outcome outcome = outcomeOf(c, filter, pels);
    expectOutcome(c, expected, isRefused, outcome);
    if (outcome.thrown == "nothing") {
        const auto same = support::sameImage(expected.image, support::imageOf(pels.out()));
        if (!same) report(c, same.message());
    } else if (c.target == Target::kUnbound && pels.out().isBound()) {
        report(c, "state of an unbound output");
    }
    if (!pels.outsideIsIntact()) report(c, "memory outside the output");
}

template <class T>
void tryInput(Bytes& bytes, const Case& c, unsigned out, unsigned seed) {
    if (out % 3 == 0) return tryTypes<T, Byte>(bytes, c, seed);
    if (out % 3 == 1) return tryTypes<T, Word>(bytes, c, seed);
    tryTypes<T, double>(bytes, c, seed);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes bytes(fuzz::asText(data, size));
    const auto types = bytes.next<Byte>();
    const Case c = makeCase(bytes);
    const auto seed = static_cast<unsigned>(size);
    if (types % 3 == 0) tryInput<Byte>(bytes, c, types / 3U, seed);
    if (types % 3 == 1) tryInput<Word>(bytes, c, types / 3U, seed);
    if (types % 3 == 2) tryInput<double>(bytes, c, types / 3U, seed);
    return 0;
}
