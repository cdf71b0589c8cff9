// Copying and filling pels, against a copy by hand.
#include <base/exception.h>
#include <base/pel_buffer.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <map>
#include <random>
#include <utility>
#include <vector>

namespace {

// Copies pel by pel through a map from image coordinates.
template <class T>
void copyByHand(const mvPelBuffer_const<T>& src, const mvPelBuffer<T>& dst) {
    std::map<std::pair<long, long>, T> pels;
    for (long y = 0; y < src.height(); ++y) {
        for (long x = 0; x < src.width(); ++x) {
            pels[{x + src.offset().x, y + src.offset().y}] = src.pel(x, y);
        }
    }
    for (long y = 0; y < dst.height(); ++y) {
        for (long x = 0; x < dst.width(); ++x) {
            const auto found = pels.find({x + dst.offset().x, y + dst.offset().y});
            if (found != pels.end()) dst.pointToRow(y)[x] = found->second;
        }
    }
}

template <class T>
struct PelCopy : testing::Test {
    std::mt19937 random{7};

    long pick(long low, long high) {
        return std::uniform_int_distribution<long>(low, high)(random);
    }

    std::vector<T> noise(std::size_t size) {
        std::vector<T> pels(size);
        for (T& pel : pels) pel = static_cast<T>(pick(0, 250));
        return pels;
    }

