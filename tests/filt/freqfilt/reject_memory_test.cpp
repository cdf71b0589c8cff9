// How much memory reject filters take: for the square around DC that they protect, and for their
// gains of half a plane.
#include <filt/freqfilt.h>
#include <filt/freqfilt/internal/half_filters.h>

#include <gtest/gtest.h>

#include "support/allocation_meter.h"
#include "support/buffer_record.h"
#include "support/filter_records.h"
#include "support/loading.h"

namespace {

const mvPair<long> kSize(64, 64);

mvFrequencyFilterBandReject band(long radius) {
    return {0.1, 0.05, 0.2, kSize, radius};
}

mvFrequencyFilterGaborReject lobe(long radius) {
    return {{0.05, 0.05}, {0, 0}, mvRadian(0), 0.2, kSize, radius};
}

std::size_t bytesFor(const mvFrequencyFilter& filter) {
    mvFrequencyBuffer buffer(kSize.x, kSize.y);
    return archive::peakOf([&] { filter.apply(buffer); });
}

// Of radius r the square has sides of 2 r - 1.
template <class Filter>
void expectToHoldTheSquare(Filter withRadius) {
    const std::size_t none = bytesFor(withRadius(0));
    EXPECT_EQ(none + 1 * sizeof(mvPair<double>), bytesFor(withRadius(1)));
    EXPECT_EQ(none + 25 * sizeof(mvPair<double>), bytesFor(withRadius(3)));
    EXPECT_EQ(none + 441 * sizeof(mvPair<double>), bytesFor(withRadius(11)));
}

TEST(RejectMemory, HoldsTheProtectedSquareAndNoMore) {
    expectToHoldTheSquare(band);
    expectToHoldTheSquare(lobe);
}

// In the order of the columns, and by their distances from DC: 0 to 32.
TEST(RejectMemory, HoldsTheGainsOfOneRowOfABand) {
    EXPECT_EQ(sizeof(float) * (64 + 33), bytesFor(band(0)));
}

// Only an archive can say that a plane has rows and no columns.
TEST(RejectMemory, HoldsNothingForAPlaneWithoutElements) {
    archive::RingRecord fields;
    fields.width = 0;
    fields.radius = 0;
    mvFrequencyFilterBandReject filter;
    archive::load(fields.record().bytes(), filter);
    mvFrequencyBuffer buffer =
        support::loaded(support::BufferRecord{.width = 0, .height = fields.height});
    EXPECT_EQ(0U, archive::peakOf([&] { filter.apply(buffer); }));
}

// The lobe has 133 of the rows; all others, but those of the square, share one.
TEST(RejectMemory, HoldsOneRowOfGainsForAllThatTheLobeDoesNotReach) {
    const mvPair<long> size(1024, 1024);
    const mvFrequencyFilterGaborReject lobe({0.01, 0.01}, {0, 0}, mvRadian(0), 0.2, size, 3);
    const std::size_t plane = sizeof(float) * 1024 * 1024;
    EXPECT_LT(archive::peakOf([&] { mvi::halfFilterOf(lobe, false); }), plane / 2);
}

// Rows that lie opposite of each other have the same gains, and columns as well: a quarter of a
// plane, each row with room for a vector behind it.
TEST(RejectMemory, HoldsAQuarterOfAPlaneOfGainsForABand) {
    const mvFrequencyFilterBandReject band(0.1, 0.05, 0.2, mvPair<long>(1024, 1024), 3);
    const std::size_t quarter = sizeof(float) * (513 + 16) * 513;
    EXPECT_LT(archive::peakOf([&] { mvi::halfFilterOf(band, false); }), quarter + quarter / 16);
}

// Only an archive can say that a lobe has rows and no columns.
TEST(RejectMemory, HoldsOneRowOfGainsForALobeWithoutColumns) {
    archive::LobeRecord fields;
    fields.width = fields.height = 1024;
    fields.supportWidth = 0;
    fields.supportHeight = 1023;
    fields.response.clear();
    mvFrequencyFilterGaborReject lobe;
    archive::load(fields.record().bytes(), lobe);
    const std::size_t row = sizeof(float) * 1024;
    EXPECT_LT(archive::peakOf([&] { EXPECT_NE(nullptr, mvi::halfFilterOf(lobe, false)); }),
              20 * row);
}

// What a filter held before its gains were loaded away is not there beside the next ones.
TEST(RejectMemory, IsGivenBackByALoadWithoutGains) {
    archive::LobeRecord fields;
    fields.supportWidth = fields.supportHeight = 1024;
    const std::string large = fields.record().bytes();
    fields.hasResponse = false;
    fields.response.clear();
    const std::string none = fields.record().bytes();
    const std::size_t gains = sizeof(float) * 1024 * 1024;
    EXPECT_LT(archive::peakOf([&] {
                  mvFrequencyFilterGaborReject lobe;
                  for (const std::string& bytes : {large, none, large}) archive::load(bytes, lobe);
              }),
              gains + gains / 2);
}

}  // namespace
