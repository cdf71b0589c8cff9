// The picture call against its definition, bit by bit.
#include <gtest/gtest.h>

#include <limits>
#include <tuple>
#include <type_traits>

#include "support/compare.h"
#include "support/picture_cases.h"
#include "support/picture_choice.h"
#include "support/random_planes.h"
#include "support/sanitizers.h"
#include "support/three_calls.h"

namespace {

using Byte = unsigned char;
using Word = unsigned short;
using cases::Kind;
using cases::PictureFilter;
using cases::someOptions;
using cases::somePicture;
using cases::someSide;
using cases::textOf;
using reference::Image;
using support::GuardedPels;
using support::Random;

template <class Types>
class FilterImage : public testing::Test {};

using TypePairs =
    testing::Types<std::pair<Byte, Byte>, std::pair<Byte, Word>, std::pair<Byte, double>,
                   std::pair<Word, Byte>, std::pair<Word, Word>, std::pair<Word, double>,
                   std::pair<double, Byte>, std::pair<double, Word>, std::pair<double, double>>;
TYPED_TEST_SUITE(FilterImage, TypePairs);

// The call with an unbound and with a bound output.
template <class U, class T>
void expectAsDefined(const Image<T>& image, const PictureFilter& filter,
                     const mvFilterImageOptions& options) {
    SCOPED_TRACE(testing::Message()
                 << image.width << " x " << image.height << " on (" << filter.plane.x << ", "
                 << filter.plane.y << "), " << textOf(options));
    const Image<U> expected = cases::expectedPicture<T, U>(image, filter, options);
    const auto pels = support::pelBufferOf(image);
    mvPelBuffer<U> fresh;
    mfFilterImage(pels, *filter.filter, fresh, options);
    ASSERT_TRUE(
        support::sameImage(support::at(expected, image.x, image.y), support::imageOf(fresh)));
    GuardedPels<U> bound(support::at(Image<U>(image.width, image.height), 3, -2));
    mfFilterImage(pels, *filter.filter, bound.buffer(), options);
    ASSERT_TRUE(support::sameImage(support::at(expected, 3, -2), support::imageOf(bound.buffer())));
    ASSERT_TRUE(bound.guardsAreIntact());
}

TYPED_TEST(FilterImage, GivesTheBitsOfTheThreeCalls) {
    using T = typename TypeParam::first_type;
    using U = typename TypeParam::second_type;
    Random random(7);
    const unsigned count = support::kSanitized ? 60 : 600;
    for (unsigned i = 0; i < count; ++i) {
        const Kind kind = cases::kKinds[i % cases::kKinds.size()];
        const mvPair<long> plane(1L << random.below(6), 1L << random.below(6));
        const PictureFilter filter = cases::makePictureFilter(kind, plane, i);
        const auto options = someOptions<U>(random, plane);
        const Image<T> image = somePicture<T>(someSide(random), someSide(random), i);
        SCOPED_TRACE(testing::Message() << "case " << i << ", " << kind);
        expectAsDefined<U>(i % 3 == 0 ? support::at(image, 5, -7) : image, filter, options);
        if (this->HasFatalFailure()) return;
    }
}

// Every size to 64 along one axis, on a plane that some of them fit and most do not.
TYPED_TEST(FilterImage, IsRightForEverySizeToSixtyFour) {
    using T = typename TypeParam::first_type;
    using U = typename TypeParam::second_type;
    const PictureFilter filter = cases::makePictureFilter(Kind::kBandPass, {16, 32}, 3);
    for (long side = 1; side <= 64; side += support::kSanitized ? 7 : 1) {
        for (const mvBorder border : {mvBorder::zero, mvBorder::mirror}) {
            for (const long margin : {-1L, 0L, 3L}) {
                const mvFilterImageOptions options{.border = border, .margin = {margin, 2}};
                expectAsDefined<U>(somePicture<T>(side, 65 - side, 1), filter, options);
                if (this->HasFatalFailure()) return;
            }
        }
    }
}

// Pictures of a pel or two, whose borders are made of nothing else.
TYPED_TEST(FilterImage, IsRightForTheSmallestPictures) {
    using T = typename TypeParam::first_type;
    using U = typename TypeParam::second_type;
    for (const long plane : {1L, 2L, 4L}) {
        const PictureFilter filter = cases::makePictureFilter(Kind::kBandPass, {plane, plane}, 3);
        for (long width = 1; width <= 4; ++width) {
            for (long height = 1; height <= 4; ++height) {
                const mvFilterImageOptions options{.border = mvBorder::mirror, .margin = {0, 0}};
                expectAsDefined<U>(somePicture<T>(width, height, 1), filter, options);
                if (this->HasFatalFailure()) return;
            }
        }
    }
}

// A view of memory that starts `at` pels behind the first one.
template <class U, class Memory>
mvPelBuffer<U> viewOf(const std::shared_ptr<Memory>& memory, std::size_t at, long width,
                      long height, long step) {
    return {reinterpret_cast<U*>(memory->data()) + at, width, height, step, memory};
}

// Input and output in one block of memory, from not shared at all to the very same pels.
TYPED_TEST(FilterImage, MaySharePelsInWholeOrInPart) {
    using T = typename TypeParam::first_type;
    using U = typename TypeParam::second_type;
    constexpr long kWidth = 21, kHeight = 13;
    Random random(11);
    for (unsigned i = 0; i < (support::kSanitized ? 40U : 400U); ++i) {
        const mvPair<long> plane(8L << random.below(3), 8L << random.below(3));
        const PictureFilter filter = cases::makePictureFilter(cases::kKinds[i % 6], plane, i);
        const auto options = someOptions<U>(random, plane);
        const auto memory = std::make_shared<std::vector<double>>(2000);
        const long steps[] = {kWidth, kWidth + 2, 2 * kWidth};
        const long stepIn = steps[random.below(3)], stepOut = steps[random.below(3)];
        const auto in = viewOf<T>(memory, random.below(60), kWidth, kHeight, stepIn);
        const Image<T> image = somePicture<T>(kWidth, kHeight, i);
        for (long y = 0; y < kHeight; ++y) {
            std::copy_n(&image.pels[static_cast<std::size_t>(kWidth * y)], kWidth,
                        in.pointToRow(y));
        }
        auto out = viewOf<U>(memory, random.below(60), kWidth, kHeight, stepOut);
        SCOPED_TRACE(testing::Message() << "case " << i << ", " << textOf(options));
        const Image<U> expected = cases::expectedPicture<T, U>(image, filter, options);
        mfFilterImage(in, *filter.filter, out, options);
        ASSERT_TRUE(support::sameImage(expected, support::imageOf(out)));
    }
}

TYPED_TEST(FilterImage, WorksInPlaceOnOneObject) {
    using T = typename TypeParam::first_type;
    if constexpr (std::is_same_v<T, typename TypeParam::second_type>) {
        for (const Kind kind : cases::kKinds) {
            const PictureFilter filter = cases::makePictureFilter(kind, {8, 16}, 4);
            const Image<T> image = support::at(somePicture<T>(30, 20, 5), -4, 9);
            mvPelBuffer<T> pels = support::pelBufferOf(image);
            mfFilterImage(pels, *filter.filter, pels);
            const Image<T> expected = cases::expectedPicture<T, T>(image, filter, {});
            EXPECT_TRUE(support::sameImage(support::at(expected, -4, 9), support::imageOf(pels)));
        }
    }
}

// The scan for the range starts at 1e20 in squared magnitudes, in the picture call as well.
TEST(FilterImageRange, StartsWhereThatOfTheInverseStarts) {
    const PictureFilter filter = cases::makePictureFilter(Kind::kBandReject, {64, 64}, 1);
    for (const double bright : {1e3, 1e7, 1e12}) {
        Image<double> image(60, 60, bright);
        image.at(3, 4) = 2 * bright;
        expectAsDefined<Word>(image, filter, {.border = mvBorder::zero, .rescale = true});
        expectAsDefined<Byte>(image, filter, {.border = mvBorder::mirror, .rescale = true});
    }
}

TEST(FilterImageRange, OfAConstantResultGivesZeros) {
    const mvFrequencyFilterBandPass filter(0.01, 0.0, 0.4, mvPair<long>(16, 16), 1);
    mvPelBuffer<Byte> image(40, 40), out;
    mfFilterImage(image, filter, out, {.rescale = true});
    EXPECT_TRUE(support::sameImage(Image<Byte>(40, 40), support::imageOf(out)));
}

// Infinities and NaNs spoil their own tiles alone.
TEST(FilterImageDoubles, OfAnyKindGiveTheBitsOfTheThreeCalls) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    for (const double special : {kInfinity, -kInfinity, kNaN, -0.0, 5e-324, 1e300, -1e300, 1e38}) {
        for (const Kind kind : cases::kKinds) {
            SCOPED_TRACE(testing::Message() << special << ", " << kind);
            const PictureFilter filter = cases::makePictureFilter(kind, {16, 8}, 2);
            Image<double> image = somePicture<double>(20, 11, 3);
            image.at(17, 9) = special;
            for (const mvBorder border : {mvBorder::zero, mvBorder::mirror}) {
                expectAsDefined<double>(image, filter, {.border = border});
                expectAsDefined<double>(
                    image, filter,
                    {.border = border, .result = mvFilterResult::real, .threads = 3});
                expectAsDefined<Byte>(image, filter, {.border = border, .rescale = true});
                expectAsDefined<Word>(image, filter, {.border = border, .margin = {0, 1}});
                if (testing::Test::HasFatalFailure()) return;
            }
        }
    }
}

