// Inverse transforms: bits as the reference's for every output, placement, flags, aliasing.
#include <filt/fft.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "support/buffer_probe.h"
#include "support/compare.h"
#include "support/longs.h"
#include "support/pel_images.h"
#include "support/random_planes.h"
#include "support/thrown.h"

namespace {

using reference::Image;
using reference::Output;
using support::at;
using support::bufferOf;
using support::BufferProbe;
using support::imageOf;
using support::pelBufferOf;
using support::planeOf;
using support::randomImage;
using support::spectrumOf;

struct Case {
    long width, height, x, y;
    std::string name() const {
        return std::to_string(width) + " x " + std::to_string(height) + " at " + std::to_string(x) +
               ", " + std::to_string(y);
    }
};

const std::vector<Case>& cases() {
    static const std::vector<Case> all = {
        {1, 1, 0, 0},    {1, 1, 1, 0},      {3, 5, 0, 0},
        {3, 5, 1, 0},    {3, 5, -1, 2},     {8, 8, 0, 0},
        {8, 8, 0, -3},   {8, 8, 5, 6},      {8, 8, -5, -6},
        {17, 9, -40, 2}, {17, 9, 17, 0},    {17, 9, -17, 9},
        {20, 33, 0, 0},  {20, 33, -20, 32}, {64, 64, 0, 0},
        {7, 1, 3, 0},    {1, 7, 0, -3},     {64, 64, -9, 7},
        {300, 5, 0, 0},  {150, 6, 4, -1},   {4, 6, -2147483647 - 1, 2147483647}};
    return all;
}

// The spectrum of a complex image, so that all signs and phases occur; its pels reach beyond 8
// bits.
mvFrequencyBuffer complexSpectrum(const Case& c, double size = 400) {
    auto real = randomImage<double>(c.width, c.height, 1);
    auto imaginary = randomImage<double>(c.width, c.height, 2);
    for (double& pel : real.pels) pel *= size;
    for (double& pel : imaginary.pels) pel *= size;
    auto image = pelBufferOf(at(real, c.x, c.y));
    image.copyXforms(support::someXformCache());
    mvFrequencyBuffer buffer;
    mfForwardFFT<double>(image, pelBufferOf(at(imaginary, c.x, c.y)), buffer);
    return buffer;
}

// An output of another size and place than the result's, full of a value of its own.
template <class T>
Output<T> output(const Case& c, bool bound) {
    if (!bound) return std::nullopt;
    const long x = support::asLong(std::min<std::int64_t>(std::int64_t{c.x} + 1, 2147483647));
    const long y = support::asLong(std::max<std::int64_t>(std::int64_t{c.y} - 2, -2147483648LL));
    return at(Image<T>(c.width + 2, c.height + 1, T{99}), x, y);
}

template <class T>
void expectOutput(const Output<T>& expected, const mvPelBuffer<T>& actual, bool bound,
                  bool boundTakesXform, const std::string& what) {
    EXPECT_TRUE(support::sameImage(*expected, imageOf(actual))) << what;
    const bool takesXform = !bound || boundTakesXform;
    EXPECT_TRUE(actual.xformCache() == (takesXform ? support::someXformCache() : mv2XformCache()))
        << what;
}

// What an inverse leaves of its source: untouched, or the whole unscaled spatial plane.
void expectSource(const reference::Spectrum& before, const mvFrequencyBuffer& buffer, bool destroy,
                  const std::string& what) {
    const auto expected = destroy ? reference::spatial(before) : before;
    const auto actual = spectrumOf(buffer);
    EXPECT_TRUE(support::samePlane(expected.plane, actual.plane)) << what;
    EXPECT_EQ(actual.inverseComputed, expected.inverseComputed) << what;
    EXPECT_EQ(actual.masked, expected.masked) << what;
    EXPECT_EQ(actual.imageWidth, expected.imageWidth) << what;
    EXPECT_EQ(actual.x, expected.x) << what;
}

struct Flags {
    bool rescale, destroy, bound, secondBound;
    std::string name() const {
        return std::string(rescale ? ", rescale" : "") + (destroy ? ", destroy" : "") +
               (bound ? ", bound" : "") + (secondBound ? ", second bound" : "");
    }
};

std::vector<Flags> allFlags() {
    std::vector<Flags> all;
    for (int k = 0; k < 16; ++k) {
        all.push_back({(k & 1) != 0, (k & 2) != 0, (k & 4) != 0, (k & 8) != 0});
    }
    return all;
}

template <class T>
struct InverseTest : testing::Test {};
using PelTypes = testing::Types<unsigned char, unsigned short, double>;
TYPED_TEST_SUITE(InverseTest, PelTypes, );

TYPED_TEST(InverseTest, HasTheReferencesMagnitudes) {
    for (const Case& c : cases()) {
        const auto spectrum = complexSpectrum(c);
        const auto before = spectrumOf(spectrum);
        for (const Flags& flags : allFlags()) {
            if (flags.secondBound) continue;
            const std::string what = c.name() + flags.name();
            auto expected = output<TypeParam>(c, flags.bound);
            auto buffer = spectrum;
            auto out = pelBufferOf(expected);
            reference::magnitudeImage(reference::spatial(before), expected, flags.rescale);
            mfInverseFFT<TypeParam>(buffer, out, flags.rescale, flags.destroy);
            expectOutput(expected, out, flags.bound, false, what);
            expectSource(before, buffer, flags.destroy, what);
        }
    }
}

TYPED_TEST(InverseTest, HasTheReferencesAngles) {
    for (const Case& c : cases()) {
        const auto spectrum = complexSpectrum(c);
        const auto before = spectrumOf(spectrum);
        const auto space = reference::spatial(before);
        for (const Flags& flags : allFlags()) {
            const std::string what = c.name() + flags.name();
            auto expected = output<TypeParam>(c, flags.bound);
            auto expectedAngle = output<double>(c, flags.secondBound);
            auto buffer = spectrum;
            auto out = pelBufferOf(expected);
            auto angle = pelBufferOf(expectedAngle);
            reference::magnitudeImage(space, expected, flags.rescale);
            reference::angleImage(space, expectedAngle);
            mfInverseFFTAngle<TypeParam>(buffer, out, angle, flags.rescale, flags.destroy);
            expectOutput(expected, out, flags.bound, false, what);
            expectOutput(expectedAngle, angle, flags.secondBound, false, what + ", angle");
            expectSource(before, buffer, flags.destroy, what);
        }
    }
}

TYPED_TEST(InverseTest, HasTheReferencesQuadrants) {
    for (const Case& c : cases()) {
        const auto spectrum = complexSpectrum(c);
        const auto before = spectrumOf(spectrum);
        const auto space = reference::spatial(before);
        for (const Flags& flags : allFlags()) {
            const std::string what = c.name() + flags.name();
            auto expected = output<TypeParam>(c, flags.bound);
            auto expectedCodes = output<unsigned char>(c, flags.secondBound);
            auto buffer = spectrum;
            auto out = pelBufferOf(expected);
            auto codes = pelBufferOf(expectedCodes);
            reference::magnitudeImage(space, expected, flags.rescale);
            reference::quadrantImage(space, expectedCodes);
            mfInverseFFTQuadrant<TypeParam>(buffer, out, codes, flags.rescale, flags.destroy);
            expectOutput(expected, out, flags.bound, false, what);
            expectOutput(expectedCodes, codes, flags.secondBound, false, what + ", quadrants");
            expectSource(before, buffer, flags.destroy, what);
        }
    }
}

TYPED_TEST(InverseTest, LeavesAConstBufferAsItIs) {
    const Case c{5, 6, 2, -1};
    const mvFrequencyBuffer buffer = complexSpectrum(c);
    const auto before = spectrumOf(buffer);
    Output<TypeParam> expected;
    Output<double> expectedAngle;
    Output<unsigned char> expectedCodes;
    reference::magnitudeImage(reference::spatial(before), expected, true);
    reference::angleImage(reference::spatial(before), expectedAngle);
    reference::quadrantImage(reference::spatial(before), expectedCodes);
    mvPelBuffer<TypeParam> plain;
    mvPelBuffer<TypeParam> withAngle;
    mvPelBuffer<TypeParam> withCodes;
    mvPelBuffer<double> angle;
    mvPelBuffer<unsigned char> codes;
    mfInverseFFT<TypeParam>(buffer, plain, true);
    mfInverseFFTAngle<TypeParam>(buffer, withAngle, angle, true);
    mfInverseFFTQuadrant<TypeParam>(buffer, withCodes, codes, true);
    expectOutput(expected, plain, false, false, "plain");
    expectOutput(expected, withAngle, false, false, "with angle");
    expectOutput(expected, withCodes, false, false, "with quadrants");
    expectOutput(expectedAngle, angle, false, false, "angle");
    expectOutput(expectedCodes, codes, false, false, "quadrants");
    expectSource(before, buffer, false, "const");
}

TYPED_TEST(InverseTest, TransformsASpentBufferNoSecondTime) {
    auto buffer = complexSpectrum({5, 6, 2, -1});
    mvPelBuffer<TypeParam> first;
    mfInverseFFT<TypeParam>(buffer, first, false, true);
    const auto spent = spectrumOf(buffer);
    EXPECT_TRUE(spent.inverseComputed);
    for (const bool destroy : {true, false}) {
        mvPelBuffer<TypeParam> again;
        mfInverseFFT<TypeParam>(buffer, again, false, destroy);
        EXPECT_TRUE(support::sameImage(imageOf(first), imageOf(again)));
        expectSource(spent, buffer, false, "spent");
    }
    mvPelBuffer<TypeParam> fromCopy;
    const mvFrequencyBuffer copy = buffer;
    mfInverseFFT<TypeParam>(copy, fromCopy, false);
    EXPECT_TRUE(support::sameImage(imageOf(first), imageOf(fromCopy)));
}

TYPED_TEST(InverseTest, WritesNothingOutsideABoundOutput) {
    const Case c{12, 7, -3, 4};
    auto buffer = complexSpectrum(c);
    support::GuardedPels<TypeParam> out(*output<TypeParam>(c, true));
    mfInverseFFT<TypeParam>(buffer, out.buffer(), false, false);
    EXPECT_TRUE(out.guardsAreIntact());
}

TYPED_TEST(InverseTest, WritesBackIntoTheImageItCameFrom) {
    for (const Case& c : {Case{12, 7, 0, 0}, Case{8, 8, -3, 2}}) {
        const auto image = at(randomImage<TypeParam>(c.width, c.height, 1), c.x, c.y);
        Output<TypeParam> expected = image;
        reference::magnitudeImage(reference::spatial(reference::forward(image)), expected, false);
        const auto pels = pelBufferOf(image);
        mvFrequencyBuffer buffer;
        mfForwardFFT<TypeParam>(pels, buffer);
        mvPelBuffer<TypeParam> view = pels;
        mfInverseFFT<TypeParam>(buffer, view, false, true);
        EXPECT_TRUE(support::sameImage(*expected, imageOf(pels))) << c.name();
    }
}

TYPED_TEST(InverseTest, SkipsRowsOutsideTheMaskAlsoWhenTheyAreNotZero) {
    for (const auto& [w, h] : {std::pair(16, 16), std::pair(8, 32), std::pair(64, 16)}) {
        for (const auto& [low, high] :
             {std::pair(5L, 9L), std::pair(-3L, 2L), std::pair(12L, 99L), std::pair(0L, 16L)}) {
            auto buffer = bufferOf(support::randomPlane(w, h, 3));
            BufferProbe::maskFrequencyBuffer(buffer, true, low, high);
            const auto before = spectrumOf(buffer);
            Output<TypeParam> expected;
            reference::magnitudeImage(reference::spatial(before), expected, true);
            for (const bool destroy : {false, true}) {
                mvPelBuffer<TypeParam> out;
                mfInverseFFT<TypeParam>(buffer, out, true, destroy);
                EXPECT_TRUE(support::sameImage(*expected, imageOf(out)))
                    << w << " x " << h << ", " << low << " .. " << high;
                expectSource(before, buffer, destroy, "masked");
            }
        }
    }
}

TYPED_TEST(InverseTest, HasTheReferencesBitsForSpecialValues) {
    for (const bool infinite : {false, true}) {
        for (const bool rescale : {false, true}) {
            const auto plane = support::specialPlane(8, 4, 3, infinite);
            auto buffer = bufferOf(plane);
            Output<TypeParam> expected;
            reference::magnitudeImage(reference::spatial(spectrumOf(buffer)), expected, rescale);
            mvPelBuffer<TypeParam> out;
            mfInverseFFT<TypeParam>(buffer, out, rescale, false);
            EXPECT_TRUE(support::sameImage(*expected, imageOf(out)));
        }
    }
}

// A buffer marked as spent whose plane is `values`, one row; each is scaled by 1 / count.
mvFrequencyBuffer spentBuffer(const std::vector<float>& values) {
    reference::Plane plane(static_cast<int>(values.size()), 1);
    mvFrequencyBuffer buffer = bufferOf(plane);
    mvPelBuffer<double> out;
    mfInverseFFT<double>(buffer, out, false, true);
    for (std::size_t i = 0; i < values.size(); ++i) plane.elements[i].re = values[i];
    support::setPlane(buffer, plane);
    return buffer;
}

template <class T>
std::vector<T> pelsOf(const std::vector<float>& values, bool rescale) {
    auto buffer = spentBuffer(values);
    mvPelBuffer<T> out;
    mfInverseFFT<T>(buffer, out, rescale, false);
    return imageOf(out).pels;
}

TEST(InverseMagnitudes, AreRoundedHalfUpAndHeld) {
    using Bytes = std::vector<unsigned char>;
    using Words = std::vector<unsigned short>;
    const float belowHalf = std::nextafter(0.5F, 0.0F);
    EXPECT_EQ(pelsOf<unsigned char>({0.5F}, false), Bytes{1});
    EXPECT_EQ(pelsOf<unsigned char>({belowHalf}, false), Bytes{0});
    EXPECT_EQ(pelsOf<unsigned short>({belowHalf}, false), Words{0});
    EXPECT_EQ(pelsOf<unsigned short>({std::nextafter(3.5F, 0.0F)}, false), Words{3});
    EXPECT_EQ(pelsOf<unsigned char>({-7.5F}, false), Bytes{8});
    EXPECT_EQ(pelsOf<unsigned char>({255.4F}, false), Bytes{255});
    EXPECT_EQ(pelsOf<unsigned char>({256}, false), Bytes{255});
    EXPECT_EQ(pelsOf<unsigned char>({3e9F}, false), Bytes{255});
    EXPECT_EQ(pelsOf<unsigned short>({5e18F}, false), Words{65535});
    EXPECT_EQ(pelsOf<unsigned short>({INFINITY}, false), Words{65535});
    EXPECT_EQ(pelsOf<unsigned short>({NAN}, false), Words{0});
    EXPECT_EQ(pelsOf<unsigned short>({1e30F}, false), Words{65535}) << "the square overflows";
}

TEST(InverseMagnitudes, AreSpreadOverThePelRangeByRescaling) {
    using Bytes = std::vector<unsigned char>;
    EXPECT_EQ(pelsOf<unsigned char>({4, 8, -12, 8}, true), (Bytes{0, 128, 255, 128}));
    EXPECT_EQ(pelsOf<unsigned short>({0, 65536, 0, 0}, true),
              (std::vector<unsigned short>{0, 65535, 0, 0}));
    EXPECT_EQ(pelsOf<unsigned char>({9, 9}, true), (Bytes{0, 0})) << "a constant image";
    EXPECT_EQ(pelsOf<unsigned char>({9, NAN}, true), (Bytes{0, 0}));
    EXPECT_EQ(pelsOf<unsigned char>({9, INFINITY}, true), (Bytes{0, 0}));
    EXPECT_EQ(pelsOf<double>({4, 8}, true), (std::vector<double>{2, 4})) << "no use for doubles";
}

TEST(InverseMagnitudes, ScanTheirRangeFrom1e20OfSquaredMagnitude) {
    // Both squares are above 1e20: the least one stays there, which is 1e10 before the scaling.
    EXPECT_EQ(pelsOf<unsigned char>({2e10F, 4e10F}, true), (std::vector<unsigned char>{85, 255}));
    EXPECT_EQ(pelsOf<unsigned short>({5e9F, 3e10F}, true), (std::vector<unsigned short>{0, 65535}));
}

TEST(InverseMagnitudes, OfAConstantImageAre0WhenRescaled) {
    mvFrequencyBuffer buffer;
    mfForwardFFT<unsigned char>(pelBufferOf(Image<unsigned char>(16, 8, 77)), buffer);
    mvPelBuffer<unsigned char> out;
    mfInverseFFT<unsigned char>(buffer, out, true, false);
    EXPECT_TRUE(support::sameImage(Image<unsigned char>(16, 8, 0), imageOf(out)));
    mfInverseFFT<unsigned char>(buffer, out, false, false);
    EXPECT_TRUE(support::sameImage(Image<unsigned char>(16, 8, 77), imageOf(out)));
}

TEST(InverseMagnitudes, LoseTheSignThatQuadrantsKeep) {
    Image<double> image(2, 1);
    image.pels = {-20, 30};
    mvFrequencyBuffer buffer;
    mfForwardFFT<double>(pelBufferOf(image), buffer);
    mvPelBuffer<unsigned char> out;
    mvPelBuffer<unsigned char> codes;
    mfInverseFFTQuadrant<unsigned char>(buffer, out, codes, false, false);
    EXPECT_EQ(imageOf(out).pels, (std::vector<unsigned char>{20, 30}));
    EXPECT_EQ(imageOf(codes).pels[0] & 1, 1);
    EXPECT_EQ(imageOf(codes).pels[1] & 1, 0);
}

TEST(InverseByPelType, NeedsNoAngle) {
    const auto spectrum = complexSpectrum({5, 6, 2, -1});
    auto buffer = spectrum;
    mvPelBuffer<unsigned short> direct;
    mvPelBuffer<unsigned short> internal;
    mvPelBuffer<unsigned short> withAngle;
    mvPelBuffer<double> angle;
    mfInverseFFT<unsigned short>(buffer, direct, true, false);
    mf_InverseFFT(buffer, internal, static_cast<mvPelBuffer<double>*>(nullptr), true, false);
    mf_InverseFFT(buffer, withAngle, &angle, true, false);
    EXPECT_TRUE(support::sameImage(imageOf(direct), imageOf(internal)));
    EXPECT_TRUE(support::sameImage(imageOf(direct), imageOf(withAngle)));
    EXPECT_TRUE(angle.isBound());
}

TEST(InverseToRealAndImaginary, HasTheReferencesBits) {
    for (const Case& c : cases()) {
        const auto spectrum = complexSpectrum(c);
        const auto before = spectrumOf(spectrum);
        for (const Flags& flags : allFlags()) {
            if (flags.rescale) continue;
            const std::string what = c.name() + flags.name();
            auto expectedReal = output<double>(c, flags.bound);
            auto expectedImaginary = output<double>(c, flags.secondBound);
            auto buffer = spectrum;
            auto real = pelBufferOf(expectedReal);
            auto imaginary = pelBufferOf(expectedImaginary);
            reference::realAndImaginaryImages(reference::spatial(before), expectedReal,
                                              expectedImaginary);
            mfInverseFFT(buffer, real, imaginary, flags.destroy);
            expectOutput(expectedReal, real, flags.bound, true, what + ", real");
            expectOutput(expectedImaginary, imaginary, flags.secondBound, true,
                         what + ", imaginary");
            expectSource(before, buffer, flags.destroy, what);
        }
    }
}

TEST(InverseToRealAndImaginary, LeavesAConstBufferAsItIs) {
    const auto buffer = complexSpectrum({5, 6, 0, 0});
    const auto before = spectrumOf(buffer);
    mvPelBuffer<double> real;
    mvPelBuffer<double> imaginary;
    mfInverseFFT(buffer, real, imaginary);
    expectSource(before, buffer, false, "const");
    EXPECT_NEAR(real.pel(4, 5), 400 * randomImage<double>(5, 6, 1).at(4, 5), 1e-3);
    EXPECT_NEAR(imaginary.pel(4, 5), 400 * randomImage<double>(5, 6, 2).at(4, 5), 1e-3);
}

TEST(InverseToABuffer, IsUnscaledAndNeitherMaskedNorMarked) {
    for (const bool destroy : {false, true}) {
        auto source = complexSpectrum({5, 6, 2, -1});
        BufferProbe::maskFrequencyBuffer(source, true, 1, 6);
        const auto before = spectrumOf(source);
        const auto expected = reference::inverse(before);
        mvFrequencyBuffer result(64, 1);
        mfInverseFFT(source, result, destroy);
        const auto actual = spectrumOf(result);
        EXPECT_TRUE(support::samePlane(expected.plane, actual.plane));
        EXPECT_FALSE(actual.masked);
        EXPECT_FALSE(actual.inverseComputed);
        EXPECT_EQ(actual.imageWidth, 5);
        EXPECT_EQ(actual.x, 2);
        EXPECT_TRUE(mvi::BufferAccess::xform(result) == support::someXformCache());
        expectSource(before, source, destroy, "source");
    }
}

TEST(InverseToABuffer, GivesTheInputOfTheForwardTimesTheArea) {
    const auto original = bufferOf(support::randomPlane(16, 4, 1));
    mvFrequencyBuffer spectrum;
    mvFrequencyBuffer back;
    mfForwardFFT(original, spectrum);
    mfInverseFFT(std::as_const(spectrum), back);
    for (long x = 0; x < 16; ++x) {
        EXPECT_NEAR(back.getReal(x, 1, false), 64 * original.getReal(x, 1, false), 1e-4);
    }
}

TEST(InverseToABuffer, TakesASpentSourceAsSpatialData) {
    for (const bool destroy : {false, true}) {
        auto source = bufferOf(support::randomPlane(8, 8, 1));
        mvPelBuffer<double> out;
        mfInverseFFT<double>(source, out, false, true);
        const auto spent = spectrumOf(source);
        mvFrequencyBuffer result;
        mfInverseFFT(source, result, destroy);
        EXPECT_TRUE(support::samePlane(spent.plane, planeOf(result)));
        EXPECT_FALSE(mvi::BufferAccess::inverseComputed(result));
        EXPECT_TRUE(mvi::BufferAccess::inverseComputed(source));
    }
}

TEST(InverseToABuffer, EndsInPlaceAsTheOrderOfItsStepsSays) {
    const auto original = bufferOf(support::randomPlane(8, 16, 1));
    const auto expected = reference::inverse(spectrumOf(original)).plane;
    const auto masked = [&] {
        auto buffer = original;
        BufferProbe::maskFrequencyBuffer(buffer, true, 0, 16);
        return buffer;
    };
    auto kept = masked();
    mfInverseFFT(kept, kept, false);
    EXPECT_TRUE(support::samePlane(expected, planeOf(kept)));
    EXPECT_FALSE(mvi::BufferAccess::inverseComputed(kept));
    EXPECT_EQ(mvi::BufferAccess::masked(kept), 0);

    auto destroyed = masked();
    mfInverseFFT(destroyed, destroyed, true);
    EXPECT_TRUE(support::samePlane(expected, planeOf(destroyed)));
    EXPECT_TRUE(mvi::BufferAccess::inverseComputed(destroyed));
    EXPECT_EQ(mvi::BufferAccess::masked(destroyed), 0);

    mfInverseFFT(destroyed, destroyed, false);
    EXPECT_TRUE(support::samePlane(expected, planeOf(destroyed)));
    EXPECT_TRUE(mvi::BufferAccess::inverseComputed(destroyed));
}

TEST(InverseOfAReducedCopy, GivesAnImageOfTheReducedSize) {
    const auto source = bufferOf(support::randomPlane(16, 16, 1));
    auto nine = source;
    BufferProbe::setAndAllocateFrequencyBuffer(nine, 9, 9);
    const mvFrequencyBuffer reduced(nine, 8, 8);
    Output<double> expected;
    reference::magnitudeImage(reference::spatial(spectrumOf(reduced)), expected, false);
    mvPelBuffer<double> out;
    mfInverseFFT<double>(reduced, out, false);
    EXPECT_EQ(out.width(), 4);
    EXPECT_TRUE(support::sameImage(*expected, imageOf(out)));
    const mvFrequencyBuffer copy = reduced;
    mvPelBuffer<double> fromCopy;
    mfInverseFFT<double>(copy, fromCopy, false);
    EXPECT_TRUE(support::sameImage(*expected, imageOf(fromCopy)));
}

TEST(Inverse, MeetsThePelBuffersRefusalOfAnEmptyImage) {
    mvFrequencyBuffer buffer(0, 4);
    mvPelBuffer<double> out;
    mvPelBuffer<unsigned char> codes;
    EXPECT_EQ(support::thrownBy([&] { mfInverseFFT<double>(buffer, out, false, false); }),
              "mvException");
    EXPECT_EQ(support::thrownBy([&] { mfInverseFFT(buffer, out, out, false); }), "mvException");
    EXPECT_EQ(support::thrownBy([&] { mf_ComputeAngleImage(buffer, out); }), "mvException");
    EXPECT_EQ(support::thrownBy([&] { mf_ComputeQuadrantImage(buffer, codes); }), "mvException");
    EXPECT_FALSE(out.isBound());
    mvFrequencyBuffer copy;
    mfInverseFFT(std::as_const(buffer), copy);
    EXPECT_EQ(copy.height(), 4);
}

}  // namespace
