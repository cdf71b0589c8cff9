// Arithmetic of frequency buffers: values, aliases, properties and the order of the checks.
#include <filt/fft.h>

#include <string>

#include "reference/fft/arithmetic.h"
#include "support/random_planes.h"
#include "support/sanitizers.h"
#include "support/spectra.h"
#include "support/thrown.h"

namespace {

using reference::Plane;
using reference::Spectrum;
using support::thrownBy;

// One binary operation with its two forms, what it computes and what it checks first.
struct Operation {
    const char* name;
    void (*three)(const mvFrequencyBuffer&, const mvFrequencyBuffer&, mvFrequencyBuffer&);
    void (*two)(const mvFrequencyBuffer&, mvFrequencyBuffer&);
    /// From (a, b) and from (src, dst).
    Plane (*ofThree)(const Plane&, const Plane&);
    Plane (*ofTwo)(const Plane&, const Plane&);
    const char* otherSize;
    bool threeAsksForSizeFirst;
    bool twoAsksForSizeFirst;
    /// `result` being `b` keeps `b`'s properties.
    bool commutes;
};

Plane subtractFrom(const Plane& src, const Plane& dst) {
    return reference::difference(dst, src);
}

// a b accumulates in a: the product of b, as the source, with a.
Plane productOfThree(const Plane& a, const Plane& b) {
    return reference::product(b, a);
}

const Operation kOperations[] = {
    {"add", mfFrequencyAdd, mfFrequencyAdd, reference::sum, reference::sum,
     "InvalidSize: Can only add equal-sized frequency buffers.", false, false, true},
    {"subtract", mfFrequencySubtract, mfFrequencySubtract, reference::difference, subtractFrom,
     "InvalidSize: Can only subtract equal-sized frequency buffers.", true, false, false},
    {"multiply", mfFrequencyMultiply, mfFrequencyMultiply, productOfThree, reference::product,
     "InvalidSize: Can only multiply equal-sized frequency buffers.", false, true, true},
};

struct Arithmetic : testing::TestWithParam<Operation> {};
INSTANTIATE_TEST_SUITE_P(Operations, Arithmetic, testing::ValuesIn(kOperations),
                         [](const auto& test) { return test.param.name; });

// Two operands of one padded size that differ in every property.
Spectrum first(int width, int height) {
    return support::someSpectrum(support::randomPlane(width, height, 1));
}

Spectrum second(int width, int height) {
    Spectrum spectrum = support::someSpectrum(support::randomPlane(width, height, 2));
    spectrum.imageWidth = width;
    spectrum.imageHeight = height;
    spectrum.x = -11;
    spectrum.masked = false;
    spectrum.maskedMiny = 7;
    return spectrum;
}

Spectrum with(Spectrum spectrum, const Plane& plane) {
    spectrum.plane = plane;
    return spectrum;
}

TEST_P(Arithmetic, TwoArgumentsAccumulateAndKeepTheTarget) {
    const Operation& op = GetParam();
    for (const auto& [w, h] : support::paddedSizes(support::kSanitized ? 1L << 10 : 1L << 14)) {
        const Spectrum src = first(w, h);
        const Spectrum dst = second(w, h);
        const mvFrequencyBuffer source = support::bufferOf(src);
        mvFrequencyBuffer target = support::bufferOf(dst);
        op.two(source, target);
        EXPECT_TRUE(support::sameSpectrum(with(dst, op.ofTwo(src.plane, dst.plane)), target));
        EXPECT_TRUE(support::sameSpectrum(src, source));
    }
}

TEST_P(Arithmetic, ThreeArgumentsTakeThePropertiesOfTheFirst) {
    const Operation& op = GetParam();
    const Spectrum a = first(16, 8);
    const Spectrum b = second(16, 8);
    const mvFrequencyBuffer bufferA = support::bufferOf(a);
    const mvFrequencyBuffer bufferB = support::bufferOf(b);
    Spectrum spent = second(16, 8);
    spent.inverseComputed = true;
    for (mvFrequencyBuffer result :
         {mvFrequencyBuffer(), mvFrequencyBuffer(3, 100), support::bufferOf(spent)}) {
        op.three(bufferA, bufferB, result);
        EXPECT_TRUE(support::sameSpectrum(with(a, op.ofThree(a.plane, b.plane)), result));
        EXPECT_EQ(mvi::BufferAccess::xform(result), mvi::BufferAccess::xform(bufferA));
    }
    EXPECT_TRUE(support::sameSpectrum(a, bufferA));
    EXPECT_TRUE(support::sameSpectrum(b, bufferB));
}

TEST_P(Arithmetic, TheResultMayBeTheFirst) {
    const Operation& op = GetParam();
    const Spectrum a = first(16, 8);
    const Spectrum b = second(16, 8);
    mvFrequencyBuffer buffer = support::bufferOf(a);
    op.three(buffer, support::bufferOf(b), buffer);
    EXPECT_TRUE(support::sameSpectrum(with(a, op.ofThree(a.plane, b.plane)), buffer));
}

TEST_P(Arithmetic, TheResultMayBeTheSecond) {
    const Operation& op = GetParam();
    const Spectrum a = first(16, 8);
    const Spectrum b = second(16, 8);
    mvFrequencyBuffer buffer = support::bufferOf(b);
    op.three(support::bufferOf(a), buffer, buffer);
    const Plane expected =
        op.commutes ? op.ofThree(b.plane, a.plane) : op.ofThree(a.plane, b.plane);
    EXPECT_TRUE(support::sameSpectrum(with(op.commutes ? b : a, expected), buffer));
}

TEST_P(Arithmetic, BothOperandsMayBeOne) {
    const Operation& op = GetParam();
    const Spectrum a = first(16, 8);
    const mvFrequencyBuffer buffer = support::bufferOf(a);
    mvFrequencyBuffer result;
    op.three(buffer, buffer, result);
    EXPECT_TRUE(support::sameSpectrum(with(a, op.ofThree(a.plane, a.plane)), result));
}

TEST_P(Arithmetic, AllArgumentsMayBeOne) {
    const Operation& op = GetParam();
    const Spectrum a = first(16, 8);
    mvFrequencyBuffer three = support::bufferOf(a);
    op.three(three, three, three);
    EXPECT_TRUE(support::sameSpectrum(with(a, op.ofThree(a.plane, a.plane)), three));
    mvFrequencyBuffer two = support::bufferOf(a);
    op.two(two, two);
    EXPECT_TRUE(support::sameSpectrum(with(a, op.ofTwo(a.plane, a.plane)), two));
}

TEST_P(Arithmetic, SpecialValuesComeOutAsTheyDo) {
    const Operation& op = GetParam();
    for (const bool infinite : {false, true}) {
        const Plane a = support::specialPlane(32, 32, 3, infinite);
        const Plane b = support::specialPlane(32, 32, 4, infinite);
        mvFrequencyBuffer result;
        op.three(support::bufferOf(a), support::bufferOf(b), result);
        EXPECT_TRUE(support::samePlane(op.ofThree(a, b), support::planeOf(result), true));
    }
}

TEST_P(Arithmetic, ImageSizesMayDiffer) {
    const Operation& op = GetParam();
    mvFrequencyBuffer result;
    op.three(mvFrequencyBuffer(9, 5), mvFrequencyBuffer(16, 8), result);
    EXPECT_EQ(mvi::BufferAccess::imageWidth(result), 9);
    EXPECT_EQ(mvi::BufferAccess::imageHeight(result), 5);
}

// The operands of one refused call, and what it throws in either order of the checks.
struct Refusal {
    Spectrum a, b;
    std::string sizeFirst;
    std::string inverseFirst;
};

std::vector<Refusal> refusals(const Operation& op) {
    const Spectrum none;
    const Spectrum good = first(16, 8);
    const Spectrum wide = first(32, 8);
    const Spectrum high = first(16, 16);
    Spectrum spent = good;
    spent.inverseComputed = true;
    Spectrum spentWide = wide;
    spentWide.inverseComputed = true;
    return {{none, good, support::kNoData, support::kNoData},
            {good, none, support::kNoData, support::kNoData},
            {none, none, support::kNoData, support::kNoData},
            {spent, none, support::kNoData, support::kNoData},
            {none, spent, support::kNoData, support::kNoData},
            {spent, good, support::kSpent, support::kSpent},
            {good, spent, support::kSpent, support::kSpent},
            {good, wide, op.otherSize, op.otherSize},
            {high, good, op.otherSize, op.otherSize},
            {spentWide, good, op.otherSize, support::kSpent},
            {good, spentWide, op.otherSize, support::kSpent}};
}

TEST_P(Arithmetic, ChecksInItsOrderAndChangesNothing) {
    const Operation& op = GetParam();
    const Spectrum other = second(4, 4);
    for (const Refusal& refusal : refusals(op)) {
        const mvFrequencyBuffer a = support::bufferOf(refusal.a);
        const mvFrequencyBuffer b = support::bufferOf(refusal.b);
        mvFrequencyBuffer result = support::bufferOf(other);
        EXPECT_EQ(thrownBy([&] { op.three(a, b, result); }),
                  op.threeAsksForSizeFirst ? refusal.sizeFirst : refusal.inverseFirst);
        EXPECT_TRUE(support::sameSpectrum(other, result));
        mvFrequencyBuffer dst(b);
        EXPECT_EQ(thrownBy([&] { op.two(a, dst); }),
                  op.twoAsksForSizeFirst ? refusal.sizeFirst : refusal.inverseFirst);
        EXPECT_TRUE(dst == b);
    }
}

TEST(ArithmeticSum, OfABufferWithItselfDoublesIt) {
    mvFrequencyBuffer a = support::bufferOf(support::constantPlane(4, 4, {1.5F, -2.0F}));
    mfFrequencyAdd(a, a, a);
    EXPECT_EQ(a.get(3, 3, false), mvPair(3.0, -4.0));
}

TEST(ArithmeticDifference, OfABufferWithItselfIsZero) {
    const Spectrum a = first(16, 8);
    mvFrequencyBuffer result;
    const mvFrequencyBuffer buffer = support::bufferOf(a);
    mfFrequencySubtract(buffer, buffer, result);
    EXPECT_TRUE(support::sameSpectrum(with(a, Plane(16, 8)), result));
}

TEST(ArithmeticDifference, IntoTheSecondIsNotReversed) {
    const mvFrequencyBuffer a = support::bufferOf(support::constantPlane(4, 4, {5.0F, 1.0F}));
    mvFrequencyBuffer b = support::bufferOf(support::constantPlane(4, 4, {2.0F, 4.0F}));
    mfFrequencySubtract(a, b, b);
    EXPECT_EQ(b.get(2, 1, false), mvPair(3.0, -3.0));
}

TEST(ArithmeticProduct, IsComplex) {
    const mvFrequencyBuffer a = support::bufferOf(support::constantPlane(4, 4, {2.0F, 3.0F}));
    mvFrequencyBuffer b = support::bufferOf(support::constantPlane(4, 4, {5.0F, -7.0F}));
    mfFrequencyMultiply(a, b, b);
    EXPECT_EQ(b.get(0, 3, false), mvPair(31.0, 1.0));
}

TEST(ArithmeticConjugate, NegatesEveryImaginaryPart) {
    for (const bool infinite : {false, true}) {
        const Spectrum src = support::someSpectrum(support::specialPlane(16, 8, 5, infinite));
        const Spectrum expected = with(src, reference::conjugate(src.plane));
        const mvFrequencyBuffer source = support::bufferOf(src);
        mvFrequencyBuffer inPlace(source);
        mfFrequencyConjugate(inPlace);
        EXPECT_TRUE(support::sameSpectrum(expected, inPlace));
        mvFrequencyBuffer copy(4, 4);
        mfFrequencyConjugate(source, copy);
        EXPECT_TRUE(support::sameSpectrum(expected, copy));
        EXPECT_TRUE(support::sameSpectrum(src, source));
        mvFrequencyBuffer self(source);
        mfFrequencyConjugate(self, self);
        EXPECT_TRUE(support::sameSpectrum(expected, self));
    }
}

TEST(ArithmeticConjugate, AsksForDataThenInverse) {
    Spectrum spent = first(4, 4);
    spent.inverseComputed = true;
    const Spectrum other = second(8, 8);
    for (const auto& [spectrum, thrown] :
         {std::pair(Spectrum(), support::kNoData), std::pair(spent, support::kSpent)}) {
        mvFrequencyBuffer src = support::bufferOf(spectrum);
        const mvFrequencyBuffer before(src);
        mvFrequencyBuffer dst = support::bufferOf(other);
        EXPECT_EQ(thrownBy([&] { mfFrequencyConjugate(src); }), thrown);
        EXPECT_EQ(thrownBy([&] { mfFrequencyConjugate(src, dst); }), thrown);
        EXPECT_TRUE(src == before);
        EXPECT_TRUE(support::sameSpectrum(other, dst));
    }
}

TEST(ArithmeticPolls, ThereAreNone) {
    const support::AttentionCounter counter(1);
    mvFrequencyBuffer a(64, 64);
    mfFrequencyAdd(a, a, a);
    mfFrequencySubtract(a, a);
    mfFrequencyMultiply(a, a, a);
    mfFrequencyConjugate(a);
    EXPECT_EQ(counter.polls(), 0);
}

}  // namespace
