// How much memory the picture call takes beside its images.
#include <filt/freqfilt.h>

#include <gtest/gtest.h>

#include "support/allocation_meter.h"

namespace {

using Byte = unsigned char;
using Picture = mvPelBuffer<Byte>;

std::size_t bytesFor(const Picture& image, const mvFrequencyFilter& filter, Picture& out,
                     mvBorder border) {
    mvFilterImageOptions options;
    options.border = border;
    return archive::peakOf([&] { mfFilterImage(image, filter, out, options); });
}

std::size_t bytesFor(const Picture& image, mvPair<long> plane, Picture& out, mvBorder border) {
    return bytesFor(image, mvFrequencyFilterBandPass(0.1, 0.05, 0.2, plane, 1), out, border);
}

constexpr long kWidth = 4000, kHeight = 1000;
constexpr std::size_t kPels = kWidth * kHeight;

TEST(PictureMemory, HoldsTilesAndNoSecondImage) {
    const Picture image(kWidth, kHeight);
    Picture out(kWidth, kHeight);
    EXPECT_LT(bytesFor(image, {128, 128}, out, mvBorder::mirror), kPels / 4);
}

// As many of them wherever they stand.
TEST(PictureMemory, HoldsOnlyTheColumnsThatAFilterLeaves) {
    const mvPair<long> plane(1024, 1024);
    const Picture image(plane.x, plane.y);
    Picture out(plane.x, plane.y);
    const auto bytesAt = [&](double frequency) {
        const mvFrequencyFilterGabor lobe({0.01, 0.01}, {0, 0}, mvRadian(0), frequency, plane, 0);
        return bytesFor(image, lobe, out, mvBorder::zero);
    };
    EXPECT_LT(bytesAt(0.4), bytesAt(0.1) + kPels / 16);
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
