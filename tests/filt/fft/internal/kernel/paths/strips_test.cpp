// Results of columns, as many columns at a time as a path has lanes.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <numeric>
#include <vector>

#include "support/kernel_paths.h"

namespace {

using support::onEveryPath;

using Floats = std::vector<float>;

// The strip of a panel of one row of real elements, whose transform is that row.
template <class T>
std::vector<T> stripOf(const mvi::KernelPath& path, const Floats& elements, float scale) {
    Floats panel = elements;
    panel.resize(2 * elements.size());
    Floats scratch(mvi::panelScratchFloats(1, 1) + 16);
    std::vector<T> strip(elements.size());
    const std::int32_t first = 0;
    path.strips<T>().panelToStrip(panel.data(), &first, 1, scale, strip.data(), scratch.data());
    return strip;
}

Floats repeated(const Floats& values, long lanes) {
    Floats result;
    while (static_cast<long>(result.size()) < lanes) {
        result.insert(result.end(), values.begin(), values.end());
    }
    result.resize(static_cast<std::size_t>(lanes));
    return result;
}

// Rounding never falls while its argument rises, so that all floats are right when those next to
// each half are.
template <class T>
void expectHalvesRoundedUp() {
    onEveryPath([](const mvi::KernelPath& path) {
        for (int whole = 0; whole < std::numeric_limits<T>::max(); ++whole) {
            const float half = static_cast<float>(whole) + 0.5f;
            const auto strip =
                stripOf<T>(path, repeated({std::nextafter(half, 0.0f), half}, path.lanes), 1.0f);
            ASSERT_EQ(static_cast<T>(whole), strip[0]) << whole;
            if (path.lanes > 1) {
                ASSERT_EQ(static_cast<T>(whole + 1), strip[1]) << whole;
            }
        }
    });
}

TEST(Strips, TakeTheUpperPelFromEachHalfOn) {
    expectHalvesRoundedUp<unsigned char>();
    expectHalvesRoundedUp<unsigned short>();
}

TEST(Strips, ClampIntegersAndTakeANaNForZero) {
    const Floats elements = {std::numeric_limits<float>::quiet_NaN(), 0.0f, 65536.0f,
                             std::numeric_limits<float>::infinity()};
    onEveryPath([&](const mvi::KernelPath& path) {
        if (path.lanes < 4) return;
        const Floats lanes = repeated(elements, path.lanes);
        const auto bytes = stripOf<unsigned char>(path, lanes, 1.0f);
        const auto words = stripOf<unsigned short>(path, lanes, 1.0f);
        for (std::size_t i = 0; i < lanes.size(); ++i) {
            EXPECT_EQ(i % 4 < 2 ? 0 : 255, bytes[i]) << i;
            EXPECT_EQ(i % 4 < 2 ? 0 : 65535, words[i]) << i;
        }
    });
}

TEST(Strips, ScaleMagnitudesButNoSquares) {
    onEveryPath([](const mvi::KernelPath& path) {
        const Floats elements = repeated({-8.0f, 2.0f, 6.0f, -4.0f}, path.lanes);
        const auto bytes = stripOf<unsigned char>(path, elements, 0.25f);
        const auto words = stripOf<unsigned short>(path, elements, 0.25f);
        const auto doubles = stripOf<double>(path, elements, 0.25f);
        const auto squares = stripOf<float>(path, elements, 0.25f);
        for (std::size_t i = 0; i < elements.size(); ++i) {
            const float magnitude = std::abs(elements[i]) / 4;
            EXPECT_EQ(std::floor(magnitude + 0.5f), bytes[i]);
            EXPECT_EQ(std::floor(magnitude + 0.5f), words[i]);
            EXPECT_EQ(magnitude, doubles[i]);
            EXPECT_EQ(elements[i] * elements[i], squares[i]);
        }
    });
}

template <class T>
void expectJoined() {
    constexpr long kRows = 3;
    onEveryPath([](const mvi::KernelPath& path) {
        const long pitch = kRows * path.lanes + 5, step = 4 * path.lanes;
        std::vector<T> strips(static_cast<std::size_t>(4 * pitch));
        std::iota(strips.begin(), strips.end(), T(1));
        for (long count = 0; count <= 3 * path.lanes + 1; ++count) {
            std::vector<T> out(static_cast<std::size_t>(kRows * step));
            path.strips<T>().joinStrips(strips.data(), pitch, kRows, count, out.data(), step);
            for (long i = 0; i < kRows * step; ++i) {
                const long x = i % step, y = i / step;
                const long from = x / path.lanes * pitch + y * path.lanes + x % path.lanes;
                const T expected = x < count ? strips[static_cast<std::size_t>(from)] : T(0);
                ASSERT_EQ(expected, out[static_cast<std::size_t>(i)]) << count << ": " << i;
            }
        }
    });
}

TEST(Strips, StandSideBySideAndNothingBeyond) {
    expectJoined<unsigned char>();
    expectJoined<unsigned short>();
    expectJoined<double>();
    expectJoined<float>();
}

}  // namespace
