// Results of an inverse that keeps no plane, beside those of the plane, on every path.
#include <filt/fft/internal/kernel/plane_results.h>
#include <filt/fft/internal/kernel/result_sink.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

#include "support/attention.h"
#include "support/kernel_paths.h"
#include "support/random_planes.h"

namespace {

using Size = mvPair<long>;

constexpr long kFrame = 3;

/// Results inside a frame that nothing may touch.
template <class P>
struct Results {
    explicit Results(Size size)
        : step(size.x + 2 * kFrame),
          values(static_cast<std::size_t>(step * (size.y + 2 * kFrame)), P(77)) {}

    mvi::PlaneOutput<P> output(Size from, Size size) {
        const auto result =
            std::is_same_v<P, float> ? mvi::PlaneResult::squares : mvi::PlaneResult::magnitudes;
        return {result, from, size, values.data() + kFrame * step + kFrame, step};
    }

    long step;
    std::vector<P> values;
    long polls = 0;
};

// Bit for bit, but for the squares that are NaNs: which NaN nobody sees.
template <class P>
bool isSame(P a, P b) {
    if (std::is_same_v<P, float> && a != a && b != b) return true;
    return std::memcmp(&a, &b, sizeof a) == 0;
}

struct Case {
    std::vector<float> plane;
    Size size;
    mvi::RowBand band;
    Size from, part;
};

template <class P>
Results<P> byResults(const Case& c, const mvi::KernelPath& path) {
    Results<P> results(c.part);
    const support::AttentionCounter counter;
    mvi::transformToResults(c.plane.data(), c.size, c.band, results.output(c.from, c.part), path);
    results.polls = counter.polls();
    return results;
}

template <class P>
Results<P> byThePlane(const Case& c, const mvi::KernelPath& path) {
    Results<P> results(c.part);
    const mvi::PlaneOutput<P> out = results.output(c.from, c.part);
    mvi::ResultSink<P> sink(out, mvi::inverseScale(c.size), path);
    const support::AttentionCounter counter;
    mvi::transformComplex(c.plane.data(), nullptr, c.size, mvi::Direction::inverse, c.band,
                          c.from.x + c.part.x, &sink, path);
    results.polls = counter.polls();
    return results;
}

template <class P>
void expectThoseOfThePlane(const Case& c) {
    for (const mvi::KernelPath* path : support::supportedPaths()) {
        SCOPED_TRACE(std::string(path->name) + ", " + std::to_string(c.size.x) + " x " +
                     std::to_string(c.size.y));
        const auto expected = byThePlane<P>(c, *path), found = byResults<P>(c, *path);
        ASSERT_EQ(expected.polls, found.polls);
        for (std::size_t i = 0; i < expected.values.size(); ++i) {
            ASSERT_TRUE(isSame(expected.values[i], found.values[i])) << i;
        }
    }
}

void expectAllThoseOfThePlane(const Case& c) {
    expectThoseOfThePlane<unsigned char>(c);
    expectThoseOfThePlane<unsigned short>(c);
    expectThoseOfThePlane<double>(c);
    expectThoseOfThePlane<float>(c);
}

std::vector<float> floatsOf(const reference::Plane& plane, float factor) {
    std::vector<float> floats;
    for (const auto& z : plane.elements) {
        floats.push_back(z.re * factor);
        floats.push_back(z.im * factor);
    }
    return floats;
}

std::vector<float> randomFloats(Size size, unsigned seed) {
    return floatsOf(support::randomPlane(static_cast<int>(size.x), static_cast<int>(size.y), seed),
                    9000);
}

void clearRow(std::vector<float>& plane, Size size, long y) {
    std::fill_n(plane.begin() + 2 * size.x * y, 2 * size.x, 0.0f);
}

template <class Visit>
void forSizes(Visit visit) {
    for (const long x : {1, 2, 4, 8, 16, 32, 128}) {
        for (const long y : {1, 2, 4, 16, 64, 256}) visit(Size(x, y));
    }
}

TEST(PlaneResults, AreThoseOfWholePlanes) {
    forSizes([](Size size) {
        expectAllThoseOfThePlane({randomFloats(size, 3), size, mvi::RowBand(size.y), {0, 0}, size});
    });
}

TEST(PlaneResults, AreThoseOfPlanesWithEmptyRows) {
    forSizes([](Size size) {
        auto plane = randomFloats(size, 5);
        for (long y = 0; y < size.y; ++y) {
            if (y % 5 != 1) clearRow(plane, size, y);
        }
        expectAllThoseOfThePlane({plane, size, mvi::RowBand(size.y), {0, 0}, size});
    });
}

TEST(PlaneResults, OfAnEmptyPlaneAreZeros) {
    forSizes([](Size size) {
        const std::vector<float> plane(static_cast<std::size_t>(2 * size.x * size.y));
        expectAllThoseOfThePlane({plane, size, mvi::RowBand(size.y), {0, 0}, size});
    });
}

TEST(PlaneResults, AreThoseOfBandsWhateverStandsOutside) {
    forSizes([](Size size) {
        const mvi::RowBand band(size.y, size.y / 4, size.y / 2);
        auto plane = randomFloats(size, 7);
        expectAllThoseOfThePlane({plane, size, band, {0, 0}, size});
        for (long y = 0; y < size.y; ++y) {
            if (!band.contains(y)) clearRow(plane, size, y);
        }
        expectAllThoseOfThePlane({plane, size, band, {0, 0}, size});
    });
}

// On a plane of 4 x 4 the one tile may stay where it is although rows of the band are in it.
TEST(PlaneResults, AreThoseOfEveryBandOfSmallPlanes) {
    for (const Size size : {Size(1, 4), Size(4, 4), Size(4, 8), Size(8, 8), Size(16, 16)}) {
        for (long low = -2; low <= size.y; ++low) {
            for (long high = low; high <= size.y; ++high) {
                const mvi::RowBand band(size.y, low, high);
                for (const bool isInside : {false, true}) {
                    auto plane = randomFloats(size, 11);
                    for (long y = 0; y < size.y; ++y) {
                        if (band.contains(y) != isInside) clearRow(plane, size, y);
                    }
                    expectAllThoseOfThePlane({plane, size, band, {0, 0}, size});
                }
            }
        }
    }
}

TEST(PlaneResults, AreThoseOfAnyPartOfThePlane) {
    const Size size(64, 32);
    const auto plane = randomFloats(size, 9);
    for (const Size from : {Size(0, 0), Size(1, 0), Size(17, 5), Size(48, 31)}) {
        for (const long width : {1, 15, 16}) {
            expectAllThoseOfThePlane(
                {plane, size, mvi::RowBand(size.y), from, {width, size.y - from.y}});
        }
    }
}

TEST(PlaneResults, AreThoseOfValuesThatAreNotFinite) {
    const Size size(32, 32);
    for (unsigned seed = 0; seed < 8; ++seed) {
        auto plane = floatsOf(support::specialPlane(32, 32, seed, true), 1);
        for (long y = 0; y < size.y; ++y) {
            if (y % 8 != static_cast<long>(seed)) clearRow(plane, size, y);
        }
        expectAllThoseOfThePlane({plane, size, mvi::RowBand(size.y), {0, 0}, size});
    }
}

}  // namespace
