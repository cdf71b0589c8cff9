// How much memory the square around DC takes that a reject filter protects.
#include <filt/freqfilt.h>

#include <gtest/gtest.h>

#include "support/allocation_meter.h"

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

}  // namespace
