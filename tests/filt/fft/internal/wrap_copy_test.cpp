// The periodic placement of one image in another.
#include <filt/fft/internal/wrap_copy.h>

#include <gtest/gtest.h>

#include <vector>

#include "support/attention.h"
#include "support/pel_images.h"
#include "support/random_planes.h"

namespace {

using reference::Image;
using support::at;
using support::imageOf;
using support::pelBufferOf;
using support::randomImage;
using Pel = unsigned char;

Image<Pel> wrapped(const Image<Pel>& src, const Image<Pel>& dst, bool negate) {
    auto target = pelBufferOf(dst);
    mf_WrapCopy<Pel>(pelBufferOf(src), target, negate);
    return imageOf(target);
}

// The image moved by (x, y) on a torus.
Image<Pel> turned(const Image<Pel>& src, long x, long y) {
    Image<Pel> result(src.width, src.height);
    for (long row = 0; row < src.height; ++row) {
        for (long column = 0; column < src.width; ++column) {
            result.at((column + x) % src.width, (row + y) % src.height) = src.at(column, row);
        }
    }
    return result;
}

TEST(WrapCopy, BringsBackWhatLeavesOnOneSideOnTheOther) {
    const auto src = randomImage<Pel>(4, 3, 1);
    const Image<Pel> empty(4, 3);
    for (long x = 0; x < 4; ++x) {
        for (long y = 0; y < 3; ++y) {
            EXPECT_EQ(wrapped(at(src, x, y), empty, false).pels, turned(src, x, y).pels)
                << x << ", " << y;
            EXPECT_EQ(wrapped(at(src, -x, -y), empty, true).pels, turned(src, 4 - x, 3 - y).pels)
                << -x << ", " << -y;
        }
    }
}

TEST(WrapCopy, LooksInOneDirectionAlone) {
    const auto src = randomImage<Pel>(2, 1, 1);
    EXPECT_EQ(wrapped(at(src, -1, 0), Image<Pel>(2, 1, 9), false).pels,
              (std::vector<Pel>{src.at(1, 0), 9}));
    EXPECT_EQ(wrapped(at(src, 1, 0), Image<Pel>(2, 1, 9), true).pels,
              (std::vector<Pel>{9, src.at(0, 0)}));
}

TEST(WrapCopy, MovesByTheLargerOfBothSizes) {
    for (const bool negate : {false, true}) {
        for (const mvPair<long> size : {mvPair<long>(3, 5), {7, 2}, {4, 4}, {1, 1}}) {
            for (long x = -8; x <= 8; ++x) {
                for (const long y : {-6L, -1L, 0L, 2L, 5L}) {
                    const auto src = at(randomImage<Pel>(4, 3, 1), x, y);
                    const auto dst = at(Image<Pel>(size.x, size.y, 200), 1, -1);
                    Image<Pel> expected = dst;
                    reference::wrapCopy(src, expected, negate, [] {});
                    EXPECT_EQ(wrapped(src, dst, negate).pels, expected.pels)
                        << x << ", " << y << " into " << size.x << " x " << size.y;
                }
            }
        }
    }
}

TEST(WrapCopy, PollsOnceBeforeItCopies) {
    const auto src = pelBufferOf(randomImage<Pel>(4, 3, 1));
    auto dst = pelBufferOf(Image<Pel>(4, 3, 9));
    support::AttentionCounter counter(1);
    EXPECT_THROW(mf_WrapCopy<Pel>(src, dst, false), mvStatusException);
    EXPECT_EQ(counter.polls(), 1);
    EXPECT_EQ(imageOf(dst).pels, Image<Pel>(4, 3, 9).pels);
    mf_WrapCopy<Pel>(src, dst, false);
    EXPECT_EQ(counter.polls(), 2);
}

}  // namespace
