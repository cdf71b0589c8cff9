// The floats of a record, made as long as they are needed.
#include <filt/fft/internal/archive_routines.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

TEST(LoadedFloats, EndWithZerosWhereTheyAreCutAndWhereTheyArePadded) {
    for (const std::size_t count : {2UL, 4UL, 40UL}) {
        mvi::LoadedFloats floats{mvFloatArray(count + 3), count};
        std::fill_n(floats.values.data(), count, 5.0F);
        mvi::padFloats(floats, 4, 3, 4);
        ASSERT_EQ(floats.values.size(), 7U);
        for (std::size_t i = 0; i < 7; ++i) {
            EXPECT_EQ(floats.values.data()[i], i < std::min<std::size_t>(count, 4) ? 5.0F : 0.0F)
                << i << " of " << count;
        }
    }
}

}  // namespace
