// How much memory the picture call takes beside its images.
#include <filt/freqfilt.h>

#include <gtest/gtest.h>

#include "support/allocation_meter.h"

namespace {

using Byte = unsigned char;
using Picture = mvPelBuffer<Byte>;

std::size_t bytesFor(const Picture& image, mvPair<long> plane, Picture& out, mvBorder border) {
    const mvFrequencyFilterBandPass ring(0.1, 0.05, 0.2, plane, 1);
    mvFilterImageOptions options;
    options.border = border;
    const archive::AllocationMeter meter;
    mfFilterImage(image, ring, out, options);
    return meter.peak();
}

constexpr long kWidth = 4000, kHeight = 1000;
constexpr std::size_t kPels = kWidth * kHeight;

TEST(PictureMemory, HoldsTilesAndNoSecondImage) {
    const Picture image(kWidth, kHeight);
    Picture out(kWidth, kHeight);
    EXPECT_LT(bytesFor(image, {128, 128}, out, mvBorder::mirror), kPels / 4);
}

TEST(PictureMemory, HoldsASecondImageForTilesOfSharedPels) {
    const Picture image(kWidth, kHeight);
    Picture out(image);
    const std::size_t bytes = bytesFor(image, {128, 128}, out, mvBorder::mirror);
    EXPECT_GE(bytes, kPels);
    EXPECT_LT(bytes, kPels + kPels / 4);
}

TEST(PictureMemory, HoldsNoSecondImageForOneTileOfSharedPels) {
    const Picture image(512, 512);
    Picture apart(512, 512), shared(image);
    const std::size_t bytes = bytesFor(image, {512, 512}, apart, mvBorder::zero);
    EXPECT_LT(bytesFor(image, {512, 512}, shared, mvBorder::zero), bytes + 512 * 512 / 2);
}

}  // namespace
