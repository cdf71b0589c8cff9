// How much memory a transform takes beside its operands.
#include <filt/fft.h>
#include <filt/fft/internal/kernel/row_band.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>

#include "support/allocation_meter.h"
#include "support/buffer_probe.h"
#include "support/random_planes.h"

namespace {

using archive::peakOf;
using Byte = unsigned char;

// What the parts of a transform may take. A pass holds 16 lines of complex elements at once, twice
// those of rows; the rows are found through a table, with one row of zeros. Images have rows of
// whole blocks of 32 bytes.
class TransformMemory : public testing::TestWithParam<mvPair<long>> {
  protected:
    std::size_t lines() const { return bytes(128 * std::max(2 * kWidth + 65, kHeight)); }
    std::size_t table() const { return bytes(16 * kHeight + 8 * kWidth + 4096); }
    std::size_t plane() const { return bytes(8 * kWidth * kHeight); }
    std::size_t image(long bytesPerPel) const {
        return bytes((bytesPerPel * kWidth + 31) / 32 * 32 * kHeight);
    }

    // Rows apart from a plane, and 64 columns of all rows; both a little longer than they need be.
    std::size_t rowsAndColumns(long rows) const {
        return bytes((8 * kWidth + 64) * rows + (8 * std::min(64L, kWidth) + 64) * kHeight);
    }

    // Some rows in panels of whole vectors with a row of zeros, and strips of results.
    std::size_t panels(long rows) const {
        return bytes(8 * ((kWidth + 15) / 16 * 16) * (rows + 1) + 128 * kHeight);
    }

    void fill() {
        support::setPlane(
            buffer_, support::randomPlane(static_cast<int>(kWidth), static_cast<int>(kHeight), 1));
    }

    // The band from a row on, in shifted coordinates. Rows outside are zero.
    void fillBand(long from) {
        fill();
        const mvi::RowBand band(kHeight, from, from + kBandRows - 1);
        float* const floats = support::BufferProbe::getFrequencyBufferData(buffer_);
        for (long y = 0; y < kHeight; ++y) {
            if (!band.contains(y)) std::fill_n(floats + 2 * kWidth * y, 2 * kWidth, 0.0F);
        }
        support::BufferProbe::maskFrequencyBuffer(buffer_, true, from, from + kBandRows - 1);
    }

    // Of so many rows, and the images.
    void expectInversesToHold(long rows) {
        const std::size_t pass = lines() + table();
        EXPECT_LE(peakOf([&] { mfInverseFFT(kept_, re_, im_); }),
                  2 * image(8) + rowsAndColumns(rows) + pass);
        EXPECT_LE(peakOf([&] { mfInverseFFT(kept_, re_, false); }),
                  image(8) + rowsAndColumns(rows) + pass);
        EXPECT_LE(peakOf([&] { mfInverseFFTQuadrant(kept_, re_, quadrants_, false); }),
                  image(8) + image(1) + rowsAndColumns(rows) + pass);
        EXPECT_LE(peakOf([&] { mfInverseFFT(kept_, pels_, false); }),
                  image(1) + panels(rows) + pass);
    }

    static std::size_t bytes(long number) { return static_cast<std::size_t>(number); }

