// Forward transforms: bits as the reference's for every pel type, placement, aliasing.
#include <filt/fft.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <new>
#include <string>

#include "support/buffer_probe.h"
#include "support/compare.h"
#include "support/pel_images.h"
#include "support/random_planes.h"
#include "support/thrown.h"

namespace {

using reference::Image;
using support::at;
using support::bufferOf;
using support::BufferProbe;
using support::pelBufferOf;
using support::randomImage;
using support::spectrumOf;

// A buffer as it may be before a transform fills it: any size, masked, full of NaNs.
mvFrequencyBuffer usedBuffer(long width, long height) {
    mvFrequencyBuffer buffer(width, height);
    auto plane = support::planeOf(buffer);
    for (auto& z : plane.elements) z = {NAN, NAN};
    support::setPlane(buffer, plane);
    BufferProbe::maskFrequencyBuffer(buffer, true, 1, 2);
    return buffer;
}

void expectSpectrum(const reference::Spectrum& expected, const mvFrequencyBuffer& buffer,
                    const std::string& what) {
    const auto actual = spectrumOf(buffer);
    EXPECT_TRUE(support::samePlane(expected.plane, actual.plane, true)) << what;
    EXPECT_EQ(actual.imageWidth, expected.imageWidth) << what;
    EXPECT_EQ(actual.imageHeight, expected.imageHeight) << what;
    EXPECT_EQ(actual.x, expected.x) << what;
    EXPECT_EQ(actual.y, expected.y) << what;
    EXPECT_FALSE(actual.masked) << what;
    EXPECT_FALSE(actual.inverseComputed) << what;
}

struct Case {
    long width, height, x, y;
    std::string name() const {
        return std::to_string(width) + " x " + std::to_string(height) + " at " + std::to_string(x) +
               ", " + std::to_string(y);
    }
};

const std::vector<Case>& cases() {
    static const std::vector<Case> all = {
        {1, 1, 0, 0},   {1, 1, 5, -5},     {1, 7, 0, 0},     {9, 1, 0, 0},
        {2, 2, 0, 0},   {3, 5, 0, 0},      {3, 5, 1, 0},     {3, 5, 0, -2},
        {4, 4, 0, 0},   {4, 4, -1, 3},     {8, 8, 100, 200}, {17, 9, -40, 2},
        {33, 20, 0, 0}, {64, 64, 0, 0},    {64, 64, 7, 9},   {65, 127, -1, -1},
        {1, 64, 3, 3},  {100, 2, 1, 1000}, {2, 31, 0, 0},    {5, 6, 2147483647, -2147483647 - 1}};
    return all;
}

template <class T>
struct ForwardTest : testing::Test {};
using PelTypes = testing::Types<unsigned char, unsigned short, double>;
TYPED_TEST_SUITE(ForwardTest, PelTypes, );

TYPED_TEST(ForwardTest, HasTheReferencesBitsForOneImage) {
    for (const Case& c : cases()) {
        const auto image = at(randomImage<TypeParam>(c.width, c.height, 1), c.x, c.y);
        mvFrequencyBuffer fresh;
        mfForwardFFT<TypeParam>(pelBufferOf(image), fresh);
        expectSpectrum(reference::forward(image), fresh, c.name());
        auto used = usedBuffer(c.width, c.height);
        mf_ForwardFFT(pelBufferOf(image), used);
        expectSpectrum(reference::forward(image), used, c.name() + ", same size before");
        auto other = usedBuffer(8, 300);
        mfForwardFFT<TypeParam>(pelBufferOf(image), other);
        expectSpectrum(reference::forward(image), other, c.name() + ", other size before");
    }
}

TYPED_TEST(ForwardTest, HasTheReferencesBitsForTwoImages) {
    for (const Case& c : cases()) {
        const auto real = at(randomImage<TypeParam>(c.width, c.height, 1), c.x, c.y);
        const auto imaginary = at(randomImage<TypeParam>(c.width, c.height, 2), c.x, c.y);
        mvFrequencyBuffer fresh;
        mfForwardFFT<TypeParam>(pelBufferOf(real), pelBufferOf(imaginary), fresh);
        expectSpectrum(reference::forward(real, imaginary), fresh, c.name());
        auto used = usedBuffer(c.width, c.height);
        mf_ForwardFFT(pelBufferOf(real), pelBufferOf(imaginary), used);
        expectSpectrum(reference::forward(real, imaginary), used, c.name() + ", used before");
    }
}

TYPED_TEST(ForwardTest, DoesNotTouchTheImage) {
    const auto image = at(randomImage<TypeParam>(13, 6, 1), 2, 3);
    support::GuardedPels<TypeParam> pels(image);
    mvFrequencyBuffer buffer;
    mfForwardFFT<TypeParam>(pels.buffer(), buffer);
    mfForwardFFT<TypeParam>(pels.buffer(), pels.buffer(), buffer);
    EXPECT_TRUE(support::sameImage(image, support::imageOf(pels.buffer())));
    EXPECT_TRUE(pels.guardsAreIntact());
}

TYPED_TEST(ForwardTest, ReadsAWindow) {
    const auto image = randomImage<TypeParam>(40, 30, 1);
    const auto window = pelBufferOf(image).window(3, 5, 20, 11);
    const auto cut = support::imageOf(window);
    EXPECT_EQ(cut.x, 3);
    mvFrequencyBuffer buffer;
    mfForwardFFT<TypeParam>(window, buffer);
    expectSpectrum(reference::forward(cut), buffer, "window");
}

TYPED_TEST(ForwardTest, TakesPlacementFromTheFirstImage) {
    auto first = pelBufferOf(at(randomImage<TypeParam>(4, 4, 1), 3, -7));
    const auto second = pelBufferOf(at(randomImage<TypeParam>(4, 4, 2), 3, -7));
    first.copyXforms(support::someXformCache());
    mvFrequencyBuffer one(2, 2);
    mfForwardFFT<TypeParam>(first, one);
    EXPECT_TRUE(mvi::BufferAccess::xform(one) == support::someXformCache());
    mvFrequencyBuffer two(2, 2);
    mfForwardFFT<TypeParam>(first, second, two);
    EXPECT_TRUE(mvi::BufferAccess::xform(two) == support::someXformCache());
    mfForwardFFT<TypeParam>(second, two);
    EXPECT_FALSE(mvi::BufferAccess::xform(two).isSet()) << "a transform of none is taken over, too";
}

TEST(Forward, PadsAnImageOf3x5To4x8) {
    mvFrequencyBuffer buffer;
    mfForwardFFT<double>(pelBufferOf(randomImage<double>(3, 5, 1)), buffer);
    EXPECT_EQ(buffer.width(), 4);
    EXPECT_EQ(buffer.height(), 8);
    EXPECT_EQ(mvi::BufferAccess::imageWidth(buffer), 3);
    EXPECT_EQ(mvi::BufferAccess::imageHeight(buffer), 5);
}

TEST(Forward, KeepsASinglePel) {
    mvFrequencyBuffer buffer;
    mfForwardFFT<unsigned char>(pelBufferOf(Image<unsigned char>(1, 1, 200)), buffer);
    EXPECT_EQ(buffer.get(0, 0, false), mvPair<double>(200, 0));
    EXPECT_FALSE(std::signbit(buffer.getImaginary(0, 0, false)));
}

TEST(Forward, HasARealDcThatIsTheSumOfThePels) {
    const auto image = randomImage<unsigned char>(64, 32, 1);
    double sum = 0;
    for (const unsigned char pel : image.pels) sum += pel;
    mvFrequencyBuffer buffer;
    mfForwardFFT<unsigned char>(pelBufferOf(image), buffer);
    EXPECT_EQ(buffer.get(0, 0, true), mvPair<double>(sum, 0));
}

TEST(Forward, RoundsDoublePelsToFloat) {
    Image<double> image(4, 2);
    image.pels = {0.1,      1e300,    -1e-300, -0.0, std::numeric_limits<double>::quiet_NaN(),
                  16777217, INFINITY, 1e-42};
    mvFrequencyBuffer buffer;
    mfForwardFFT<double>(pelBufferOf(image), buffer);
    expectSpectrum(reference::forward(image), buffer, "one image");
    mfForwardFFT<double>(pelBufferOf(image), pelBufferOf(image), buffer);
    expectSpectrum(reference::forward(image, image), buffer, "two images");
}

TEST(Forward, AcceptsTheLargestSide) {
    for (const auto& [w, h] : {std::pair(2048L, 1L), std::pair(1L, 2048L), std::pair(2047L, 3L)}) {
        const auto image = randomImage<unsigned char>(w, h, 1);
        mvFrequencyBuffer buffer;
        mfForwardFFT<unsigned char>(pelBufferOf(image), buffer);
        expectSpectrum(reference::forward(image), buffer, std::to_string(w));
    }
}

TEST(ForwardOfABuffer, TransformsThePlaneAsItStands) {
    for (const auto& [w, h] :
         {std::pair(1, 1), std::pair(8, 8), std::pair(4, 32), std::pair(64, 2)}) {
        const auto source = bufferOf(support::randomPlane(w, h, 1));
        const auto before = source;
        mvFrequencyBuffer result(3, 3);
        mfForwardFFT(source, result);
        expectSpectrum(reference::forward(spectrumOf(source)), result, std::to_string(w));
        EXPECT_TRUE(source == before);
    }
}

TEST(ForwardOfABuffer, CarriesPlacementOverAndDropsTheMask) {
    auto image = pelBufferOf(at(randomImage<double>(3, 5, 1), 4, -2));
    image.copyXforms(support::someXformCache());
    mvFrequencyBuffer source;
    mfForwardFFT<double>(image, source);
    BufferProbe::maskFrequencyBuffer(source, true, 3, 4);
    mvFrequencyBuffer result;
    mfForwardFFT(source, result);
    expectSpectrum(reference::forward(spectrumOf(source)), result, "masked");
    EXPECT_TRUE(mvi::BufferAccess::xform(result) == support::someXformCache());
    EXPECT_EQ(mvi::BufferAccess::masked(source), 1);
}

TEST(ForwardOfABuffer, WorksInPlace) {
    auto buffer = bufferOf(support::randomPlane(16, 8, 1));
    BufferProbe::maskFrequencyBuffer(buffer, true, 3, 4);
    const auto expected = reference::forward(spectrumOf(buffer));
    mfForwardFFT(buffer, buffer);
    expectSpectrum(expected, buffer, "b, b");
}

TEST(ForwardOfABuffer, TurnsASpentBufferBackIntoFrequencies) {
    const auto original = bufferOf(support::randomPlane(16, 16, 1));
    auto buffer = original;
    mvPelBuffer<double> out;
    mfInverseFFT<double>(buffer, out, false, true);
    const auto expected = reference::forward(spectrumOf(buffer));
    mvFrequencyBuffer copy;
    mfForwardFFT(buffer, copy);
    expectSpectrum(expected, copy, "copy");
    mfForwardFFT(buffer, buffer);
    expectSpectrum(expected, buffer, "in place");
    EXPECT_NEAR(buffer.getReal(3, 3, false), 256 * original.getReal(3, 3, false), 1e-3);
}

TEST(ForwardOfABuffer, TransformsTheComplexBufferOfTwoImages) {
    const auto real = randomImage<double>(6, 7, 1);
    const auto imaginary = randomImage<double>(6, 7, 2);
    mvFrequencyBuffer buffer(pelBufferOf(real), pelBufferOf(imaginary));
    mfForwardFFT(buffer, buffer);
    expectSpectrum(reference::forward(real, imaginary), buffer, "two images");
}

// The application's own memory may run short while it is asked, which is not the library's:
// elements are transformed by then.
TEST(ForwardOfABuffer, InPlaceCountsAsFrequenciesWhateverTheHandlerThrows) {
    auto buffer = bufferOf(support::randomPlane(32, 32, 1));
    mvPelBuffer<double> out;
    mfInverseFFT<double>(buffer, out, false, true);
    const auto former =
        vsys_set_attention_handler([](void*) -> int { throw std::bad_alloc(); }, nullptr);
    EXPECT_THROW(mfForwardFFT(buffer, buffer), std::bad_alloc);
    vsys_set_attention_handler(former.handler, former.context);
    EXPECT_FALSE(buffer.inverseComputed());
}

}  // namespace
