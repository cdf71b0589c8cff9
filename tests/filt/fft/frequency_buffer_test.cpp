// Storage and life cycle of the frequency buffer.
#include <filt/fft/frequency_buffer.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "support/buffer_probe.h"
#include "support/compare.h"
#include "support/longs.h"
#include "support/pel_images.h"
#include "support/random_planes.h"
#include "support/thrown.h"

namespace {

using support::at;
using support::bufferOf;
using support::BufferProbe;
using support::dataOf;
using support::pelBufferOf;
using support::planeOf;
using support::pollsOf;
using support::randomImage;
using support::randomPlane;
using support::spectrumOf;
using support::thrownBy;

constexpr long kBeyond32Bits = support::powerOfTwo(32);

// A 4 x 4 buffer of a 3 x 4 image with offset, transform and random frequencies.
mvFrequencyBuffer placedBuffer() {
    auto image = pelBufferOf(at(randomImage<double>(3, 4, 1), 5, -6));
    image.copyXforms(support::someXformCache());
    mvFrequencyBuffer buffer;
    mfForwardFFT<double>(image, buffer);
    return buffer;
}

mvFrequencyBuffer spentBuffer() {
    mvFrequencyBuffer buffer = placedBuffer();
    mvPelBuffer<double> out;
    mfInverseFFT<double>(buffer, out, false, true);
    return buffer;
}

void expectSameState(const mvFrequencyBuffer& expected, const mvFrequencyBuffer& actual) {
    const auto a = spectrumOf(expected);
    const auto b = spectrumOf(actual);
    EXPECT_TRUE(expected == actual);
    EXPECT_TRUE(support::samePlane(a.plane, b.plane));
    EXPECT_EQ(a.imageWidth, b.imageWidth);
    EXPECT_EQ(a.imageHeight, b.imageHeight);
    EXPECT_EQ(a.x, b.x);
    EXPECT_EQ(a.y, b.y);
    EXPECT_EQ(a.masked, b.masked);
    EXPECT_EQ(a.maskedMiny, b.maskedMiny);
    EXPECT_EQ(a.maskedMaxy, b.maskedMaxy);
    EXPECT_EQ(a.inverseComputed, b.inverseComputed);
    EXPECT_TRUE(mvi::BufferAccess::xform(expected) == mvi::BufferAccess::xform(actual));
}

TEST(FrequencyBuffer, HasNoDataWhenDefaultConstructed) {
    const mvFrequencyBuffer buffer;
    EXPECT_EQ(dataOf(buffer), nullptr);
    EXPECT_EQ(thrownBy([&] { buffer.width(); }), support::kNoData);
    EXPECT_EQ(thrownBy([&] { buffer.height(); }), support::kNoData);
    EXPECT_EQ(mvi::BufferAccess::offset(buffer), mvPair<long>(0, 0));
    EXPECT_EQ(mvi::BufferAccess::masked(buffer), 0);
    EXPECT_TRUE(mvi::BufferAccess::xform(buffer) == mv2XformCache());
}

TEST(FrequencyBufferState, WithoutDataIsThatOfNoImage) {
    mvFrequencyBuffer dropped = spentBuffer();
    BufferProbe::maskFrequencyBuffer(dropped, true, 1, 2);
    dropped = mvFrequencyBuffer();
    mvFrequencyBuffer moved = placedBuffer();
    BufferProbe::maskFrequencyBuffer(moved, true, 1, 2);
    const mvFrequencyBuffer taker(std::move(moved));
    const mvFrequencyBuffer fresh;
    for (const auto* const buffer : {&fresh, &std::as_const(dropped), &std::as_const(moved)}) {
        EXPECT_FALSE(buffer->hasData());
        EXPECT_FALSE(buffer->inverseComputed());
        EXPECT_EQ(buffer->imageSize(), mvPair<long>(0, 0));
        EXPECT_EQ(buffer->offset(), mvPair<long>(0, 0));
        EXPECT_FALSE(buffer->xformCache().isSet());
        EXPECT_EQ(buffer->band(), std::nullopt);
        EXPECT_EQ(mvi::BufferAccess::masked(*buffer), 0);
        EXPECT_EQ(thrownBy([&] { buffer->size(); }), support::kNoData);
    }
}

TEST(FrequencyBufferState, IsThatOfTheImage) {
    const mvFrequencyBuffer buffer = placedBuffer();
    EXPECT_TRUE(buffer.hasData());
    EXPECT_FALSE(buffer.inverseComputed());
    EXPECT_EQ(buffer.size(), mvPair<long>(4, 4));
    EXPECT_EQ(buffer.imageSize(), mvPair<long>(3, 4));
    EXPECT_EQ(buffer.offset(), mvPair<long>(5, -6));
    EXPECT_EQ(buffer.xformCache(), support::someXformCache());
    EXPECT_EQ(buffer.band(), std::nullopt);
}

TEST(FrequencyBufferState, SaysWhetherAnInverseHasOverwrittenIt) {
    mvFrequencyBuffer buffer = spentBuffer();
    EXPECT_TRUE(buffer.hasData());
    EXPECT_TRUE(buffer.inverseComputed());
    EXPECT_EQ(buffer.imageSize(), mvPair<long>(3, 4));
    mfForwardFFT(pelBufferOf(randomImage<double>(4, 4, 1)), buffer);
    EXPECT_FALSE(buffer.inverseComputed());
}

TEST(FrequencyBufferState, HasABandUntilItIsCleared) {
    mvFrequencyBuffer buffer = placedBuffer();
    const mvFrequencyBuffer before(buffer);
    BufferProbe::maskFrequencyBuffer(buffer, true, -2, 9);
    EXPECT_EQ(buffer.band(), mvPair<long>(-2, 9));
    EXPECT_EQ(mvFrequencyBuffer(buffer).band(), mvPair<long>(-2, 9));
    buffer.clearBand();
    EXPECT_EQ(buffer.band(), std::nullopt);
    expectSameState(before, buffer);
}

TEST(FrequencyBufferState, OfADroppedBandDoesNotComeBackWithTheData) {
    mvFrequencyBuffer buffer;
    BufferProbe::maskFrequencyBuffer(buffer, true, 1, 2);
    EXPECT_EQ(buffer.band(), std::nullopt);
    buffer.clearBand();
    buffer = placedBuffer();
    EXPECT_EQ(buffer.band(), std::nullopt);
}

TEST(FrequencyBuffer, PadsEachSideToAPowerOfTwo) {
    const struct {
        long width, height, paddedWidth, paddedHeight;
    } cases[] = {{600, 300, 1024, 512}, {1, 1, 1, 1},       {2, 3, 2, 4},
                 {2048, 1, 2048, 1},    {5, 2048, 8, 2048}, {1025, 16, 2048, 16},
                 {0, 7, 1, 8},          {-3, -1, 1, 1},     {-kBeyond32Bits, 4, 1, 4}};
    for (const auto& c : cases) {
        const mvFrequencyBuffer buffer(c.width, c.height);
        EXPECT_EQ(buffer.width(), c.paddedWidth) << c.width;
        EXPECT_EQ(buffer.height(), c.paddedHeight) << c.height;
    }
}

TEST(FrequencyBuffer, RemembersTheSizeThatWasAskedFor) {
    const mvFrequencyBuffer buffer(600, 300);
    EXPECT_EQ(mvi::BufferAccess::imageWidth(buffer), 600);
    EXPECT_EQ(mvi::BufferAccess::imageHeight(buffer), 300);
    EXPECT_EQ(mvi::BufferAccess::imageHeight(mvFrequencyBuffer(4, -7)), -7);
}

TEST(FrequencyBuffer, StartsWithZerosAndTheIdentity) {
    const mvFrequencyBuffer buffer(5, 3);
    EXPECT_TRUE(support::samePlane(reference::Plane(8, 4), planeOf(buffer)));
    mv2XformCache identity;
    identity.setIdentity();
    EXPECT_TRUE(mvi::BufferAccess::xform(buffer) == identity);
    EXPECT_EQ(mvi::BufferAccess::offset(buffer), mvPair<long>(0, 0));
}

TEST(FrequencyBuffer, RefusesSidesAbove2048) {
    for (const long side :
         {2049L, 5000L, kBeyond32Bits, support::asLong((std::int64_t{1} << 32) + 16)}) {
        EXPECT_EQ(thrownBy([&] { mvFrequencyBuffer(side, 4); }), support::kTooLarge) << side;
        EXPECT_EQ(thrownBy([&] { mvFrequencyBuffer(-4, side); }), support::kTooLarge) << side;
    }
    mvFrequencyBuffer buffer = placedBuffer();
    BufferProbe::maskFrequencyBuffer(buffer, true, 1, 2);
    const mvFrequencyBuffer before = buffer;
    EXPECT_EQ(thrownBy([&] { BufferProbe::setAndAllocateFrequencyBuffer(buffer, 8, 2049); }),
              support::kTooLarge);
    expectSameState(before, buffer);
}

TEST(FrequencyBuffer, AlignsItsPlane) {
    for (const long side : {1L, 2L, 3L, 100L, 700L}) {
        const mvFrequencyBuffer buffer(side, side);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(dataOf(buffer)) % 16, 0U) << side;
    }
}

