// The growable array of floats.
#include <filt/fft/float_array.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <new>

#include "support/sanitizers.h"

namespace {

TEST(FloatArray, StandsOnA64ByteBoundary) {
    for (const std::size_t size : {1UL, 15UL, 16UL, 1000UL}) {
        mvFloatArray array(size);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(array.data()) % 64, 0U) << size;
    }
}

TEST(FloatArray, GrowsByZerosAndKeepsWhatItHas) {
    mvFloatArray array(3);
    for (std::size_t i = 0; i < 3; ++i) array.data()[i] = 1.0F;
    array.resize(2);
    for (const std::size_t size : {3UL, 100UL}) {
        array.resize(size);
        EXPECT_EQ(array.size(), size);
        EXPECT_EQ(array.data()[1], 1.0F);
        for (std::size_t i = 2; i < size; ++i) EXPECT_EQ(array.data()[i], 0.0F) << i;
    }
}

TEST(FloatArray, GrowsBackInItsOwnMemory) {
    mvFloatArray array(100);
    const float* const first = array.data();
    array.resize(1);
    array.resize(100);
    EXPECT_EQ(array.data(), first);
}

TEST(FloatArray, RefusesWhatNoMemoryHoldsAndStaysAsItIs) {
    constexpr std::size_t kMost = std::numeric_limits<std::size_t>::max();
    mvFloatArray array(2);
    array.data()[1] = 5.0F;
    for (const std::size_t size : {kMost, kMost / 4, kMost / 4 - 63, kMost / 4 - 64}) {
        // What the allocator itself refuses ends a program under a sanitizer.
        if (support::kSanitized && size == kMost / 4 - 64) continue;
        EXPECT_THROW(array.resize(size), std::bad_alloc) << size;
        EXPECT_EQ(array.size(), 2U);
        EXPECT_EQ(array.data()[1], 5.0F);
    }
}

}  // namespace
