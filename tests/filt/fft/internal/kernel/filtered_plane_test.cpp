// A picture filtered without a plane has the magnitudes that forward transform, filter and inverse
// transform of a whole plane give, bit by bit, on every path.
#include <filt/fft/internal/kernel.h>
#include <filt/fft/internal/kernel/filtered_plane.h>
#include <filt/fft/internal/kernel/spectrum_factors.h>
#include <filt/fft/internal/kernel/spectrum_gains.h>
#include <filt/fft/internal/kernel/spectrum_row_gains.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "support/kernel_paths.h"

namespace {

using mvi::kClearedGain;
using Size = mvPair<long>;

std::size_t index(long i) {
    return static_cast<std::size_t>(i);
}

// Gains of a whole plane, and the same as half a plane needs them.
template <class Half>
struct Gains {
    std::vector<float> plane;
    Half half;
};

float randomGain(std::mt19937& random, int cleared) {
    if (static_cast<int>(random() % 100) < cleared) return kClearedGain;
    return static_cast<float>(random() % 1000) / 700.0f;
}

std::vector<float> randomRow(std::mt19937& random, long columns, int cleared) {
    std::vector<float> row(index(columns));
    const int clearedHere = random() % 4 == 0 ? 100 : cleared;
    for (float& gain : row) gain = randomGain(random, clearedHere);
    return row;
}

// Gains of a filter that treats (u, v), (-u, v), (u, -v) and (-u, -v) alike, as rings do.
Gains<mvi::SpectrumGains> evenGains(Size size, long columns, int cleared, unsigned seed) {
    std::mt19937 random(seed);
    Gains<mvi::SpectrumGains> gains{std::vector<float>(index(size.x * size.y), kClearedGain),
                                    {size, columns}};
    for (long v = 0; v <= size.y / 2; ++v) {
        const std::vector<float> row = randomRow(random, columns, cleared);
        const long twin = (size.y - v) % size.y;
        for (long u = 0; u < columns; ++u) {
            for (const long y : {v, twin}) {
                gains.plane[index(y * size.x + u)] = row[index(u)];
                gains.plane[index(y * size.x + (size.x - u) % size.x)] = row[index(u)];
            }
        }
        gains.half.enter(v, twin, row);
    }
    gains.half.finish();
    return gains;
}

// Gains without any symmetry, as lobes have. Every other sixteen rows are alike.
Gains<mvi::SpectrumRowGains> anyGains(Size size, long columns, int cleared, unsigned seed) {
    std::mt19937 random(seed);
    Gains<mvi::SpectrumRowGains> gains{{}, {size, 0, columns}};
    std::vector<float> row;
    for (long y = 0; y < size.y; ++y) {
        if (y / 16 % 2 == 1 && !gains.half.isEmpty()) {
            const long latest = gains.half.rows().back();
            row.assign(gains.plane.begin() + size.x * latest,
                       gains.plane.begin() + size.x * (latest + 1));
            gains.half.repeat(y);
        } else {
            row = randomRow(random, size.x, cleared);
            for (long x = columns; x <= size.x - columns; ++x) row[index(x)] = kClearedGain;
            const bool isLeft = std::any_of(row.begin(), row.end(), [](float g) { return g == g; });
            if (isLeft) gains.half.enter(y, row);
        }
        gains.plane.insert(gains.plane.end(), row.begin(), row.end());
    }
    return gains;
}

template <class T>
std::vector<T> randomPels(long count, unsigned seed) {
    std::mt19937 random(seed);
    std::vector<T> pels(index(count));
    for (T& pel : pels) pel = static_cast<T>(random() >> 8);
    return pels;
}

// The magnitudes of a whole plane that is transformed, filtered and transformed back.
template <class T, class Filter>
std::vector<float> magnitudesOfPlane(const std::vector<T>& pels, Size image, Size size,
                                     Filter filter) {
    std::vector<float> plane(index(2 * size.x * size.y), 0.0f);
    for (long y = 0; y < image.y; ++y) {
        for (long x = 0; x < image.x; ++x) {
            plane[index(2 * size.x * y + x)] = static_cast<float>(pels[index(image.x * y + x)]);
        }
    }
    const int height = static_cast<int>(size.y);
    mf_RealFFT2D(plane.data(), size, 1, 0, height);
    filter(plane);
    mf_FFT2D(plane.data(), size, -1, 0, height);
    std::vector<float> magnitudes(plane.size() / 2);
    for (std::size_t i = 0; i < magnitudes.size(); ++i) {
        const float square = plane[2 * i] * plane[2 * i];
        const float other = plane[2 * i + 1] * plane[2 * i + 1];
        magnitudes[i] = std::sqrt(square + other);
    }
    return magnitudes;
}

bool isSameOrNan(float a, float b) {
    return std::memcmp(&a, &b, sizeof a) == 0 || (std::isnan(a) && std::isnan(b));
}

template <class T>
void expectBitsOf(const std::vector<float>& expected, const std::vector<T>& pels, Size image,
                  const mvi::SpectrumFilter& filter, mvPair<long> columns) {
    const Size size = filter.size();
    for (const mvi::KernelPath* path : support::supportedPaths()) {
        SCOPED_TRACE(std::string(path->name) + ' ' + std::to_string(image.x) + " x " +
                     std::to_string(image.y) + " in " + std::to_string(size.x) + " x " +
                     std::to_string(size.y));
        mvi::FilteredPlane plane(filter, *path);
        plane.forward<T>(image.y, image.x, [&](long y) { return pels.data() + image.x * y; });
        // Doubles are the magnitudes times a power of two.
        std::vector<double> result(expected.size(), -1.0);
        plane.inverse<double>({mvi::PlaneResult::magnitudes,
                               {columns.x, 0},
                               {columns.y, size.y},
                               result.data() + columns.x,
                               size.x});
        const double scale = mvi::inverseScale(size);
        for (std::size_t i = 0; i < expected.size(); ++i) {
            const long x = static_cast<long>(i) % size.x;
            const bool isAsked = x >= columns.x && x < columns.x + columns.y;
            const auto found = static_cast<float>(isAsked ? result[i] / scale : result[i]);
            ASSERT_TRUE(isSameOrNan(isAsked ? expected[i] : -1.0f, found)) << i;
        }
    }
}

template <class T, class Half>
void expectBitsOfThePlane(const std::vector<T>& pels, Size image, const Gains<Half>& gains,
                          mvPair<long> columns) {
    const auto expected =
        magnitudesOfPlane(pels, image, gains.half.size(), [&](std::vector<float>& plane) {
            for (std::size_t i = 0; i < gains.plane.size(); ++i) {
                const float gain = gains.plane[i];
                plane[2 * i] = std::isnan(gain) ? 0.0f : plane[2 * i] * gain;
                plane[2 * i + 1] = std::isnan(gain) ? 0.0f : plane[2 * i + 1] * gain;
            }
        });
    expectBitsOf(expected, pels, image, gains.half, columns);
}

// Complex factors without any symmetry.
std::vector<float> randomFactors(Size size, unsigned seed) {
    std::mt19937 random(seed);
    std::vector<float> factors(index(2 * size.x * size.y));
    for (float& part : factors) part = static_cast<float>(random() % 2001) / 700.0f - 1.4f;
    return factors;
}

template <class T>
void expectBitsOfTheProduct(const std::vector<T>& pels, Size image, Size size,
                            const std::vector<float>& factors) {
    const auto expected = magnitudesOfPlane(pels, image, size, [&](std::vector<float>& plane) {
        for (std::size_t i = 0; i < plane.size(); i += 2) {
            const float re = factors[i] * plane[i], im = factors[i] * plane[i + 1];
            const float crossRe = factors[i + 1] * plane[i + 1],
                        crossIm = factors[i + 1] * plane[i];
            plane[i] = re - crossRe;
            plane[i + 1] = im + crossIm;
        }
    });
    const mvi::SpectrumFactors filter(factors.data(), size);
    expectBitsOf(expected, pels, image, filter, {0, image.x});
}

const std::vector<Size> kSizes = {{4, 2},   {8, 8},   {16, 4},    {32, 32},  {64, 16},   {16, 128},
                                  {64, 64}, {128, 2}, {128, 256}, {512, 32}, {256, 256}, {4, 512}};

TEST(FilteredPlane, HasTheBitsOfTheTransformsWithEvenGains) {
    for (const Size& size : kSizes) {
        for (const int cleared : {0, 30, 95}) {
            const auto gains = evenGains(size, size.x / 2 + 1, cleared, 5);
            if (gains.half.isEmpty()) continue;
            const auto pels = randomPels<unsigned char>(size.x * size.y, 7);
            expectBitsOfThePlane(pels, size, gains, {0, size.x});
        }
    }
}

TEST(FilteredPlane, HasTheBitsOfTheTransformsWithGainsWithoutSymmetry) {
    for (const Size& size : kSizes) {
        if (size.x < 16) continue;
        for (const int cleared : {0, 30, 95}) {
            const auto gains = anyGains(size, size.x / 2 + 1, cleared, 11);
            if (gains.half.isEmpty()) continue;
            const auto pels = randomPels<unsigned short>(size.x * size.y, 13);
            expectBitsOfThePlane(pels, size, gains, {0, size.x});
        }
    }
}

TEST(FilteredPlane, HasTheBitsOfTheTransformsWithComplexFactors) {
    for (const Size& size : kSizes) {
        if (size.x < 16) continue;
        const auto factors = randomFactors(size, 47);
        for (const Size& image : {size, Size(size.x - 3, 1), Size(1, size.y)}) {
            expectBitsOfTheProduct(randomPels<unsigned char>(image.x * image.y, 53), image, size,
                                   factors);
        }
    }
}

TEST(FilteredPlane, TakesItsColumnsInSeveralBlocksWhereOneWouldBeTooLarge) {
    const Size size(2048, 2048), image(2047, 3);
    expectBitsOfTheProduct(randomPels<unsigned char>(image.x * image.y, 67), image, size,
                           randomFactors(size, 71));
}

TEST(FilteredPlane, MultipliesWhatIsInfiniteOrNoNumber) {
    auto factors = randomFactors({32, 32}, 59);
    auto pels = randomPels<double>(32 * 32, 61);
    pels[100] = std::numeric_limits<double>::infinity();
    expectBitsOfTheProduct(pels, {32, 32}, {32, 32}, factors);
    pels[100] = 0;
    factors[77] = std::numeric_limits<float>::infinity();
    factors[200] = std::numeric_limits<float>::quiet_NaN();
    expectBitsOfTheProduct(pels, {32, 32}, {32, 32}, factors);
}

TEST(FilteredPlane, ComputesOnlyTheColumnsThatAreAskedFor) {
    const auto gains = evenGains({64, 64}, 20, 20, 17);
    const auto pels = randomPels<unsigned char>(64 * 64, 19);
    for (const auto& columns : {mvPair<long>(0, 1), mvPair<long>(3, 17), mvPair<long>(63, 1)}) {
        expectBitsOfThePlane(pels, {64, 64}, gains, columns);
    }
}

TEST(FilteredPlane, TakesPelsThatAreNotThereAsZero) {
    const auto even = evenGains({64, 32}, 9, 20, 23);
    const auto any = anyGains({64, 32}, 9, 20, 23);
    for (const Size& image : {Size(1, 1), Size(63, 31), Size(33, 17), Size(64, 1), Size(1, 32)}) {
        const auto pels = randomPels<unsigned char>(image.x * image.y, 29);
        expectBitsOfThePlane(pels, image, even, {0, image.x});
        expectBitsOfThePlane(pels, image, any, {0, image.x});
    }
}

template <class Half>
void expectThatInfinityIsCleared(const Gains<Half>& gains) {
    auto pels = randomPels<double>(32 * 32, 37);
    expectBitsOfThePlane(pels, {32, 32}, gains, {0, 32});
    pels[100] = std::numeric_limits<double>::infinity();
    expectBitsOfThePlane(pels, {32, 32}, gains, {0, 32});
    pels[700] = std::numeric_limits<double>::quiet_NaN();
    expectBitsOfThePlane(pels, {32, 32}, gains, {0, 32});
}

TEST(FilteredPlane, ClearsWhatIsInfinite) {
    expectThatInfinityIsCleared(evenGains({32, 32}, 10, 40, 31));
    expectThatInfinityIsCleared(anyGains({32, 32}, 10, 40, 31));
}

TEST(FilteredPlane, GivesSquaresAsWell) {
    const auto gains = evenGains({64, 64}, 20, 20, 41);
    const auto pels = randomPels<unsigned char>(64 * 64, 43);
    for (const mvi::KernelPath* path : support::supportedPaths()) {
        mvi::FilteredPlane plane(gains.half, *path);
        plane.forward<unsigned char>(64, 64, [&](long y) { return pels.data() + 64 * y; });
        std::vector<double> magnitudes(64 * 64);
        std::vector<float> squares(64 * 64);
        plane.inverse<double>(
            {mvi::PlaneResult::magnitudes, {0, 0}, {64, 64}, magnitudes.data(), 64});
        plane.inverse<float>({mvi::PlaneResult::squares, {0, 0}, {64, 64}, squares.data(), 64});
        for (std::size_t i = 0; i < squares.size(); ++i) {
            ASSERT_EQ(64 * 64 * magnitudes[i], std::sqrt(squares[i])) << i;
        }
    }
}

}  // namespace