    const long kWidth = GetParam().x, kHeight = GetParam().y;
    static constexpr long kBandRows = 16;
    mvFrequencyBuffer buffer_{kWidth, kHeight}, other_{kWidth, kHeight};
    const mvFrequencyBuffer& kept_ = buffer_;
    mvPelBuffer<Byte> pels_{kWidth, kHeight}, quadrants_{kWidth, kHeight};
    mvPelBuffer<double> re_{kWidth, kHeight}, im_{kWidth, kHeight};
};

TEST_P(TransformMemory, OfForwardTransformsIsThatOfAFewLines) {
    EXPECT_LE(peakOf([&] { mfForwardFFT(pels_, buffer_); }), lines() + table());
    EXPECT_LE(peakOf([&] { mfForwardFFT(pels_, pels_, buffer_); }), lines() + table());
    EXPECT_LE(peakOf([&] { mfForwardFFT(kept_, other_); }), lines() + table());
    EXPECT_LE(peakOf([&] { mfForwardFFT(kept_, buffer_); }), lines() + table());
}

TEST_P(TransformMemory, OfAnInverseToABufferIsThatOfAFewLines) {
    fill();
    EXPECT_LE(peakOf([&] { mfInverseFFT(kept_, other_); }), lines() + table());
    EXPECT_LE(peakOf([&] { mfInverseFFT(buffer_, other_, true); }), lines() + table());
    EXPECT_LE(peakOf([&] { mfInverseFFT(buffer_, other_, true); }), table());
}

TEST_P(TransformMemory, OfAnInverseToImagesHoldsTheRowsAndAFewColumns) {
    fill();
    expectInversesToHold(kHeight);
}

TEST_P(TransformMemory, OfAnInverseToImagesHoldsOnlyTheRowsOfTheBand) {
    for (const long from : {kHeight / 2 - 8, 0L}) {
        fillBand(from);
        expectInversesToHold(kBandRows);
    }
}

TEST_P(TransformMemory, OfAnInverseWithMoreThanItsBandHoldsOnePlane) {
    fill();
    support::BufferProbe::maskFrequencyBuffer(buffer_, true, kHeight / 2 - 8, kHeight / 2 + 7);
    const std::size_t most = std::max(plane(), rowsAndColumns(kBandRows));
    EXPECT_LE(peakOf([&] { mfInverseFFT(kept_, re_, im_); }),
              2 * image(8) + most + lines() + table());
    EXPECT_LE(peakOf([&] { mfInverseFFT(kept_, pels_, false); }),
              image(1) + most + lines() + table());
}

TEST_P(TransformMemory, OfAnInverseThatNeedsItsPlaneTwiceHoldsOne) {
    fill();
    EXPECT_LE(peakOf([&] { mfInverseFFT(kept_, pels_, true); }),
              image(1) + plane() + lines() + table());
    EXPECT_LE(peakOf([&] { mfInverseFFTAngle(kept_, pels_, re_, false); }),
              image(1) + image(8) + plane() + lines() + table());
    EXPECT_LE(peakOf([&] { mfInverseFFTQuadrant(kept_, pels_, quadrants_, false); }),
              2 * image(1) + plane() + lines() + table());
}

TEST_P(TransformMemory, OfAnInverseInPlaceIsThatOfAFewLines) {
    fill();
    EXPECT_LE(peakOf([&] { mfInverseFFT(buffer_, re_, im_, true); }),
              2 * image(8) + lines() + table());
    EXPECT_LE(peakOf([&] { mfInverseFFT(buffer_, pels_, true, true); }), image(1) + table());
}

// Common allocators map larger blocks anew each time. A plane of 2048 x 2048 takes 32 MiB; its rows
// and two images of what stands in it, 50 together.
TEST(TransformBlocks, AreOfAtMost31MiBAndHoldNoMoreThanTheRows) {
    mvFrequencyBuffer buffer(1025, 1025);
    support::setPlane(buffer, support::randomPlane(2048, 2048, 1));
    const mvFrequencyBuffer& kept = buffer;
    mvPelBuffer<Byte> pels;
    mvPelBuffer<double> re, im;
    const archive::BlockLimit limit(std::size_t{31} << 20);
    EXPECT_NO_THROW(mfInverseFFT(kept, pels, false));
    std::size_t most = 0;
    EXPECT_NO_THROW(most = peakOf([&] { mfInverseFFT(kept, re, im); }));
    EXPECT_LT(most, std::size_t{60} << 20);
}

INSTANTIATE_TEST_SUITE_P(, TransformMemory,
                         testing::Values(mvPair<long>(512, 512), mvPair<long>(512, 256),
                                         mvPair<long>(128, 2048), mvPair<long>(2048, 16),
                                         mvPair<long>(16, 2048), mvPair<long>(32, 256)),
                         [](const auto& plane) {
                             return std::to_string(plane.param.x) + "x" +
                                    std::to_string(plane.param.y);
                         });

}  // namespace
