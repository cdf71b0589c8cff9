// Whether two images share pels, byte by byte.
#include <filt/freqfilt/internal/shared_pels.h>

#include <gtest/gtest.h>

#include <set>
#include <vector>

#include "support/random_planes.h"

namespace {

// Whether two sets of rows have a byte in common, byte by byte.
bool haveCommonByte(const mvi::PelBytes& a, const mvi::PelBytes& b) {
    std::set<const char*> bytes;
    for (long y = 0; y < a.rows; ++y) {
        for (long x = 0; x < a.rowBytes; ++x) {
            bytes.insert(static_cast<const char*>(a.first) + y * a.step + x);
        }
    }
    for (long y = 0; y < b.rows; ++y) {
        for (long x = 0; x < b.rowBytes; ++x) {
            if (bytes.contains(static_cast<const char*>(b.first) + y * b.step + x)) return true;
        }
    }
    return false;
}

TEST(SharedPels, AreFoundByteByByte) {
    const std::vector<char> memory(400);
    support::Random random(5);
    const auto below = [&](unsigned count) { return static_cast<long>(random.below(count)); };
    const auto someRows = [&] {
        const long rowBytes = 1 + below(9);
        return mvi::PelBytes{memory.data() + below(150), rowBytes, 1 + below(8),
                             rowBytes + below(12)};
    };
    int shared = 0;
    for (int i = 0; i < 20000; ++i) {
        const mvi::PelBytes a = someRows(), b = someRows();
        shared += haveCommonByte(a, b) ? 1 : 0;
        ASSERT_EQ(mvi::sharePels(a, b), haveCommonByte(a, b));
        ASSERT_EQ(mvi::sharePels(b, a), haveCommonByte(a, b));
    }
    EXPECT_GT(shared, 2000);
    EXPECT_LT(shared, 18000);
}

}  // namespace