TEST(FrequencyBuffer, KeepsBlockAndContentsWhenThePaddedSizeStays) {
    mvFrequencyBuffer buffer = bufferOf(randomPlane(8, 4, 1));
    const auto before = planeOf(buffer);
    const float* data = dataOf(buffer);
    BufferProbe::maskFrequencyBuffer(buffer, true, 1, 2);
    BufferProbe::setAndAllocateFrequencyBuffer(buffer, 5, 3);
    EXPECT_EQ(dataOf(buffer), data);
    EXPECT_TRUE(support::samePlane(before, planeOf(buffer)));
    EXPECT_EQ(mvi::BufferAccess::imageWidth(buffer), 5);
    EXPECT_EQ(mvi::BufferAccess::imageHeight(buffer), 3);
    EXPECT_EQ(mvi::BufferAccess::masked(buffer), 0);
}

TEST(FrequencyBuffer, KeepsOldFloatsAndAddsZerosWhenItGrows) {
    mvFrequencyBuffer buffer = bufferOf(randomPlane(4, 4, 1));
    const auto before = planeOf(buffer);
    BufferProbe::setAndAllocateFrequencyBuffer(buffer, 16, 8);
    reference::Plane expected(16, 8);
    std::copy_n(before.floats(), before.floatCount(), expected.floats());
    EXPECT_TRUE(support::samePlane(expected, planeOf(buffer)));
}

