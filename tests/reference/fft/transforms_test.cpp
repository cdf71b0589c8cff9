// The reference transforms are tested before they judge others.
#include <gtest/gtest.h>

#include <cmath>

#include "reference/fft/transforms.h"
#include "support/compare.h"
#include "support/random_planes.h"

namespace {

using reference::Image;
using reference::Output;
using support::at;
using support::randomImage;

template <class T>
Image<T> magnitudesOf(const reference::Spectrum& spectrum, bool rescale = false) {
    Output<T> out;
    reference::magnitudeImage(reference::spatial(spectrum), out, rescale);
    return *out;
}

// The plane's element (0, 0) of a 1 x 1 image whose spatial result is `value` in the real part.
template <class T>
T pelOf(float value, bool rescale = false) {
    reference::Spectrum space{.plane = reference::Plane(1, 1), .imageWidth = 1, .imageHeight = 1};
    space.plane.at(0, 0).re = value;
    Output<T> out;
    reference::magnitudeImage(space, out, rescale);
    return out->at(0, 0);
}

TEST(ReferencePelCopy, CopiesWhereTheWindowsOverlap) {
    Image<double> src(2, 2);
    src.pels = {1, 2, 3, 4};
    Image<double> dst(3, 3, 9.0);
    reference::pelCopy(at(src, 6, -1), dst = at(dst, 5, 0));
    EXPECT_EQ(dst.pels, (std::vector<double>{9, 3, 4, 9, 9, 9, 9, 9, 9}));
}

TEST(ReferenceWrapCopy, WrapsANegativeOffsetAround) {
    Image<double> src(3, 1);
    src.pels = {1, 2, 3};
    Image<double> dst(3, 1);
    reference::wrapCopy(at(src, -1, 0), dst, true, reference::noPoll);
    EXPECT_EQ(dst.pels, (std::vector<double>{2, 3, 1}));
}

TEST(ReferenceWrapCopy, LeavesWhatNoViewCovers) {
    Image<double> src(3, 1);
    src.pels = {1, 2, 3};
    Image<double> dst(3, 1);
    reference::wrapCopy(at(src, 1, 0), dst, true, reference::noPoll);
    EXPECT_EQ(dst.pels, (std::vector<double>{0, 1, 2}));
}

TEST(ReferenceTransforms, GiveAnImageBack) {
    const auto image = randomImage<unsigned char>(13, 7, 1);
    EXPECT_TRUE(support::sameImage(image, magnitudesOf<unsigned char>(forward(image))));
    const auto wide = randomImage<unsigned short>(5, 30, 2);
    EXPECT_TRUE(support::sameImage(wide, magnitudesOf<unsigned short>(forward(wide))));
}

TEST(ReferenceTransforms, PutAnImageWithAnOffsetInTheCorner) {
    const auto image = randomImage<double>(3, 5, 1);
    const auto spectrum = forward(image);
    EXPECT_EQ(spectrum.plane.width, 4);
    EXPECT_EQ(spectrum.plane.height, 8);
    EXPECT_TRUE(support::samePlane(spectrum.plane, forward(at(image, -2, 70)).plane));
}

TEST(ReferenceTransforms, TakeTwoImagesAsComplexPels) {
    const auto re = randomImage<double>(6, 6, 1);
    const auto im = randomImage<double>(6, 6, 2);
    Output<double> real;
    Output<double> imaginary;
    realAndImaginaryImages(reference::spatial(forward(re, im)), real, imaginary);
    for (std::size_t i = 0; i < re.pels.size(); ++i) {
        EXPECT_NEAR(real->pels[i], re.pels[i], 1e-6);
        EXPECT_NEAR(imaginary->pels[i], im.pels[i], 1e-6);
    }
}

TEST(ReferenceMagnitudes, AreRoundedHalfUpAndHeldToThePelRange) {
    EXPECT_EQ(pelOf<unsigned char>(0.5F), 1);
    EXPECT_EQ(pelOf<unsigned char>(std::nextafter(0.5F, 0.0F)), 0);
    EXPECT_EQ(pelOf<unsigned char>(-3.4F), 3);
    EXPECT_EQ(pelOf<unsigned char>(300), 255);
    EXPECT_EQ(pelOf<unsigned short>(1e30F), 65535);
    EXPECT_EQ(pelOf<unsigned short>(NAN), 0);
    EXPECT_EQ(pelOf<double>(-2.25F), 2.25);
}

TEST(ReferenceMagnitudes, AreSpreadOverThePelRange) {
    reference::Spectrum space{.plane = reference::Plane(4, 1), .imageWidth = 3, .imageHeight = 1};
    for (const int x : {0, 1, 2, 3}) space.plane.at(x, 0).re = static_cast<float>(4 * x + 4);
    Output<unsigned char> out;
    reference::magnitudeImage(space, out, true);
    EXPECT_EQ(out->pels, (std::vector<unsigned char>{0, 128, 255}));
    EXPECT_EQ(pelOf<unsigned char>(17, true), 0);
}

TEST(ReferenceQuadrants, TellTheSigns) {
    reference::Spectrum space{.plane = reference::Plane(4, 1), .imageWidth = 4, .imageHeight = 1};
    space.plane.elements = {{1, -0.0F}, {-1, 0}, {0, -1}, {-1, -1}};
    Output<unsigned char> codes;
    quadrantImage(space, codes);
    EXPECT_EQ(codes->pels, (std::vector<unsigned char>{0, 1, 2, 3}));
    Output<double> angles;
    angleImage(space, angles);
    EXPECT_EQ(angles->pels[1], double{std::atan2(0.0F, -1.0F)});
}

}  // namespace
