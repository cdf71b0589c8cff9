// The reference's arithmetic against values worked out by hand.
#include <gtest/gtest.h>

#include <limits>

#include "reference/fft/arithmetic.h"
#include "support/random_planes.h"

namespace {

using reference::Complex;
using reference::Plane;

Plane one(float re, float im) {
    return support::constantPlane(1, 1, Complex{re, im});
}

void expectIs(const Plane& plane, float re, float im) {
    EXPECT_EQ(plane.elements[0].re, re);
    EXPECT_EQ(plane.elements[0].im, im);
}

TEST(ReferenceArithmetic, WorkedValues) {
    expectIs(reference::sum(one(1, 2), one(3, 5)), 4, 7);
    expectIs(reference::difference(one(1, 2), one(3, 5)), -2, -3);
    expectIs(reference::product(one(2, 3), one(5, -7)), 31, 1);
    expectIs(reference::conjugate(one(2, 3)), 2, -3);
}

TEST(ReferenceArithmetic, ProductDoesNotRepairInfinities) {
    const float infinity = std::numeric_limits<float>::infinity();
    const Plane plane = reference::product(one(infinity, infinity), one(1, 1));
    EXPECT_TRUE(plane.elements[0].re != plane.elements[0].re);
    EXPECT_EQ(plane.elements[0].im, infinity);
}

}  // namespace
