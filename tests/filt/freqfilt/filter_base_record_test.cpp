// The record of the filter base, and direct calls of the exchange.
#include "support/filter_classes.h"
#include "support/loading.h"

namespace {

struct PlainFilter : mvFrequencyFilter {
    PlainFilter* clone() const override { return new PlainFilter(*this); }
    void apply(const mvFrequencyBuffer&, mvFrequencyBuffer&) const override {}
    void apply(mvFrequencyBuffer&) const override {}
    void serialize(mvArchive& ar, unsigned char version) { serialize_(ar, version); }
};

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

TEST(GaborRecord, SerializeIsPublic) {
    mvFrequencyFilterGabor filter;
    std::ostringstream out;
    mvArchive ar(out);
    EXPECT_EQ(archive::loadingThrows([&] { filter.serialize_(ar, 1); }), archive::Gabor::kUnknown);
    filter.serialize_(ar, 0);
    EXPECT_EQ(out.str(), archive::stored(filter).substr(1));
}

}  // namespace
