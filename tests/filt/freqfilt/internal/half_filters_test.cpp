// What filters do to half a plane gives the magnitudes of forward transform, filter and inverse
// transform, bit by bit, on every path.
#include <filt/fft/internal/kernel/filtered_plane.h>
#include <filt/fft/internal/spatial_plane.h>
#include <filt/freqfilt.h>
#include <filt/freqfilt/internal/half_filters.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <vector>

#include "support/filter_records.h"
#include "support/kernel_paths.h"
#include "support/loading.h"
#include "support/three_calls.h"

namespace {

using Size = mvPair<long>;

mvPelBuffer<unsigned char> somePicture(Size size) {
    mvPelBuffer<unsigned char> picture(size.x, size.y);
    unsigned state = 17;
    for (long y = 0; y < size.y; ++y) {
        for (long x = 0; x < size.x; ++x) {
            state = state * 1664525U + 1013904223U;
            picture.pointToRow(y)[x] = static_cast<unsigned char>(state >> 24);
        }
    }
    return picture;
}

mvPelBuffer<double> byHalfAPlane(const mvPelBuffer<unsigned char>& picture,
                                 const mvi::SpectrumFilter& half, const mvi::KernelPath& path) {
    const Size size(picture.width(), picture.height());
    mvi::FilteredPlane plane(half, path);
    plane.forward<unsigned char>(size.y, size.x, [&](long y) { return picture.pointToRow(y); });
    mvPelBuffer<double> result(size.x, size.y);
    plane.inverse<double>({mvi::PlaneResult::magnitudes,
                           {0, 0},
                           {size.x, size.y},
                           result.pointToOffset(),
                           result.rowUpdate()});
    return result;
}

bool areTheSame(const mvPelBuffer<double>& a, const mvPelBuffer<double>& b) {
    for (long y = 0; y < a.height(); ++y) {
        const auto bytes = static_cast<std::size_t>(a.width()) * sizeof(double);
        if (std::memcmp(a.pointToRow(y), b.pointToRow(y), bytes) != 0) return false;
    }
    return true;
}

// Returns whether the filter leaves anything that half a plane can show.
bool expectTheBitsOfThreeCalls(Size size, const mvFrequencyFilter& filter) {
    const auto half = mvi::halfFilterOf(filter, false);
    if (half == nullptr) return false;
    EXPECT_LE(half->end(), size.x / 2 + 1);
    EXPECT_LT(half->rows().back(), size.y);
    const auto picture = somePicture(size);
    const auto expected = support::byThreeCalls<double>(picture, filter);
    for (const mvi::KernelPath* path : support::supportedPaths()) {
        EXPECT_TRUE(areTheSame(expected, byHalfAPlane(picture, *half, *path))) << path->name;
    }
    return true;
}

constexpr double kFrequencies[] = {0.0, 0.03, 0.21, 0.4, 0.5};
const std::vector<Size> kPlanes = {{16, 2}, {16, 64}, {32, 32}, {128, 16}, {64, 128}};

// Lobes on, beside and across the edges of the plane.
template <class Filter>
void expectItOfLobes() {
    int shown = 0;
    for (const Size& size : kPlanes) {
        for (const double frequency : kFrequencies) {
            for (int eighth = 0; eighth < 16; eighth += 3) {
                for (const long dcRadius : {0L, 1L, std::min(size.x, size.y) / 2}) {
                    const mvLobeParameters lobe{.sigma = {0.02, 0.05},
                                                .plateau = {0.01, 0.0},
                                                .angle = mvRadian(eighth * 0.3927),
                                                .frequency = frequency,
                                                .size = size,
                                                .dcRadius = dcRadius};
                    SCOPED_TRACE(testing::Message()
                                 << size.x << " x " << size.y << ", " << frequency << ", " << eighth
                                 << " eighths, " << dcRadius);
                    shown += expectTheBitsOfThreeCalls(size, Filter(lobe)) ? 1 : 0;
                }
            }
        }
    }
    EXPECT_GT(shown, 300);
}

TEST(HalfFilters, OfGaborsHaveTheBitsOfThreeCalls) {
    expectItOfLobes<mvFrequencyFilterGabor>();
}

TEST(HalfFilters, OfGaborRejectsHaveTheBitsOfThreeCalls) {
    expectItOfLobes<mvFrequencyFilterGaborReject>();
}

// What a filter leaves: of 0 to W/2 the first column, there or opposite, and the end; all rows.
struct Left {
    Size columns;
    std::vector<std::int32_t> rows;
};

Left leftBy(Size size, const mvFrequencyFilter& filter) {
    mvFrequencyBuffer ones(size.x, size.y);
    const auto visit = [&](auto element) {
        for (long v = 0; v < size.y; ++v) {
            for (long u = -size.x / 2; u < size.x / 2; ++u) {
                element(u, v < size.y / 2 ? v : v - size.y);
            }
        }
    };
    visit([&](long u, long v) { ones.put(u, v, {1.0, 0.0}, true); });
    filter.apply(ones);
    Left left{Size(size.x, 0), {}};
    visit([&](long u, long v) {
        if (ones.get(u, v, true).x == 0.0) return;
        left.columns = {std::min(left.columns.x, std::abs(u)),
                        std::max(left.columns.y, std::abs(u) + 1)};
        const auto row = static_cast<std::int32_t>(v < 0 ? v + size.y : v);
        if (left.rows.empty() || left.rows.back() != row) left.rows.push_back(row);
    });
    return left;
}

// In steps of one column of a plane of 32, so that lobes begin and end on each side of DC.
TEST(HalfFilters, OfGaborsHoldTheColumnsAndRowsOfTheLobeAlone) {
    for (const Size& size : kPlanes) {
        if (size.y == 2) continue;  // Too few rows for the lobe to reach all of its columns.
        for (int step = 0; step <= 16; ++step) {
            for (int eighth = 0; eighth < 16; ++eighth) {
                const mvFrequencyFilterGabor lobe({0.02, 0.05}, {0.01, 0.0},
                                                  mvRadian(eighth * 0.3927), step / 32.0, size, 0);
                SCOPED_TRACE(testing::Message() << size.x << " x " << size.y << ", step " << step
                                                << ", " << eighth << " eighths");
                const auto half = mvi::halfFilterOf(lobe, false);
                ASSERT_NE(nullptr, half);
                const Left left = leftBy(size, lobe);
                EXPECT_EQ(left.columns.x, half->begin());
                EXPECT_EQ(left.columns.y, half->end());
                EXPECT_EQ(left.rows, half->rows());
            }
        }
    }
}

template <class Filter>
void expectItOfRings() {
    int shown = 0;
    for (const Size& size : kPlanes) {
        for (const double frequency : kFrequencies) {
            for (const double sigma : {0.012, 0.1}) {
                for (const long dcRadius : {0L, 1L, std::min(size.x, size.y) / 2}) {
                    const mvRingParameters ring{.sigma = sigma,
                                                .plateau = 0.01,
                                                .frequency = frequency,
                                                .size = size,
                                                .dcRadius = dcRadius};
                    SCOPED_TRACE(testing::Message() << size.x << " x " << size.y << ", "
                                                    << frequency << ", " << sigma);
                    shown += expectTheBitsOfThreeCalls(size, Filter(ring)) ? 1 : 0;
                }
            }
        }
    }
    EXPECT_GT(shown, 100);
}

TEST(HalfFilters, OfBandPassesHaveTheBitsOfThreeCalls) {
    expectItOfRings<mvFrequencyFilterBandPass>();
}

TEST(HalfFilters, OfBandRejectsHaveTheBitsOfThreeCalls) {
    expectItOfRings<mvFrequencyFilterBandReject>();
}

TEST(HalfFilters, OfImagesHaveTheBitsOfThreeCalls) {
    for (const Size& size : kPlanes) {
        mvFrequencyBuffer spectrum;
        mfForwardFFT(somePicture(size), spectrum);
        EXPECT_TRUE(expectTheBitsOfThreeCalls(size, mvFrequencyFilterImage(spectrum)));
    }
}

TEST(HalfFilters, OfImagesAreNotForDoublesNorForWhatAnInverseHasOverwritten) {
    mvFrequencyBuffer spectrum;
    mfForwardFFT(somePicture({32, 32}), spectrum);
    EXPECT_EQ(nullptr, mvi::halfFilterOf(mvFrequencyFilterImage(spectrum), true));
    mvPelBuffer<unsigned char> spatial;
    mfInverseFFT(spectrum, spatial, false, true);
    EXPECT_EQ(nullptr, mvi::halfFilterOf(mvFrequencyFilterImage(spectrum), false));
}

// Only an archive can put a NaN into a profile.
TEST(HalfFilters, AreNotOfGainsThatAreNoNumbers) {
    archive::RingRecord fields;
    fields.width = fields.height = 16;
    const auto isThere = [&] {
        mvFrequencyFilterBandPass filter;
        archive::load(fields.record().bytes(), filter);
        return mvi::halfFilterOf(filter, false) != nullptr;
    };
    EXPECT_TRUE(isThere());
    fields.response[2] = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(isThere());
}

TEST(HalfFilters, AreOnlyOfTheFiveClassesThemselves) {
    class Derived : public mvFrequencyFilterBandPass {
      public:
        using mvFrequencyFilterBandPass::mvFrequencyFilterBandPass;
    };
    const mvRingParameters ring{.sigma = 0.02, .frequency = 0.1, .size = {32, 32}};
    EXPECT_NE(nullptr, mvi::halfFilterOf(mvFrequencyFilterBandPass(ring), false));
    EXPECT_EQ(nullptr, mvi::halfFilterOf(Derived(ring), false));
    const mvRingParameters small{.sigma = 0.02, .frequency = 0.1, .size = {8, 32}};
    EXPECT_EQ(nullptr, mvi::halfFilterOf(mvFrequencyFilterBandPass(small), false));
}

}  // namespace
