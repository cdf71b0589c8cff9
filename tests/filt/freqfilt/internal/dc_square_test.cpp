// Squares that leave the plane, in both forms of `apply`.
#include <stdexcept>

#include "support/filter_cases.h"
#include "support/longs.h"
#include "support/random_planes.h"
#include "support/spectra.h"

namespace {

template <class Parameters>
reference::Spectrum spectrumFor(const Parameters& p) {
    return support::someSpectrum(
        support::randomPlane(static_cast<int>(p.width), static_cast<int>(p.height), 1));
}

template <class Case>
struct ProtectionSquare : testing::Test {};
using RejectFilters = testing::Types<cases::BandReject, cases::GaborReject>;
TYPED_TEST_SUITE(ProtectionSquare, RejectFilters);

// What a filter with a protection square of that radius throws, in place and not.
template <class Case>
std::string thrownForRadius(long radius) {
    auto p = Case::parameters();
    p.radius = radius;
    const auto filter = Case::make(p);
    const reference::Spectrum before = spectrumFor(p);
    mvFrequencyBuffer buffer = support::bufferOf(before);
    const auto thrown = [](auto call) -> std::string {
        try {
            return support::thrownBy(call);
        } catch (const std::length_error& error) {
            return error.what();
        }
    };
    mvFrequencyBuffer dst;
    const std::string inPlace = thrown([&] { filter.apply(buffer); });
    EXPECT_EQ(thrown([&] { filter.apply(buffer, dst); }), inPlace);
    EXPECT_TRUE(support::sameSpectrum(before, buffer)) << radius;
    return inPlace;
}

// The longest list has (2^63 - 1) / 16 entries.
constexpr long kLargestListed = 759250124;

TYPED_TEST(ProtectionSquare, LargeRadiiLeaveThePlane) {
    for (const long radius : {100000L, 1L << 29, kLargestListed}) {
        EXPECT_EQ(thrownForRadius<TypeParam>(radius), support::kOutOfBounds);
    }
}

TEST(BandRejectSquare, RadiiThatNoListServesAreALengthError) {
    for (const long radius :
         {kLargestListed + 1, 1L << 30, support::asLong((std::int64_t{1} << 31) - 1),
          support::powerOfTwo(50)}) {
        EXPECT_EQ(thrownForRadius<cases::BandReject>(radius), "vector<T> too long");
    }
}

TEST(GaborRejectSquare, TakesALengthForAHintOnly) {
    for (const long radius :
         {kLargestListed + 1, 1L << 30, support::asLong((std::int64_t{1} << 31) - 1),
          support::powerOfTwo(50)}) {
        EXPECT_EQ(thrownForRadius<cases::GaborReject>(radius), support::kOutOfBounds);
    }
}

}  // namespace
