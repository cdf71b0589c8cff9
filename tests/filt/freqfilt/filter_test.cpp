// The filter base: its flag, its record and its way into a buffer.
#include <memory>

#include "support/filter_cases.h"
#include "support/filter_classes.h"
#include "support/loading.h"
#include "support/longs.h"
#include "support/random_planes.h"
#include "support/slots.h"
#include "support/spectra.h"

namespace {

using support::BufferProbe;

// The smallest filter there can be.
struct PlainFilter : mvFrequencyFilter {
    PlainFilter() = default;
    explicit PlainFilter(bool flag) { initialized_ = flag; }
    PlainFilter* clone() const override { return new PlainFilter(*this); }
    void apply(const mvFrequencyBuffer&, mvFrequencyBuffer&) const override {}
    void apply(mvFrequencyBuffer&) const override {}
    void serialize(mvArchive& ar, unsigned char version) { serialize_(ar, version); }
};

TEST(FilterBase, StartsWithoutItsFlag) {
    EXPECT_FALSE(PlainFilter().isInitialized());
}

TEST(FilterBase, HasAResponseWhenItsFlagSaysSo) {
    EXPECT_FALSE(PlainFilter(false).hasResponse());
    EXPECT_TRUE(PlainFilter(true).hasResponse());
}

TEST(FilterBase, CopyConstructionDoesNotCopyTheFlag) {
    const PlainFilter filter(true);
    EXPECT_FALSE(PlainFilter(filter).isInitialized());
}

TEST(FilterBase, AssignmentCopiesTheFlag) {
    PlainFilter filter;
    filter = PlainFilter(true);
    EXPECT_TRUE(filter.isInitialized());
    filter = PlainFilter(false);
    EXPECT_FALSE(filter.isInitialized());
}

TEST(FilterBase, IsPersistentThroughOneVirtualBase) {
    std::unique_ptr<mvFrequencyFilter> filter = std::make_unique<PlainFilter>();
    EXPECT_NE(dynamic_cast<mvPersistent*>(filter.get()), nullptr);
    EXPECT_NE(dynamic_cast<mvRepBase*>(filter.get()), nullptr);
}

// Opens what is protected.
template <class Filter>
struct Opened : Filter {
    using Filter::serialize_;
};

template <class Filter>
void expectTheOrderOfAllFilters() {
    using Between = void (Filter::*)(const mvFrequencyBuffer&, mvFrequencyBuffer&) const;
    using InPlace = void (Filter::*)(mvFrequencyBuffer&) const;
    EXPECT_EQ(support::slotOf(&Filter::clone), 2);
    EXPECT_EQ(support::slotOf(&Filter::isInitialized), 3);
    EXPECT_EQ(support::slotOf<Between>(&Filter::apply), 4);
    EXPECT_EQ(support::slotOf<InPlace>(&Filter::apply), 5);
    EXPECT_EQ(support::slotOf(&Opened<Filter>::serialize_), 6);
}

template <class Filter>
struct EveryFilter : testing::Test {};
using FilterClasses =
    testing::Types<mvFrequencyFilter, mvFrequencyFilterBandPass, mvFrequencyFilterBandReject,
                   mvFrequencyFilterGabor, mvFrequencyFilterGaborReject, mvFrequencyFilterImage>;
TYPED_TEST_SUITE(EveryFilter, FilterClasses, );

TYPED_TEST(EveryFilter, KeepsTheOrderOfItsVirtualFunctions) {
    expectTheOrderOfAllFilters<TypeParam>();
}

TEST(FilterBase, FindsThePlane) {
    mvFrequencyBuffer buffer(4, 2);
    float* data = BufferProbe::getFrequencyBufferData(buffer);
    ASSERT_NE(data, nullptr);
    data[2 * (1 * 4 + 3)] = 6.0F;
    data[2 * (1 * 4 + 3) + 1] = -7.0F;
    EXPECT_EQ(buffer.get(3, 1, false), mvPair(6.0, -7.0));
    const mvFrequencyBuffer& constant = buffer;
    EXPECT_EQ(BufferProbe::getFrequencyBufferData(constant), data);
}

TEST(FilterBase, FindsNoPlaneInABufferWithoutData) {
    mvFrequencyBuffer buffer;
    const mvFrequencyBuffer& constant = buffer;
    EXPECT_EQ(BufferProbe::getFrequencyBufferData(buffer), nullptr);
    EXPECT_EQ(BufferProbe::getFrequencyBufferData(constant), nullptr);
}

TEST(FilterBase, MasksABufferAndDoesNothingElse) {
    reference::Spectrum spectrum = support::someSpectrum(support::randomPlane(8, 4, 1));
    mvFrequencyBuffer buffer = support::bufferOf(spectrum);
    for (const auto& [masked, miny, maxy] :
         {std::tuple(true, -70L, 900L), std::tuple(false, 3L, 2L), std::tuple(false, 0L, 0L)}) {
        BufferProbe::maskFrequencyBuffer(buffer, masked, miny, maxy);
        spectrum.masked = masked;
        spectrum.maskedMiny = miny;
        spectrum.maskedMaxy = maxy;
        EXPECT_TRUE(support::sameSpectrum(spectrum, buffer));
        EXPECT_EQ(mvi::BufferAccess::masked(buffer), masked ? 1 : 0);
    }
}

TEST(FilterBase, MasksABufferWithoutData) {
    mvFrequencyBuffer buffer;
    BufferProbe::maskFrequencyBuffer(buffer, true, 1, 2);
    EXPECT_EQ(mvi::BufferAccess::masked(buffer), 1);
    EXPECT_EQ(mvi::BufferAccess::maskedMiny(buffer), 1);
    EXPECT_EQ(mvi::BufferAccess::maskedMaxy(buffer), 2);
}

TEST(FilterBase, HoldsRowsBeyond32BitsAtTheEnds) {
    mvFrequencyBuffer buffer(4, 4);
    BufferProbe::maskFrequencyBuffer(buffer, true, support::asLong(-(std::int64_t{1} << 40)),
                                     support::powerOfTwo(40));
    EXPECT_EQ(mvi::BufferAccess::maskedMiny(buffer), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(mvi::BufferAccess::maskedMaxy(buffer), std::numeric_limits<std::int32_t>::max());
}

TEST(FilterBase, SizesABuffer) {
    mvFrequencyBuffer buffer;
    BufferProbe::setAndAllocateFrequencyBuffer(buffer, 100, 3);
    EXPECT_EQ(buffer.width(), 128);
    EXPECT_EQ(buffer.height(), 4);
    EXPECT_EQ(
        support::thrownBy([&] { BufferProbe::setAndAllocateFrequencyBuffer(buffer, 2049, 1); }),
        support::kTooLarge);
    EXPECT_EQ(buffer.width(), 128);
}

TEST(FilterBaseRecord, IsAVersionAndTheFlag) {
    PlainFilter filter;
    EXPECT_EQ(archive::hex(archive::stored(filter)), "00 00");
    archive::load(std::string("\x00\x01", 2), filter);
    EXPECT_TRUE(filter.isInitialized());
    EXPECT_EQ(archive::hex(archive::stored(filter)), "00 01");
}

TEST(FilterBaseRecord, RefusesAnUnknownVersionBothWays) {
    PlainFilter filter;
    EXPECT_EQ(archive::loadingThrows(std::string("\x01\x01", 2), filter), archive::kUnknownBase);
    EXPECT_FALSE(filter.isInitialized());
    std::ostringstream out;
    mvArchive storing(out);
    EXPECT_EQ(archive::loadingThrows([&] { filter.serialize(storing, 1); }), archive::kUnknownBase);
    EXPECT_EQ(out.str(), "");
}

template <class Case>
struct FilterApply : testing::Test {};
TYPED_TEST_SUITE(FilterApply, cases::AllFilters);

TYPED_TEST(FilterApply, TheDestinationKeepsItsOwnPlacement) {
    const auto p = TypeParam::parameters();
    const mvFrequencyBuffer src = support::bufferOf(support::someSpectrum(
        support::randomPlane(static_cast<int>(p.width), static_cast<int>(p.height), 1)));
    ASSERT_NE(mvi::BufferAccess::imageWidth(src), p.width);
    mvFrequencyBuffer dst(3, 3);
    TypeParam::make(p).apply(src, dst);
    EXPECT_EQ(mvi::BufferAccess::offset(dst), mvPair<long>(0, 0));
    EXPECT_EQ(mvi::BufferAccess::xform(dst).linearXform(), mv2XformLinear());
    EXPECT_EQ(mvi::BufferAccess::imageWidth(dst), p.width);
    EXPECT_EQ(mvi::BufferAccess::imageHeight(dst), p.height);
}

}  // namespace