TEST(FrequencyBuffer, DropsTheFloatsBehindASmallerPlane) {
    mvFrequencyBuffer buffer = bufferOf(randomPlane(8, 8, 1));
    const auto before = planeOf(buffer);
    BufferProbe::setAndAllocateFrequencyBuffer(buffer, 4, 4);
    EXPECT_TRUE(std::equal(dataOf(buffer), dataOf(buffer) + 32, before.floats()));
    BufferProbe::setAndAllocateFrequencyBuffer(buffer, 8, 8);
    // The storage of the 4 x 4 plane has 7 spare floats, which belong to what was there.
    EXPECT_TRUE(std::equal(dataOf(buffer), dataOf(buffer) + 39, before.floats()));
    EXPECT_TRUE(std::all_of(dataOf(buffer) + 39, dataOf(buffer) + 128,
                            [](float value) { return value == 0; }));
}

TEST(FrequencyBuffer, ReturnsToFrequencyDataWhenItIsSized) {
    mvFrequencyBuffer buffer = spentBuffer();
    EXPECT_EQ(thrownBy([&] { buffer.get(0, 0, false); }), support::kSpent);
    BufferProbe::setAndAllocateFrequencyBuffer(buffer, 3, 4);
    EXPECT_EQ(thrownBy([&] { buffer.get(0, 0, false); }), "nothing");
}

