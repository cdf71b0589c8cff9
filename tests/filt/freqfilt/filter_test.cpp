// The filter base: its flag and its way into a buffer.
#include <memory>

#include "support/filter_cases.h"
#include "support/random_planes.h"
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
};

TEST(FilterBase, StartsWithoutItsFlag) {
    EXPECT_FALSE(PlainFilter().isInitialized());
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
    BufferProbe::maskFrequencyBuffer(buffer, true, -(1L << 40), 1L << 40);
    EXPECT_EQ(mvi::BufferAccess::maskedMiny(buffer), -(1L << 31));
    EXPECT_EQ(mvi::BufferAccess::maskedMaxy(buffer), (1L << 31) - 1);
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

}  // namespace
