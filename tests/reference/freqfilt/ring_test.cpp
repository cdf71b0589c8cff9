// The reference's rings against values worked out by hand.
#include <gtest/gtest.h>

#include "reference/freqfilt/access.h"
#include "reference/freqfilt/ring.h"
#include "support/random_planes.h"

namespace {

using reference::Ring;
using reference::Spectrum;

Spectrum ones(int width, int height) {
    Spectrum spectrum;
    spectrum.plane = support::constantPlane(width, height, {1.0F, 1.0F});
    return spectrum;
}

TEST(ReferenceRing, SupportOfTheWorkedExample) {
    const Ring ring = reference::bandPass({0.05, 0.0, 0.2, 64, 64, 0});
    EXPECT_EQ(ring.supportWidth, 17);
    EXPECT_EQ(ring.entries(), 544);
    EXPECT_EQ(ring.profile.size(), 547U);
}

TEST(ReferenceRing, TwinsAddUpToOne) {
    const Ring pass = reference::bandPass({0.05, 0.02, 0.2, 64, 64, 0});
    const Ring reject = reference::bandReject({0.05, 0.02, 0.2, 64, 64, 0});
    for (std::size_t i = 0; i < 544; ++i) EXPECT_NEAR(pass.profile[i] + reject.profile[i], 1, 1e-7);
}

TEST(ReferenceRing, PassAndRejectAddUpToTheInput) {
    Spectrum pass = ones(32, 64);
    Spectrum reject = ones(32, 64);
    applyBandPass(reference::bandPass({0.03, 0.02, 0.2, 32, 64, 0}), pass);
    applyBandReject(reference::bandReject({0.03, 0.02, 0.2, 32, 64, 0}), reject);
    for (std::size_t i = 0; i < pass.plane.elements.size(); ++i) {
        ASSERT_NEAR(pass.plane.elements[i].re + reject.plane.elements[i].im, 1, 1e-6) << i;
    }
}

TEST(ReferenceRing, PeaksOnTheRing) {
    Spectrum spectrum = ones(64, 128);
    applyBandPass(reference::bandPass({0.01, 0.0, 0.25, 64, 128, 0}), spectrum);
    EXPECT_EQ(reference::centred(spectrum, 16, 0).re, 1.0F);
    EXPECT_EQ(reference::centred(spectrum, -16, 0).re, 1.0F);
    EXPECT_EQ(reference::centred(spectrum, 0, -32).im, 1.0F);
    EXPECT_EQ(reference::centred(spectrum, 0, 0).re, 0.0F);
}

TEST(ReferenceRing, TheSquareIsCentredOnDC) {
    Spectrum spectrum = ones(8, 8);
    applyBandPass(reference::bandPass({1.0, 0.0, 0.0, 8, 8, 2}), spectrum);
    EXPECT_EQ(reference::centred(spectrum, -1, 1).re, 0.0F);
    EXPECT_GT(reference::centred(spectrum, -2, 1).re, 0.0F);
    EXPECT_GT(reference::centred(spectrum, 2, 0).re, 0.0F);
}

TEST(ReferenceAccess, RefusesWhatLiesOutside) {
    Spectrum spectrum = ones(8, 1);
    EXPECT_NO_THROW(reference::centred(spectrum, -4, 0));
    EXPECT_THROW(reference::centred(spectrum, 4, 0), reference::OutOfBounds);
    EXPECT_THROW(reference::centred(spectrum, 0, -1), reference::OutOfBounds);
    spectrum.inverseComputed = true;
    EXPECT_THROW(reference::centred(spectrum, 4, 0), reference::AlreadyInverted);
}

}  // namespace