TEST(FrequencyBuffer, CopiesEverything) {
    mvFrequencyBuffer masked = placedBuffer();
    BufferProbe::maskFrequencyBuffer(masked, true, -2, 9);
    for (const mvFrequencyBuffer& original : {placedBuffer(), masked, spentBuffer()}) {
        const mvFrequencyBuffer copy(original);
        expectSameState(original, copy);
        EXPECT_NE(dataOf(original), dataOf(copy));
        mvFrequencyBuffer assigned(100, 2);
        EXPECT_EQ(&(assigned = original), &assigned);
        expectSameState(original, assigned);
    }
}

TEST(FrequencyBuffer, IsItsOwnAfterCopying) {
    const mvFrequencyBuffer original = bufferOf(randomPlane(4, 4, 1));
    mvFrequencyBuffer copy = original;
    copy.put(1, 1, {9, 9}, false);
    EXPECT_FALSE(copy == original);
}

TEST(FrequencyBuffer, CopiesThePaddedSizeOfAReducedCopy) {
    mvFrequencyBuffer source = bufferOf(randomPlane(16, 16, 1));
    BufferProbe::setAndAllocateFrequencyBuffer(source, 9, 9);
    const mvFrequencyBuffer reduced(source, 8, 8);
    EXPECT_EQ(mvi::BufferAccess::imageWidth(reduced), 4);
    expectSameState(reduced, mvFrequencyBuffer(reduced));
    mvFrequencyBuffer assigned(2, 2);
    assigned = reduced;
    expectSameState(reduced, assigned);
}

TEST(FrequencyBuffer, SurvivesAssignmentToItself) {
    mvFrequencyBuffer buffer = placedBuffer();
    const mvFrequencyBuffer before = buffer;
    const mvFrequencyBuffer& same = buffer;
    buffer = same;
    expectSameState(before, buffer);
}

TEST(FrequencyBuffer, LosesItsDataToAnEmptySource) {
    mvFrequencyBuffer buffer = placedBuffer();
    BufferProbe::maskFrequencyBuffer(buffer, true, 1, 2);
    const mvFrequencyBuffer empty;
    buffer = empty;
    EXPECT_EQ(thrownBy([&] { buffer.width(); }), support::kNoData);
    EXPECT_EQ(mvi::BufferAccess::masked(buffer), 0);
    EXPECT_TRUE(buffer == empty);
    EXPECT_EQ(dataOf(mvFrequencyBuffer(empty)), nullptr);
    BufferProbe::setAndAllocateFrequencyBuffer(buffer, 2, 2);
    EXPECT_EQ(buffer.width(), 2);
}

TEST(FrequencyBuffer, MovesWithoutThrowingAndLeavesNoData) {
    static_assert(std::is_nothrow_move_constructible_v<mvFrequencyBuffer>);
    static_assert(std::is_nothrow_move_assignable_v<mvFrequencyBuffer>);
    mvFrequencyBuffer source = placedBuffer();
    const mvFrequencyBuffer before = source;
    const float* data = dataOf(source);
    mvFrequencyBuffer target(std::move(source));
    EXPECT_EQ(dataOf(target), data);
    EXPECT_EQ(dataOf(source), nullptr);
    expectSameState(before, target);
    mvFrequencyBuffer assigned(2, 2);
    assigned = std::move(target);
    EXPECT_EQ(dataOf(target), nullptr);
    expectSameState(before, assigned);
    target = assigned;
    mvFrequencyBuffer& same = target;
    target = std::move(same);
    expectSameState(before, target);
}

TEST(FrequencyBufferEquality, TreatsBuffersWithoutDataAsEqual) {
    const mvFrequencyBuffer filled(2, 2);
    EXPECT_TRUE(mvFrequencyBuffer() == mvFrequencyBuffer());
    EXPECT_FALSE(mvFrequencyBuffer() == filled);
    EXPECT_FALSE(filled == mvFrequencyBuffer());
}

