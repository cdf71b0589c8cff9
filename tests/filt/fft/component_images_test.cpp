// The real, imaginary, magnitude and phase images of a plane.
#include <filt/fft.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <numbers>
#include <string>
#include <vector>

#include "support/buffer_probe.h"
#include "support/compare.h"
#include "support/pel_images.h"
#include "support/random_planes.h"
#include "support/thrown.h"

namespace {

using reference::Complex;
using support::bufferOf;
using support::thrownBy;

struct Component {
    std::string name;
    mvPelBuffer<double> (mvFrequencyBuffer::*image)(bool) const;
    std::function<double(Complex)> value;
};

double phaseOf(Complex z) {
    return mvRadian(std::atan2(double{z.im}, double{z.re})).norm().toDouble();
}

const std::vector<Component>& components() {
    static const std::vector<Component> all = {
        {"real", &mvFrequencyBuffer::getRealImage, [](Complex z) { return double{z.re}; }},
        {"imaginary", &mvFrequencyBuffer::getImaginaryImage,
         [](Complex z) { return double{z.im}; }},
        {"magnitude", &mvFrequencyBuffer::getMagnitudeImage,
         [](Complex z) {
             const float square = z.re * z.re + z.im * z.im;
             return double{std::sqrt(square)};
         }},
        {"phase", &mvFrequencyBuffer::getPhaseImage, phaseOf}};
    return all;
}

// The component image, by the definition of shifted coordinates.
reference::Image<double> expectedImage(const reference::Plane& plane, const Component& component,
                                       bool centred) {
    reference::Image<double> image(plane.width, plane.height);
    for (long y = 0; y < plane.height; ++y) {
        for (long x = 0; x < plane.width; ++x) {
            const long toX = centred ? (x + plane.width / 2) % plane.width : x;
            const long toY = centred ? (y + plane.height / 2) % plane.height : y;
            image.at(toX, toY) = component.value(plane.at(x, y));
        }
    }
    return image;
}

TEST(ComponentImages, HoldEveryElementAtItsPlace) {
    for (const auto& [w, h] : support::paddedSizes(256)) {
        for (const bool infinite : {false, true}) {
            const auto plane = support::specialPlane(w, h, 3, infinite);
            const auto buffer = bufferOf(plane);
            for (const auto& component : components()) {
                for (const bool centred : {false, true}) {
                    EXPECT_TRUE(
                        support::sameImage(expectedImage(plane, component, centred),
                                           support::imageOf((buffer.*component.image)(centred))))
                        << component.name << " of " << w << " x " << h << ", centred " << centred;
                }
            }
        }
    }
}

TEST(ComponentImages, HaveThePaddedSizeAndNoPlacement) {
    auto image = support::pelBufferOf(support::at(support::randomImage<double>(5, 3, 1), 4, 9));
    image.copyXforms(support::someXformCache());
    mvFrequencyBuffer buffer;
    mfForwardFFT<double>(image, buffer);
    for (const auto& component : components()) {
        const auto result = (buffer.*component.image)(false);
        EXPECT_EQ(result.width(), 8);
        EXPECT_EQ(result.height(), 4);
        EXPECT_EQ(result.offset(), mvPair<long>(0, 0));
        EXPECT_FALSE(result.xformCache().isSet());
    }
    const mvFrequencyBuffer large(600, 300);
    EXPECT_EQ(large.getRealImage(true).width(), 1024);
    EXPECT_EQ(large.getRealImage(true).height(), 512);
}

TEST(ComponentImages, PutDcInTheMiddleWhenCentred) {
    mvFrequencyBuffer buffer(16, 8);
    buffer.put(0, 0, {3, 4}, false);
    reference::Image<double> expected(16, 8);
    expected.at(8, 4) = 5;
    EXPECT_TRUE(support::sameImage(expected, support::imageOf(buffer.getMagnitudeImage(true))));
}

TEST(ComponentImages, MeasureMagnitudesInSinglePrecision) {
    mvFrequencyBuffer buffer(1, 1);
    buffer.put(0, 0, {1e30, 0}, false);
    EXPECT_TRUE(std::isinf(buffer.getMagnitudeImage(false).pel(0, 0)));
    buffer.put(0, 0, {1e-30, 0}, false);
    EXPECT_EQ(buffer.getMagnitudeImage(false).pel(0, 0), 0);
}

TEST(ComponentImages, FoldPhasesIntoOneTurn) {
    using std::numbers::pi;
    const struct {
        Complex z;
        double phase;
    } cases[] = {{{1, 0}, 0},       {{0, 1}, pi / 2},      {{-1, 0}, pi},
                 {{-1, -0.0F}, pi}, {{0, -1}, 3 * pi / 2}, {{0, 0}, 0}};
    for (const auto& c : cases) {
        mvFrequencyBuffer buffer(1, 1);
        buffer.put(0, 0, {c.z.re, c.z.im}, false);
        EXPECT_NEAR(buffer.getPhaseImage(false).pel(0, 0), c.phase, 1e-15);
    }
}

TEST(ComponentImages, ShowMaskedRowsToo) {
    const auto plane = support::randomPlane(4, 4, 1);
    auto buffer = bufferOf(plane);
    support::BufferProbe::maskFrequencyBuffer(buffer, true, 2, 2);
    EXPECT_TRUE(support::sameImage(expectedImage(plane, components()[0], false),
                                   support::imageOf(buffer.getRealImage(false))));
}

TEST(ComponentImages, DoNotPoll) {
    const mvFrequencyBuffer buffer(64, 64);
    for (const auto& component : components()) {
        EXPECT_EQ(support::pollsOf([&] { (buffer.*component.image)(true); }), 0) << component.name;
    }
}

}  // namespace
