// The transforms in higher precision, which judge the kernel's accuracy.
#include <gtest/gtest.h>

#include <numbers>

#include "reference/fft/dft.h"
#include "support/random_planes.h"

namespace {

using reference::definitionDFT2D;
using reference::fastDFT2D;

TEST(DefinitionDFT, TurnsACosineIntoTwoLines) {
    reference::Plane plane(8, 4);
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 8; ++x) {
            plane.at(x, y).re = static_cast<float>(std::cos(2 * std::numbers::pi * 3 * x / 8));
        }
    }
    const auto spectrum = definitionDFT2D(plane, 1);
    for (std::size_t i = 0; i < spectrum.size(); ++i) {
        EXPECT_NEAR(std::abs(spectrum[i]), i == 3 || i == 5 ? 16 : 0, 1e-5) << i;
    }
}

TEST(DefinitionDFT, HasANegativeExponentForward) {
    const auto plane = support::impulsePlane(4, 4, 1, 0, {1, 0});
    const auto forward = definitionDFT2D(plane, 1);
    const auto inverse = definitionDFT2D(plane, -1);
    EXPECT_NEAR(forward[1].imag(), -1, 1e-15);
    EXPECT_NEAR(inverse[1].imag(), 1, 1e-15);
}

TEST(FastDFT, AgreesWithTheDefinition) {
    for (const auto& [w, h] : support::paddedSizes(1024)) {
        const auto plane = support::randomPlane(w, h, 7);
        for (const int direction : {1, -1}) {
            const auto expected = definitionDFT2D(plane, direction);
            const auto actual = fastDFT2D(plane, direction);
            for (std::size_t i = 0; i < expected.size(); ++i) {
                ASSERT_LT(std::abs(actual[i] - expected[i]), 1e-12) << w << " x " << h;
            }
        }
    }
}

}  // namespace
