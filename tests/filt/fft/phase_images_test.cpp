// Angle and quadrant images of any plane.
#include <filt/fft.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/buffer_probe.h"
#include "support/compare.h"
#include "support/pel_images.h"
#include "support/random_planes.h"
#include "support/thrown.h"

namespace {

using reference::Complex;
using reference::Image;
using reference::Output;
using support::at;
using support::imageOf;
using support::pelBufferOf;
using support::randomImage;
using support::spectrumOf;

mvFrequencyBuffer placedBuffer(long width, long height, long x, long y) {
    auto image = pelBufferOf(at(randomImage<double>(width, height, 1), x, y));
    image.copyXforms(support::someXformCache());
    mvFrequencyBuffer buffer;
    mfForwardFFT<double>(image, buffer);
    return buffer;
}

TEST(PhaseImages, DescribeSingleElements) {
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    const float pi = std::atan2(0.0F, -1.0F);
    const float half = std::atan2(1.0F, 0.0F);
    const struct {
        Complex z;
        double angle;
        int code;
    } cases[] = {{{-1, 0}, pi, 1},
                 {{0, -1}, -half, 2},
                 {{-1, -1}, std::atan2(-1.0F, -1.0F), 3},
                 {{0, 0}, 0, 0},
                 {{1, 1}, std::atan2(1.0F, 1.0F), 0},
                 {{-0.0F, -0.0F}, -pi, 0},
                 {{-0.0F, 0.0F}, pi, 0},
                 {{-1, -0.0F}, -pi, 1},
                 {{-INFINITY, 1}, pi, 1},
                 {{kNan, -1}, kNan, 2},
                 {{-1, kNan}, kNan, 1},
                 {{kNan, kNan}, kNan, 0}};
    for (const auto& c : cases) {
        const auto buffer = support::bufferOf(support::constantPlane(1, 1, c.z));
        mvPelBuffer<double> angle;
        mf_ComputeAngleImage(buffer, angle);
        const double actual = angle.pel(0, 0);
        EXPECT_TRUE(actual == c.angle || (std::isnan(actual) && std::isnan(c.angle)))
            << c.z.re << ", " << c.z.im << ": " << actual;
        mvPelBuffer<unsigned char> code;
        mf_ComputeQuadrantImage(buffer, code);
        EXPECT_EQ(code.pel(0, 0), c.code) << c.z.re << ", " << c.z.im;
    }
}

TEST(PhaseImages, CoverTheImageArea) {
    const auto buffer = placedBuffer(3, 5, 0, 0);
    mvPelBuffer<double> angle;
    mvPelBuffer<unsigned char> codes;
    mf_ComputeAngleImage(buffer, angle);
    mf_ComputeQuadrantImage(buffer, codes);
    EXPECT_EQ(angle.width(), 3);
    EXPECT_EQ(angle.height(), 5);
    EXPECT_EQ(codes.width(), 3);
    EXPECT_EQ(codes.height(), 5);
}

TEST(PhaseImages, LeaveWhatLiesBetweenTheirRowsZero) {
    const auto buffer = placedBuffer(3, 5, 0, 0);
    mvPelBuffer<double> angle;
    mvPelBuffer<unsigned char> codes;
    mf_ComputeAngleImage(buffer, angle);
    mf_ComputeQuadrantImage(buffer, codes);
    for (long y = 0; y < 5; ++y) {
        for (long x = 3; x < angle.rowUpdate(); ++x) EXPECT_EQ(angle.pointToRow(y)[x], 0.0);
        for (long x = 3; x < codes.rowUpdate(); ++x) EXPECT_EQ(codes.pointToRow(y)[x], 0);
    }
}

TEST(PhaseImages, HaveTheReferencesBitsAndPlacement) {
    const struct {
        long width, height, x, y;
    } cases[] = {{3, 5, 0, 0}, {3, 5, 1, -2}, {17, 6, -17, 0}, {8, 8, 3, 3}, {8, 8, -3, -3}};
    for (const auto& c : cases) {
        const auto buffer = placedBuffer(c.width, c.height, c.x, c.y);
        const auto spectrum = spectrumOf(buffer);
        for (const bool bound : {false, true}) {
            Output<double> expectedAngle;
            Output<unsigned char> expectedCodes;
            if (bound) {
                expectedAngle = at(Image<double>(c.width, c.height + 3, 9.0), c.x - 1, c.y + 1);
                expectedCodes = at(Image<unsigned char>(2, c.height, 9), c.x + 1, c.y);
            }
            auto angle = pelBufferOf(expectedAngle);
            auto codes = pelBufferOf(expectedCodes);
            reference::angleImage(spectrum, expectedAngle);
            reference::quadrantImage(spectrum, expectedCodes);
            mf_ComputeAngleImage(buffer, angle);
            mf_ComputeQuadrantImage(buffer, codes);
            EXPECT_TRUE(support::sameImage(*expectedAngle, imageOf(angle)));
            EXPECT_TRUE(support::sameImage(*expectedCodes, imageOf(codes)));
            const auto xform = bound ? mv2XformCache() : support::someXformCache();
            EXPECT_TRUE(angle.xformCache() == xform);
            EXPECT_TRUE(codes.xformCache() == xform);
        }
    }
}

TEST(PhaseImages, DescribeSpentBuffersToo) {
    auto buffer = placedBuffer(8, 4, 0, 0);
    mvPelBuffer<double> out;
    mfInverseFFT<double>(buffer, out, false, true);
    Output<double> expected;
    reference::angleImage(spectrumOf(buffer), expected);
    mvPelBuffer<double> angle;
    mf_ComputeAngleImage(buffer, angle);
    EXPECT_TRUE(support::sameImage(*expected, imageOf(angle)));
}

TEST(PhaseImages, OnlyReadTheBuffer) {
    const auto buffer = placedBuffer(8, 4, 1, 1);
    const auto before = buffer;
    mvPelBuffer<double> angle;
    mvPelBuffer<unsigned char> codes;
    mf_ComputeAngleImage(buffer, angle);
    mf_ComputeQuadrantImage(buffer, codes);
    EXPECT_TRUE(buffer == before);
}

TEST(PhaseImages, PollOnceAndOnceMoreForAnOffset) {
    mvPelBuffer<double> angle;
    mvPelBuffer<unsigned char> codes;
    const auto plain = placedBuffer(40, 40, 0, 0);
    const auto moved = placedBuffer(40, 40, 0, 1);
    EXPECT_EQ(support::pollsOf([&] { mf_ComputeAngleImage(plain, angle); }), 1);
    EXPECT_EQ(support::pollsOf([&] { mf_ComputeQuadrantImage(plain, codes); }), 1);
    EXPECT_EQ(support::pollsOf([&] { mf_ComputeAngleImage(moved, angle); }), 2);
    EXPECT_EQ(support::pollsOf([&] { mf_ComputeQuadrantImage(moved, codes); }), 2);
}

}  // namespace