TEST(FrequencyBufferEquality, ComparesSizesFlagsBandAndOffset) {
    const auto image = randomImage<double>(3, 4, 1);
    const auto bufferAt = [&](long x, long y) {
        mvFrequencyBuffer buffer;
        mfForwardFFT<double>(pelBufferOf(at(image, x, y)), buffer);
        return buffer;
    };
    const auto masked = [&](bool flag, long low, long high) {
        mvFrequencyBuffer buffer = bufferAt(0, 0);
        BufferProbe::maskFrequencyBuffer(buffer, flag, low, high);
        return buffer;
    };
    EXPECT_TRUE(bufferAt(0, 0) == bufferAt(0, 0));
    EXPECT_FALSE(bufferAt(1, 0) == bufferAt(0, 0));
    EXPECT_FALSE(bufferAt(0, 1) == bufferAt(0, 0));
    EXPECT_FALSE(masked(true, 0, 0) == masked(false, 0, 0));
    EXPECT_FALSE(masked(true, 1, 2) == masked(true, 0, 2));
    EXPECT_FALSE(masked(true, 1, 2) == masked(true, 1, 3));
    EXPECT_TRUE(masked(true, 1, 2) == masked(true, 1, 2));
    EXPECT_TRUE(masked(false, 1, 2) == masked(false, 3, 4)) << "without a mask the band is nothing";
    EXPECT_FALSE(mvFrequencyBuffer(4, 2) == mvFrequencyBuffer(2, 4));
    EXPECT_FALSE(mvFrequencyBuffer(4, 4) == mvFrequencyBuffer(3, 4)) << "image width";
    EXPECT_FALSE(mvFrequencyBuffer(4, 4) == mvFrequencyBuffer(4, 3)) << "image height";
    // Half of 9 is 4, so that a reduced copy has an image of 4 pels in 8.
    const mvFrequencyBuffer plane(4, 4);
    EXPECT_FALSE(plane == mvFrequencyBuffer(mvFrequencyBuffer(9, 4), 8, 4)) << "width alone";
    EXPECT_FALSE(plane == mvFrequencyBuffer(mvFrequencyBuffer(4, 9), 4, 8)) << "height alone";
}

TEST(FrequencyBufferEquality, ComparesTheInverseMark) {
    const mvFrequencyBuffer spent = spentBuffer();
    mvFrequencyBuffer fresh = placedBuffer();
    support::setPlane(fresh, planeOf(spent));
    EXPECT_FALSE(fresh == spent);
}

TEST(FrequencyBufferEquality, IsExactButKnowsNoNaNAndNoSignOfZero) {
    const auto equal = [](float a, float b) {
        auto first = randomPlane(4, 4, 1);
        auto second = first;
        first.at(3, 3).im = a;
        second.at(3, 3).im = b;
        return bufferOf(first) == bufferOf(second);
    };
    EXPECT_TRUE(equal(0.0F, -0.0F));
    EXPECT_TRUE(equal(NAN, 5));
    EXPECT_TRUE(equal(5, NAN));
    EXPECT_TRUE(equal(INFINITY, INFINITY));
    EXPECT_FALSE(equal(1, std::nextafter(1.0F, 2.0F)));
    EXPECT_FALSE(equal(1, std::nextafter(1.0F, 0.0F)));
}

TEST(FrequencyBufferEquality, EndsWithThePlane) {
    const mvFrequencyBuffer small = bufferOf(randomPlane(4, 4, 1));
    mvFrequencyBuffer shrunk = bufferOf(randomPlane(8, 8, 2));
    shrunk = small;
    EXPECT_TRUE(shrunk == small) << "what a larger plane left behind is no part of this one";
}

TEST(FrequencyBufferEquality, DoesNotLookAtTheTransform) {
    auto image = pelBufferOf(randomImage<double>(3, 4, 1));
    mvFrequencyBuffer plain;
    mfForwardFFT<double>(image, plain);
    image.copyXforms(support::someXformCache());
    mvFrequencyBuffer moved;
    mfForwardFFT<double>(image, moved);
    EXPECT_FALSE(mvi::BufferAccess::xform(plain) == mvi::BufferAccess::xform(moved));
    EXPECT_TRUE(plain == moved);
}

