// The record of the image filter.
#include "support/buffer_probe.h"
#include "support/filter_classes.h"
#include "support/loading.h"
#include "support/use.h"

namespace {

using archive::Record;

Record imageRecord() {
    return Record()
        .u8(0)
        .u8(0)
        .flag(true)
        .u8(1)
        .i32(2)
        .i32(1)
        .i32(2)
        .i32(1)
        .i32(0)
        .i32(0)
        .i32(0)
        .flag(false)
        .flag(true)
        .f64(1)
        .f64(0)
        .f64(0)
        .f64(1)
        .f64(0)
        .f64(0)
        .integerPair(0, 0)
        .flag(true)
        .floats({1.0F, 2.0F, 3.0F, 4.0F});
}

mvFrequencyFilterImage imageFilter() {
    mvFrequencyBuffer buffer(2, 1);
    buffer.put(0, 0, {1.0, 2.0}, false);
    buffer.put(1, 0, {3.0, 4.0}, false);
    support::BufferProbe::maskFrequencyBuffer(buffer, false, 0, 0);
    return mvFrequencyFilterImage(buffer);
}

TEST(ImageFilterRecord, HasTheseBytes) {
    mvFrequencyFilterImage filter = imageFilter();
    EXPECT_EQ(archive::hex(archive::stored(filter)), archive::hex(imageRecord().bytes()));
    mvFrequencyFilterImage again;
    archive::load(imageRecord().bytes(), again);
    EXPECT_TRUE(again == filter);
}

TEST(ImageFilterRecord, TheFlagCountsForEquality) {
    std::string bytes = imageRecord().bytes();
    bytes[2] = 0;
    mvFrequencyFilterImage filter;
    archive::load(bytes, filter);
    EXPECT_FALSE(filter.isInitialized());
    EXPECT_FALSE(filter == imageFilter());
    EXPECT_FALSE(imageFilter() == filter);
}

TEST(ImageFilterRecord, OfAnEmptyFilter) {
    mvFrequencyFilterImage filter;
    const std::string bytes = archive::stored(filter);
    EXPECT_EQ(archive::hex(bytes.substr(0, 4)), "00 00 00 01");
    mvFrequencyFilterImage again = imageFilter();
    archive::load(bytes, again);
    EXPECT_TRUE(again == filter);
    EXPECT_EQ(archive::stored(again), bytes);
}

TEST(ImageFilterRecord, UnknownVersionsNameTheirPlace) {
    mvFrequencyFilterImage filter = imageFilter();
    std::string bad = imageRecord().bytes();
    bad[0] = 1;
    EXPECT_EQ(archive::loadingThrows(bad, filter), archive::kUnknownImageFilter);
    bad[0] = 0;
    bad[1] = 1;
    EXPECT_EQ(archive::loadingThrows(bad, filter), archive::kUnknownBase);
    bad[1] = 0;
    bad[3] = 2;
    EXPECT_EQ(archive::loadingThrows(bad, filter), archive::kUnknownBuffer);
    EXPECT_TRUE(filter == imageFilter());
}

TEST(ImageFilterRecord, TakesAnOldBufferRecord) {
    std::string old = imageRecord().bytes();
    old[3] = 0;
    old.erase(3 + 1 + 28 + 1, 1);  // the flag of the transform
    mvFrequencyFilterImage filter;
    archive::load(old, filter);
    EXPECT_TRUE(filter == imageFilter());
    EXPECT_EQ(archive::stored(filter), imageRecord().bytes());
}

TEST(ImageFilterRecord, AFailedLoadLeavesAFilterThatCanBeUsed) {
    const std::string good = imageRecord().bytes();
    for (std::size_t length = 0; length < good.size(); ++length) {
        mvFrequencyFilterImage filter = imageFilter();
        EXPECT_EQ(archive::loadingThrows(good.substr(0, length), filter), "Truncated") << length;
        archive::use(filter);
        archive::load(good, filter);
        EXPECT_TRUE(filter == imageFilter());
    }
}

}  // namespace
