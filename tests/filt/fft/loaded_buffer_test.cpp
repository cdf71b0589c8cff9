// Buffers such as only an archive can make: odd or huge planes, images beyond them, any band.
#include <filt/fft.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "support/attention.h"
#include "support/buffer_probe.h"
#include "support/buffer_record.h"
#include "support/compare.h"
#include "support/pel_images.h"
#include "support/random_planes.h"
#include "support/thrown.h"

namespace {

using support::BufferProbe;
using support::BufferRecord;
using support::loaded;
using support::pelBufferOf;
using support::recordOf;
using support::spectrumOf;
using support::thrownBy;

using Byte = unsigned char;
constexpr std::int32_t kLowest = INT32_MIN;
constexpr std::int32_t kHighest = INT32_MAX;

struct Outputs {
    mvFrequencyBuffer buffer{4, 4};
    mvPelBuffer<Byte> bytes;
    mvPelBuffer<unsigned short> words;
    mvPelBuffer<double> doubles;
    mvPelBuffer<double> more;
};

struct Call {
    std::string name;
    std::function<void(mvFrequencyBuffer&, Outputs&)> run;
};

const std::vector<Call>& pelTransforms() {
    static const std::vector<Call> all = {
        {"bytes", [](auto& b, auto& o) { mfInverseFFT<Byte>(b, o.bytes, false, true); }},
        {"words, const",
         [](auto& b, auto& o) { mfInverseFFT<unsigned short>(std::as_const(b), o.words, true); }},
        {"doubles", [](auto& b, auto& o) { mfInverseFFT<double>(b, o.doubles, false, false); }},
        {"angle",
         [](auto& b, auto& o) { mfInverseFFTAngle<Byte>(b, o.bytes, o.more, true, true); }},
        {"quadrant",
         [](auto& b, auto& o) { mfInverseFFTQuadrant<double>(b, o.doubles, o.bytes, true, true); }},
        {"images", [](auto& b, auto& o) { mfInverseFFT(b, o.doubles, o.more, true); }},
    };
    return all;
}

const std::vector<Call>& bufferTransforms() {
    static const std::vector<Call> all = {
        {"forward", [](auto& b, auto& o) { mfForwardFFT(b, o.buffer); }},
        {"forward in place", [](auto& b, auto&) { mfForwardFFT(b, b); }},
        {"inverse", [](auto& b, auto& o) { mfInverseFFT(b, o.buffer, false); }},
        {"inverse, destroy", [](auto& b, auto& o) { mfInverseFFT(b, o.buffer, true); }},
        {"inverse in place", [](auto& b, auto&) { mfInverseFFT(b, b, true); }},
    };
    return all;
}

const std::vector<Call>& phaseImages() {
    static const std::vector<Call> all = {
        {"angle image", [](auto& b, auto& o) { mf_ComputeAngleImage(b, o.doubles); }},
        {"quadrant image", [](auto& b, auto& o) { mf_ComputeQuadrantImage(b, o.bytes); }},
    };
    return all;
}

void expectRefusals(const BufferRecord& record, const std::vector<Call>& calls) {
    for (const bool spent : {false, true}) {
        BufferRecord marked = record;
        marked.inverseComputed = spent;
        auto buffer = loaded(marked);
        const auto before = buffer;
        for (const Call& call : calls) {
            Outputs outputs;
            const support::AttentionCounter polls;
            EXPECT_EQ(thrownBy([&] { call.run(buffer, outputs); }), support::kNotPowerOfTwo)
                << call.name << " of " << record.width << " x " << record.height
                << (spent ? ", spent" : "");
            EXPECT_EQ(polls.polls(), 0) << call.name;
            EXPECT_TRUE(buffer == before) << call.name;
            EXPECT_TRUE(outputs.buffer == mvFrequencyBuffer(4, 4)) << call.name;
            EXPECT_FALSE(outputs.bytes.isBound() || outputs.words.isBound()) << call.name;
            EXPECT_FALSE(outputs.doubles.isBound() || outputs.more.isBound()) << call.name;
        }
    }
}

TEST(LoadedBuffer, OfUnsupportedSizeIsRefusedByEveryTransform) {
    for (const auto& [w, h] : {std::pair(3, 5), std::pair(8, 6), std::pair(6, 8), std::pair(1, 3),
                               std::pair(4096, 2), std::pair(1, 4096), std::pair(2049, 1)}) {
        expectRefusals(recordOf(w, h), pelTransforms());
        expectRefusals(recordOf(w, h), bufferTransforms());
    }
}

TEST(LoadedBuffer, WithAnImageBeyondItsPlaneIsRefusedByEveryPelOutput) {
    for (const auto& [w, h] : {std::pair(9, 4), std::pair(8, 5), std::pair(kHighest, kHighest)}) {
        BufferRecord record = recordOf(8, 4);
        record.imageWidth = w;
        record.imageHeight = h;
        expectRefusals(record, pelTransforms());
        expectRefusals(record, phaseImages());
    }
}

TEST(LoadedBuffer, OfOddSizeIsReadable) {
    for (const auto& [w, h] : {std::pair(3L, 5L), std::pair(1L, 7L), std::pair(6L, 1L)}) {
        auto buffer = loaded(recordOf(static_cast<int>(w), static_cast<int>(h)));
        EXPECT_EQ(buffer.width(), w);
        EXPECT_EQ(buffer.height(), h);
        const auto value = [w = w](long x, long y) {
            return 2.0 * static_cast<double>(y * w + x) + 1;
        };
        const auto stored = buffer.getRealImage(false);
        const auto centred = buffer.getImaginaryImage(true);
        for (long y = 0; y < h; ++y) {
            for (long x = 0; x < w; ++x) {
                EXPECT_EQ(buffer.getReal(x, y, false), value(x, y));
                EXPECT_EQ(stored.pel(x, y), value(x, y));
                EXPECT_EQ(centred.pel((x + w / 2) % w, (y + h / 2) % h), value(x, y) + 1);
            }
        }
    }
}

TEST(LoadedBuffer, OfOddSizeHasOneMoreCentredCoordinateAboveZero) {
    auto buffer = loaded(recordOf(5, 3));
    EXPECT_EQ(buffer.getReal(-2, 0, true), buffer.getReal(3, 0, false));
    EXPECT_EQ(buffer.getReal(2, 1, true), buffer.getReal(2, 1, false));
    EXPECT_EQ(buffer.getReal(0, -1, true), buffer.getReal(0, 2, false));
    for (const auto& [x, y] :
         {std::pair(3, 0), std::pair(-3, 0), std::pair(0, 2), std::pair(0, -2)}) {
        EXPECT_EQ(thrownBy([&, x = x, y = y] { buffer.get(x, y, true); }), support::kOutOfBounds);
    }
}

TEST(LoadedBuffer, OfOddSizeHasPhaseImages) {
    auto buffer = loaded(recordOf(3, 5));
    Outputs outputs;
    for (const Call& call : phaseImages()) {
        EXPECT_EQ(thrownBy([&] { call.run(buffer, outputs); }), "nothing") << call.name;
    }
    EXPECT_EQ(outputs.doubles.width(), 3);
    EXPECT_EQ(outputs.bytes.height(), 5);
}

TEST(LoadedBuffer, EqualsItsCopies) {
    for (const auto& [w, h] : {std::pair(3, 5), std::pair(4096, 1), std::pair(8, 8)}) {
        BufferRecord record = recordOf(w, h);
        record.imageWidth = kHighest;
        record.imageHeight = kLowest;
        const auto buffer = loaded(record);
        const mvFrequencyBuffer copy = buffer;
        EXPECT_TRUE(copy == buffer);
        EXPECT_EQ(copy.width(), w);
        mvFrequencyBuffer assigned(2, 2);
        assigned = buffer;
        EXPECT_TRUE(assigned == buffer);
    }
}

TEST(LoadedBuffer, OfOddSizeGivesReducedCopies) {
    const auto source = loaded(recordOf(5, 7));
    const mvFrequencyBuffer reduced(source, 4, 2);
    EXPECT_EQ(reduced.getReal(-2, 0, true), source.getReal(-2, 0, true));
    EXPECT_EQ(reduced.getReal(1, -1, true), source.getReal(1, -1, true));
    EXPECT_EQ(thrownBy([&] { mvFrequencyBuffer(source, 5, 4); }), "InvalidSize: Unsupported width");
}

TEST(LoadedBuffer, CanBeFilledAgain) {
    const auto image = support::randomImage<double>(6, 6, 1);
    auto buffer = loaded(recordOf(3, 5));
    mfForwardFFT<double>(pelBufferOf(image), buffer);
    EXPECT_TRUE(support::samePlane(reference::forward(image).plane, support::planeOf(buffer)));
}

TEST(LoadedBuffer, TakesAnyBandOfRows) {
    for (const auto& [low, high] :
         {std::pair(kLowest, kHighest), std::pair(kLowest, kLowest), std::pair(kHighest, kHighest),
          std::pair(kHighest, kLowest), std::pair(5, 9)}) {
        for (const auto& [w, h] : {std::pair(16, 16), std::pair(8, 16)}) {
            BufferRecord record = recordOf(w, h);
            record.masked = -3;
            record.maskedMiny = low;
            record.maskedMaxy = high;
            const auto buffer = loaded(record);
            reference::Output<double> expected;
            reference::magnitudeImage(reference::spatial(spectrumOf(buffer)), expected, false);
            mvPelBuffer<double> out;
            mfInverseFFT<double>(buffer, out, false);
            EXPECT_TRUE(support::sameImage(*expected, support::imageOf(out)))
                << w << " x " << h << ", band " << low << " .. " << high;
        }
    }
}

TEST(LoadedBuffer, PadsAShortArrayWithZeros) {
    BufferRecord record = recordOf(4, 2);
    record.floats.resize(3);
    const auto buffer = loaded(record);
    EXPECT_EQ(buffer.get(1, 0, false), mvPair<double>(3, 0));
    EXPECT_EQ(buffer.get(3, 1, false), mvPair<double>(0, 0));
}

}  // namespace
