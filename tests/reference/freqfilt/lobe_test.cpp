// The reference's lobes against values worked out by hand.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "reference/freqfilt/access.h"
#include "reference/freqfilt/lobe.h"
#include "support/random_planes.h"

namespace {

using reference::Lobe;
using reference::Spectrum;

TEST(ReferenceLobe, PlacementOfTheWorkedExample) {
    const Lobe lobe = reference::gabor({0.01, 0.01, 0, 0, 0, 0.25, 256, 256, 0});
    EXPECT_EQ(lobe.supportWidth, 33);
    EXPECT_EQ(lobe.supportHeight, 33);
    const reference::Placement patch = placement(lobe);
    EXPECT_EQ(patch.colMin, 176);
    EXPECT_EQ(patch.colMax, 208);
    EXPECT_EQ(patch.rowMin, 112);
    EXPECT_EQ(patch.rowMax, 144);
}

TEST(ReferenceLobe, IsAGaussianAlongAndAcross) {
    const Lobe lobe = reference::gabor({0.02, 0.01, 0, 0, std::numbers::pi / 2, 0.25, 256, 256, 0});
    const auto gain = [&](long column, long row) {
        const long centre =
            (lobe.supportHeight / 2 + row) * lobe.supportWidth + lobe.supportWidth / 2 + column;
        return lobe.response[static_cast<std::size_t>(centre)];
    };
    EXPECT_NEAR(gain(0, 0), 1.0, 1e-6);
    EXPECT_NEAR(gain(0, 5), std::exp(-25 / (2 * 5.12 * 5.12)), 1e-6);
    EXPECT_NEAR(gain(5, 0), std::exp(-25 / (2 * 2.56 * 2.56)), 1e-6);
}

TEST(ReferenceLobe, PassAndRejectAddUpToTheInputButForTheLastColumn) {
    Spectrum pass;
    pass.plane = support::constantPlane(64, 32, {1.0F, 0.0F});
    Spectrum reject = pass;
    const reference::LobeParameters given{0.03, 0.05, 0.01, 0.02, 2.0, 0.2, 64, 32, 0};
    applyGabor(reference::gabor(given), pass);
    applyGaborReject(reference::gaborReject(given), reject);
    for (std::size_t i = 0; i < pass.plane.elements.size(); ++i) {
        ASSERT_NEAR(pass.plane.elements[i].re + reject.plane.elements[i].re, 1, 1e-6) << i;
    }
    EXPECT_TRUE(pass.masked);
    EXPECT_FALSE(reject.masked);
}

}  // namespace
