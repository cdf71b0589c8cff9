// What the filters' two forms of `apply` have in common.
#include <stdexcept>

#include "freqfilt/filter_cases.h"
#include "support/random_planes.h"
#include "support/spectra.h"

namespace {

using Size = mvPair<long>;

template <class Parameters>
reference::Spectrum spectrumFor(const Parameters& p) {
    return support::someSpectrum(
        support::randomPlane(static_cast<int>(p.width), static_cast<int>(p.height), 1));
}

template <class Case>
struct FilterApply : testing::Test {};
TYPED_TEST_SUITE(FilterApply, cases::AllFilters);

TYPED_TEST(FilterApply, TheDestinationKeepsItsOwnPlacement) {
    const auto p = TypeParam::parameters();
    const mvFrequencyBuffer src = support::bufferOf(spectrumFor(p));
    ASSERT_NE(mf_BufferAccess::imageWidth(src), p.width);
    mvFrequencyBuffer dst(3, 3);
    TypeParam::make(p).apply(src, dst);
    EXPECT_EQ(mf_BufferAccess::offset(dst), Size(0, 0));
    EXPECT_EQ(mf_BufferAccess::xform(dst).linearXform(), mv2XformLinear());
    EXPECT_EQ(mf_BufferAccess::imageWidth(dst), p.width);
    EXPECT_EQ(mf_BufferAccess::imageHeight(dst), p.height);
}

template <class Case>
struct ProtectionSquare : testing::Test {};
using RejectFilters = testing::Types<cases::BandReject, cases::GaborReject>;
TYPED_TEST_SUITE(ProtectionSquare, RejectFilters);

TYPED_TEST(ProtectionSquare, HugeRadiiFailQuickly) {
    for (const long radius : {100000L, 1L << 30, (1L << 31) - 1, 1L << 50}) {
        auto p = TypeParam::parameters();
        p.radius = radius;
        const auto filter = TypeParam::make(p);
        const reference::Spectrum before = spectrumFor(p);
        mvFrequencyBuffer buffer = support::bufferOf(before);
        try {
            EXPECT_EQ(support::thrownBy([&] { filter.apply(buffer); }), support::kOutOfBounds);
        } catch (const std::length_error&) {
            // The list's own refusal is as good.
        }
        EXPECT_TRUE(support::sameSpectrum(before, buffer)) << radius;
    }
}

}  // namespace
