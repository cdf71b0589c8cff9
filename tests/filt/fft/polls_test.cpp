// How often each call polls attention, and what a poll that fails leaves behind.
#include <filt/fft.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "reference/fft/transforms.h"
#include "support/attention.h"
#include "support/buffer_probe.h"
#include "support/compare.h"
#include "support/pel_images.h"
#include "support/random_planes.h"
#include "support/thrown.h"

namespace {

using support::at;
using support::AttentionCounter;
using support::BufferProbe;
using support::pelBufferOf;
using support::pollsOf;
using support::randomImage;
using support::thrownBy;

using Byte = unsigned char;

// One call on objects of its own; `refill` makes the buffer that it may have spoilt good again.
struct Fixture {
    mvPelBuffer<Byte> image;
    mvPelBuffer<double> doubles;
    mvFrequencyBuffer buffer;
    mvFrequencyBuffer other;
    mvPelBuffer<Byte> bytes;
    mvPelBuffer<double> first;
    mvPelBuffer<double> second;
    mvPelBuffer<Byte> codes;

    Fixture(long width, long height, bool offset)
        : image(pelBufferOf(at(randomImage<Byte>(width, height, 1), offset ? 2 : 0, 0))),
          doubles(pelBufferOf(at(randomImage<double>(width, height, 1), 0, offset ? -1 : 0))) {
        refill();
    }
    void refill() { mfForwardFFT<Byte>(image, buffer); }
};

struct Call {
    std::string name;
    std::function<void(Fixture&)> run;
};

const std::vector<Call>& calls() {
    static const std::vector<Call> all = {
        {"complex buffer", [](Fixture& f) { f.other = mvFrequencyBuffer(f.doubles, f.doubles); }},
        {"forward", [](Fixture& f) { mfForwardFFT<Byte>(f.image, f.buffer); }},
        {"forward of two", [](Fixture& f) { mfForwardFFT<Byte>(f.image, f.image, f.buffer); }},
        {"forward of a buffer", [](Fixture& f) { mfForwardFFT(f.buffer, f.other); }},
        {"inverse to a buffer", [](Fixture& f) { mfInverseFFT(f.buffer, f.other, false); }},
        {"inverse to bytes",
         [](Fixture& f) { mfInverseFFT<Byte>(f.buffer, f.bytes, false, false); }},
        {"inverse to bytes, rescaled, in place",
         [](Fixture& f) { mfInverseFFT<Byte>(f.buffer, f.bytes, true, true); }},
        {"inverse to doubles",
         [](Fixture& f) { mfInverseFFT<double>(f.buffer, f.first, false, false); }},
        {"inverse with angle",
         [](Fixture& f) { mfInverseFFTAngle<Byte>(f.buffer, f.bytes, f.first, false, true); }},
        {"inverse of doubles with angle",
         [](Fixture& f) { mfInverseFFTAngle<double>(f.buffer, f.first, f.second, false, false); }},
        {"inverse with quadrants",
         [](Fixture& f) { mfInverseFFTQuadrant<Byte>(f.buffer, f.bytes, f.codes, true, false); }},
        {"inverse of doubles with quadrants",
         [](Fixture& f) { mfInverseFFTQuadrant<double>(f.buffer, f.first, f.codes, true, true); }},
        {"inverse to real and imaginary",
         [](Fixture& f) { mfInverseFFT(f.buffer, f.first, f.second, false); }},
    };
    return all;
}

struct Expectation {
    long width, height;
    bool offset;
    std::vector<long> polls;  // in the order of `calls`
};

// Counted by hand. The complex kernel polls once per 16 rows and 16 columns and for each of two
// tiled transposes; the real one for half the columns and one more time for the fill. Pel outputs
// add one poll, a wrap copy one for each image, angles and quadrant codes of bytes one of their
// own.
const std::vector<Expectation>& expectations() {
    static const std::vector<Expectation> all = {
        {1, 1, false, {1, 2, 3, 2, 2, 3, 3, 3, 4, 4, 4, 3, 3}},
        {1, 1, true, {1, 3, 5, 2, 2, 4, 4, 4, 6, 6, 6, 5, 5}},
        {2, 2, false, {1, 3, 3, 2, 2, 3, 3, 3, 4, 4, 4, 3, 3}},
        {4, 4, false, {1, 3, 5, 4, 4, 5, 5, 5, 6, 6, 6, 5, 5}},
        {8, 8, false, {1, 5, 5, 4, 4, 5, 5, 5, 6, 6, 6, 5, 5}},
        {1, 40, false, {1, 2, 6, 5, 5, 6, 6, 6, 7, 7, 7, 6, 6}},
        {40, 1, false, {1, 5, 6, 5, 5, 6, 6, 6, 7, 7, 7, 6, 6}},
        {3, 20, false, {1, 6, 6, 5, 5, 6, 6, 6, 7, 7, 7, 6, 6}},
        {2, 20, false, {1, 4, 4, 3, 3, 4, 4, 4, 5, 5, 5, 4, 4}},
        {20, 2, false, {1, 4, 4, 3, 3, 4, 4, 4, 5, 5, 5, 4, 4}},
        {32, 32, false, {1, 7, 7, 6, 6, 7, 7, 7, 8, 8, 8, 7, 7}},
        {33, 17, true, {1, 9, 11, 8, 8, 10, 10, 10, 12, 12, 12, 11, 11}},
        {64, 100, false, {1, 14, 15, 14, 14, 15, 15, 15, 16, 16, 16, 15, 15}},
    };
    return all;
}

TEST(Polls, AreAsManyAsCountedByHand) {
    for (const Expectation& e : expectations()) {
        Fixture fixture(e.width, e.height, e.offset);
        ASSERT_EQ(e.polls.size(), calls().size());
        for (std::size_t k = 0; k < calls().size(); ++k) {
            fixture.refill();
            EXPECT_EQ(pollsOf([&] { calls()[k].run(fixture); }), e.polls[k])
                << calls()[k].name << " of " << e.width << " x " << e.height
                << (e.offset ? ", with an offset" : "");
        }
    }
}

TEST(Polls, AreAsManyAsTheReferencesForAllSizes) {
    for (const auto& [w, h] : support::paddedSizes(1 << 14)) {
        const auto image = randomImage<Byte>(w, h, 1);
        const auto pels = pelBufferOf(image);
        mvFrequencyBuffer buffer;
        mvFrequencyBuffer other;
        const auto expected = [](auto call) {
            long polls = 0;
            call([&] { ++polls; });
            return polls;
        };
        EXPECT_EQ(pollsOf([&] { mfForwardFFT<Byte>(pels, buffer); }),
                  expected([&](const auto& poll) { reference::forward(image, poll); }))
            << w << " x " << h;
        const auto spectrum = support::spectrumOf(buffer);
        EXPECT_EQ(pollsOf([&] { mfInverseFFT(buffer, other, false); }),
                  expected([&](const auto& poll) { reference::inverse(spectrum, poll); }))
            << w << " x " << h;
    }
}

TEST(Polls, DoNotComeFromSkippedRows) {
    for (const auto& [w, h] : {std::pair(64, 64), std::pair(16, 64), std::pair(64, 2)}) {
        for (const auto& [low, high] : {std::pair(0, 64), std::pair(33, 47), std::pair(32, 48),
                                        std::pair(0, 0), std::pair(-9, -1), std::pair(1, 64)}) {
            mvFrequencyBuffer buffer(w, h);
            BufferProbe::maskFrequencyBuffer(buffer, true, low, high);
            long expected = 0;
            reference::inverse(support::spectrumOf(buffer), [&] { ++expected; });
            mvFrequencyBuffer other;
            EXPECT_EQ(pollsOf([&] { mfInverseFFT(buffer, other, false); }), expected)
                << w << " x " << h << ", band " << low << " .. " << high;
        }
    }
}

TEST(Polls, OfASpentBufferAreThoseOfTheOutputsAlone) {
    Fixture fixture(33, 17, true);
    mfInverseFFT<Byte>(fixture.buffer, fixture.bytes, false, true);
    EXPECT_EQ(pollsOf([&] { mfInverseFFT<Byte>(fixture.buffer, fixture.bytes, false, true); }), 2);
    EXPECT_EQ(pollsOf([&] { mfInverseFFT(fixture.buffer, fixture.other, true); }), 0);
    EXPECT_EQ(pollsOf([&] { mfInverseFFT(fixture.buffer, fixture.first, fixture.second, true); }),
              3);
}

TEST(Polls, AreNoneForCopiesAndAccess) {
    mvFrequencyBuffer buffer(64, 64);
    EXPECT_EQ(pollsOf([&] {
                  const mvFrequencyBuffer copy = buffer;
                  const mvFrequencyBuffer reduced(copy, 32, 32);
                  buffer = copy;
                  buffer.put(1, 1, {1, 1}, true);
                  EXPECT_TRUE(copy == copy);
              }),
              0);
}

TEST(Polls, EndTheCallWhereverTheyFail) {
    for (const bool offset : {false, true}) {
        for (const Call& call : calls()) {
            Fixture fixture(33, 17, offset);
            const auto good = support::planeOf(fixture.buffer);
            const long count = pollsOf([&] { call.run(fixture); });
            for (long n = 1; n <= count + 1; ++n) {
                for (const auto how :
                     {AttentionCounter::How::kStatus, AttentionCounter::How::kThrow}) {
                    const bool status = how == AttentionCounter::How::kStatus;
                    fixture.refill();
                    const AttentionCounter attention(n, how);
                    const std::string thrown = thrownBy([&] { call.run(fixture); });
                    const std::string failure = status ? "status 77" : "Interrupted";
                    EXPECT_EQ(thrown, n <= count ? failure : "nothing") << call.name << ", " << n;
                    EXPECT_EQ(attention.polls(), std::min(n, count)) << call.name;
                }
                fixture.refill();
                EXPECT_TRUE(support::samePlane(good, support::planeOf(fixture.buffer)))
                    << call.name << ", after poll " << n;
                EXPECT_EQ(thrownBy([&] { call.run(fixture); }), "nothing") << call.name;
            }
        }
    }
}

TEST(Polls, LeaveASourceThatIsNotDestroyedAsItWas) {
    Fixture fixture(20, 20, false);
    const mvFrequencyBuffer before = fixture.buffer;
    const mvFrequencyBuffer& source = fixture.buffer;
    const std::vector<std::function<void()>> runs = {
        [&] { mfForwardFFT(source, fixture.other); }, [&] { mfInverseFFT(source, fixture.other); },
        [&] { mfInverseFFT<Byte>(source, fixture.bytes, true); },
        [&] { mfInverseFFT(source, fixture.first, fixture.second); }};
    for (const auto& run : runs) {
        const long count = pollsOf(run);
        for (long n = 1; n <= count; ++n) {
            const AttentionCounter attention(n);
            EXPECT_EQ(thrownBy(run), "status 77");
            EXPECT_TRUE(source == before);
        }
    }
}

TEST(Polls, LeaveABufferThatFailedInTheKernelUnmarked) {
    Fixture fixture(20, 20, false);
    const AttentionCounter attention(2);
    EXPECT_EQ(thrownBy([&] { mfInverseFFT<Byte>(fixture.buffer, fixture.bytes, false, true); }),
              "status 77");
    EXPECT_FALSE(mvi::BufferAccess::inverseComputed(fixture.buffer));
}

}  // namespace