    // A random view of `memory` of a random row step, from a random place on.
    mvPelBuffer<T> randomView(std::vector<T>& memory) {
        const long rowUpdate = pick(1, 12), width = pick(1, rowUpdate), height = pick(1, 8);
        const long room = static_cast<long>(memory.size()) - (height - 1) * rowUpdate - width;
        mvPelBuffer<T> view(memory.data() + pick(0, room), width, height, rowUpdate);
        view.offset(pick(-4, 4), pick(-4, 4));
        return view;
    }
};

using Pels = testing::Types<unsigned char, unsigned short, float, double>;
TYPED_TEST_SUITE(PelCopy, Pels, );

TYPED_TEST(PelCopy, ClonesHavePelsOfTheirOwn) {
    std::vector<TypeParam> memory = this->noise(200);
    for (int round = 0; round < 50; ++round) {
        mvPelBuffer<TypeParam> view = this->randomView(memory);
        mv2XformCache identity;
        identity.setIdentity();
        view.copyXforms(identity);
        const mvPelBuffer<TypeParam> clone = mfPelClone(view);
        ASSERT_EQ(clone.width(), view.width());
        ASSERT_EQ(clone.height(), view.height());
        EXPECT_EQ(clone.offset(), view.offset());
        EXPECT_EQ(clone.xformCache(), identity);
        for (long y = 0; y < view.height(); ++y) {
            for (long x = 0; x < view.width(); ++x) {
                ASSERT_EQ(clone.pel(x, y), view.pel(x, y));
                clone.pointToRow(y)[x] = TypeParam{251};
                ASSERT_NE(view.pel(x, y), TypeParam{251});
            }
        }
    }
}

TYPED_TEST(PelCopy, ClonesOfAnUnboundBufferAreNotBound) {
    mvPelBuffer_const<TypeParam> unbound;
    unbound.offset(3, 4);
    const mvPelBuffer<TypeParam> clone = mfPelClone(unbound);
    EXPECT_FALSE(clone.isBound());
    EXPECT_EQ(clone.offset(), mvPair<long>(3, 4));
}

TYPED_TEST(PelCopy, CopiesWhereTheWindowsOverlap) {
    for (int round = 0; round < 500; ++round) {
        auto from = this->noise(120), to = this->noise(120);
        const mvPelBuffer<TypeParam> src = this->randomView(from);
        mvPelBuffer<TypeParam> dst = this->randomView(to);
        const auto untouched = to;
        copyByHand(src, dst);
        const auto expected = to;
        to = untouched;
        mfPelCopy(src, dst);
        ASSERT_EQ(to, expected) << round;
    }
}

TYPED_TEST(PelCopy, HandlesSharedMemoryAsIfThroughATemporary) {
    for (int round = 0; round < 2000; ++round) {
        auto memory = this->noise(120);
        const mvPelBuffer<TypeParam> src = this->randomView(memory);
        mvPelBuffer<TypeParam> dst = this->randomView(memory);
        const auto before = memory;
        copyByHand(src, dst);
        const auto expected = memory;
        memory = before;
        mfPelCopy(src, dst);
        ASSERT_EQ(memory, expected) << round;
    }
}

TYPED_TEST(PelCopy, ShiftsAnImageWithinItselfInEveryDirection) {
    for (long dx = -3; dx <= 3; ++dx) {
        for (long dy = -3; dy <= 3; ++dy) {
            auto memory = this->noise(64);
            mvPelBuffer<TypeParam> image(memory.data(), 8, 8, 8);
            mvPelBuffer<TypeParam> moved(image);
            moved.offset(dx, dy);
            const auto before = memory;
            copyByHand(moved, image);
            const auto expected = memory;
            memory = before;
            mfPelCopy(moved, image);
            ASSERT_EQ(memory, expected) << dx << ' ' << dy;
        }
    }
}

TYPED_TEST(PelCopy, KeepsOffsetAndTransform) {
    mvPelBuffer<TypeParam> src(3, 3), dst(3, 3);
    mv2XformCache identity;
    identity.setIdentity();
    src.copyXforms(identity);
    dst.offset(1, 1);
    mfPelCopy(src, dst);
    EXPECT_EQ(dst.offset(), mvPair<long>(1, 1));
    EXPECT_FALSE(dst.xformCache().isSet());
}

TYPED_TEST(PelCopy, CopiesNothingBetweenWindowsThatDoNotMeet) {
    const std::pair<mvPair<long>, mvPair<long>> places[] = {
        {{0, 0}, {2, 0}},
        {{0, 0}, {0, 2}},
        {{-2, 0}, {0, 0}},
        {{INT32_MAX, INT32_MAX}, {INT32_MIN, INT32_MIN}},
        {{INT32_MIN, 0}, {INT32_MAX, 0}}};
    for (const auto& [from, to] : places) {
        mvPelBuffer<TypeParam> src(2, 2), dst(2, 2);
        mfPelSet(src, TypeParam{1});
        src.offset(from);
        dst.offset(to);
        mfPelCopy(src, dst);
        for (int i = 0; i < 4; ++i) EXPECT_EQ(dst.pel(i % 2, i / 2), TypeParam{0});
    }
}

TYPED_TEST(PelCopy, MeetsAtTheEndsOfTheOffsets) {
    mvPelBuffer<TypeParam> src(2, 2), dst(2, 2);
    mfPelSet(src, TypeParam{1});
    src.offset(INT32_MAX - 1L, INT32_MAX);
    dst.offset(INT32_MAX, INT32_MAX);
    mfPelCopy(src, dst);
    EXPECT_EQ(dst.pel(0, 0), TypeParam{1});
    EXPECT_EQ(dst.pel(1, 0), TypeParam{0});
    EXPECT_EQ(dst.pel(0, 1), TypeParam{1});
}

TYPED_TEST(PelCopy, RefusesUnboundBuffers) {
    mvPelBuffer<TypeParam> bound(2, 2), unbound;
    const mvPelBuffer_const<TypeParam> none;
    EXPECT_THROW(mfPelCopy(none, bound), mvExceptionWithString);
    EXPECT_THROW(mfPelCopy(bound, unbound), mvExceptionWithString);
    EXPECT_THROW(mfPelCopy(none, unbound), mvExceptionWithString);
}

TYPED_TEST(PelCopy, TakesReadOnlySources) {
    const TypeParam pels[] = {1, 2, 3, 4};
    mvPelBuffer<TypeParam> dst(2, 2);
    mfPelCopy(mvPelBuffer_const<TypeParam>(pels, 2, 2, 2), dst);
    EXPECT_EQ(dst.pel(1, 1), TypeParam{4});
}

TYPED_TEST(PelCopy, FillsTheWindowAndNothingElse) {
    auto memory = this->noise(64);
    auto expected = memory;
    mvPelBuffer<TypeParam> whole(memory.data(), 8, 8, 8);
    auto window = whole.window(2, 3, 4, 2);
    mfPelSet(window, 251);
    for (std::size_t y = 3; y < 5; ++y) {
        for (std::size_t x = 2; x < 6; ++x) expected[8 * y + x] = TypeParam{251};
    }
    EXPECT_EQ(memory, expected);
    mvPelBuffer<TypeParam> unbound;
    EXPECT_THROW(mfPelSet(unbound, 1), mvExceptionWithString);
}

TEST(PelSet, HasAFormFor8BitPels) {
    mvPelBuffer<unsigned char> buffer(3, 2), unbound;
    mfPelSet_U8(buffer, 200);
    for (int i = 0; i < 6; ++i) EXPECT_EQ(buffer.pel(i % 3, i / 3), 200);
    EXPECT_THROW(mfPelSet_U8(unbound, 1), mvExceptionWithString);
}

TEST(ILimit, HoldsAValueToARange) {
    const int cases[][4] = {{5, 0, 10, 5},          {-1, 0, 10, 0},  {11, 0, 10, 10},
                            {0, 0, 10, 0},          {10, 0, 10, 10}, {INT_MIN, 0, 255, 0},
                            {INT_MAX, 0, 255, 255}, {7, 3, 3, 3}};
    for (const auto& c : cases) EXPECT_EQ(mfILimit(c[0], c[1], c[2]), c[3]);
}

}  // namespace