// Goes back to pels in `apply`; the inverse of the three calls takes the plane as it is then.
class SpendingFilter : public cases::OwnFilter {
  public:
    using OwnFilter::apply;
    void apply(mvFrequencyBuffer& buf) const override {
        OwnFilter::apply(buf);
        mvPelBuffer<double> pels;
        mfInverseFFT(buf, pels, false, true);
    }
};

TEST(FilterImageOwn, GivesTheBitsOfTheThreeCallsBehindAFilterThatGoesBackToPels) {
    for (const mvPair<int> size : {mvPair(16, 8), mvPair(12, 7), mvPair(33, 50)}) {
        const auto picture = support::pelBufferOf(somePicture<Byte>(size.x, size.y, 1));
        EXPECT_TRUE(support::isFilteredAsByThreeCalls<Byte>(picture, SpendingFilter()));
        EXPECT_TRUE(support::isFilteredAsByThreeCalls<Word>(picture, SpendingFilter()));
        EXPECT_TRUE(support::isFilteredAsByThreeCalls<double>(picture, SpendingFilter()));
    }
}

TEST(FilterImageLarge, GivesTheBitsOfTheThreeCallsOnLargePlanes) {
    if (support::kSanitized) GTEST_SKIP() << "too slow with a sanitizer";
    const auto expectFor = [](Kind kind, mvPair<long> plane, mvPair<long> size, int threads) {
        const PictureFilter filter = cases::makePictureFilter(kind, plane, 1);
        const auto image = somePicture<Byte>(size.x, size.y, 1);
        expectAsDefined<Byte>(image, filter, {.threads = threads});
        expectAsDefined<Word>(image, filter, {.border = mvBorder::zero, .rescale = true});
    };
    expectFor(Kind::kBandPass, {1024, 512}, {1200, 450}, 2);
    expectFor(Kind::kGabor, {2048, 64}, {2048, 200}, 4);
    expectFor(Kind::kImage, {256, 256}, {700, 300}, 3);
    expectFor(Kind::kOwn, {}, {900, 700}, 2);
}

}  // namespace