TEST(ReducedCopy, KeepsTheLowestFrequencies) {
    const auto source = randomPlane(256, 128, 1);
    for (const auto& [w, h] : {std::pair(64, 32), std::pair(2, 128), std::pair(256, 2)}) {
        const mvFrequencyBuffer reduced(bufferOf(source), w, h);
        reference::Plane expected(w, h);
        for (int y = 0; y < h; ++y) {
            for (int x = 0; x < w; ++x) {
                expected.at(x, y) =
                    source.at(x < w / 2 ? x : x + 256 - w, y < h / 2 ? y : y + 128 - h);
            }
        }
        EXPECT_TRUE(support::samePlane(expected, planeOf(reduced))) << w << " x " << h;
    }
}

TEST(ReducedCopy, CopiesBits) {
    const auto source = support::specialPlane(8, 8, 3, true);
    EXPECT_TRUE(support::samePlane(source, planeOf(mvFrequencyBuffer(bufferOf(source), 8, 8))));
}

TEST(ReducedCopy, ShrinksTheImageSizeTruncated) {
    mvFrequencyBuffer source(135, 255);
    const mvFrequencyBuffer reduced(source, 64, 16);
    EXPECT_EQ(mvi::BufferAccess::imageWidth(reduced), 33);
    EXPECT_EQ(mvi::BufferAccess::imageHeight(reduced), 15);
}

TEST(ReducedCopy, KeepsOffsetAndMarkButNoMask) {
    mvFrequencyBuffer source = spentBuffer();
    BufferProbe::maskFrequencyBuffer(source, true, 1, 2);
    const mvFrequencyBuffer reduced(source, 2, 2);
    EXPECT_EQ(mvi::BufferAccess::offset(reduced), mvPair<long>(5, -6));
    EXPECT_TRUE(mvi::BufferAccess::inverseComputed(reduced));
    EXPECT_EQ(mvi::BufferAccess::masked(reduced), 0);
}

TEST(ReducedCopy, ScalesATransformThatIsSet) {
    const mvFrequencyBuffer reduced(placedBuffer(), 2, 4);
    const mv2XformLinear scale(mvMatrix<2>(0.5, 1.0, mvRadian(0), mvRadian(0)), mvVector<2>(0, 0));
    mv2XformCache expected;
    expected.xform(support::someXform() * scale);
    EXPECT_TRUE(mvi::BufferAccess::xform(reduced) == expected);
}

TEST(ReducedCopy, CopiesATransformThatIsNotSet) {
    mvFrequencyBuffer source;
    mfForwardFFT<double>(pelBufferOf(randomImage<double>(4, 4, 1)), source);
    EXPECT_FALSE(mvi::BufferAccess::xform(mvFrequencyBuffer(source, 2, 2)).isSet());
}

TEST(ComplexBuffer, TakesTwoImagesAsItsPlane) {
    const auto re = at(randomImage<double>(3, 5, 1), 4, -2);
    const auto im = at(randomImage<double>(3, 5, 2), 4, -2);
    auto real = pelBufferOf(re);
    real.copyXforms(support::someXformCache());
    const mvFrequencyBuffer buffer(real, pelBufferOf(im));
    reference::Plane expected(4, 8);
    for (int y = 0; y < 5; ++y) {
        for (int x = 0; x < 3; ++x) {
            expected.at(x, y) = {static_cast<float>(re.at(x, y)), static_cast<float>(im.at(x, y))};
        }
    }
    EXPECT_TRUE(support::samePlane(expected, planeOf(buffer)));
    EXPECT_EQ(mvi::BufferAccess::imageWidth(buffer), 3);
    EXPECT_EQ(mvi::BufferAccess::imageHeight(buffer), 5);
    EXPECT_EQ(mvi::BufferAccess::offset(buffer), mvPair<long>(4, -2));
    EXPECT_TRUE(mvi::BufferAccess::xform(buffer) == support::someXformCache());
    EXPECT_FALSE(mvi::BufferAccess::inverseComputed(buffer));
}

TEST(ComplexBuffer, PollsOnce) {
    const auto image = pelBufferOf(randomImage<double>(40, 50, 1));
    EXPECT_EQ(pollsOf([&] { mvFrequencyBuffer(image, image); }), 1);
}

}  // namespace
