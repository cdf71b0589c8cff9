// Every refusal of the buffer and the transforms by call, class and message, and their order.
#include <filt/fft.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "support/buffer_probe.h"
#include "support/compare.h"
#include "support/longs.h"
#include "support/pel_images.h"
#include "support/random_planes.h"
#include "support/thrown.h"

namespace {

using reference::Image;
using support::pelBufferOf;
using support::thrownBy;

constexpr const char* kPelBuffersDiffer =
    "InvalidSize: Real and Imaginary PelBuffers must have the same dimensions and offset.";
constexpr const char* kBuffersDiffer =
    "InvalidSize: Real and Imaginary buffers must have the same size and offset.";
constexpr const char* kCopiedWidthTooSmall = "InvalidSize: Copied width must be > 1";
constexpr const char* kCopiedHeightTooSmall = "InvalidSize: Copied height must be > 1";
constexpr const char* kCopiedWidthTooLarge =
    "InvalidSize: Copied width cannot be greater than source width";
constexpr const char* kCopiedHeightTooLarge =
    "InvalidSize: Copied height cannot be greater than source height";
constexpr const char* kUnsupportedWidth = "InvalidSize: Unsupported width";
constexpr const char* kUnsupportedHeight = "InvalidSize: Unsupported height";

struct Row {
    std::string call;
    std::string expected;
    std::function<void()> run;
};

void expectRows(const std::vector<Row>& rows) {
    for (const Row& row : rows) EXPECT_EQ(thrownBy(row.run), row.expected) << row.call;
}

template <class T>
mvPelBuffer<T> image(long width, long height, long x = 0, long y = 0) {
    return pelBufferOf(support::at(Image<T>(width, height, T{1}), x, y));
}

mvFrequencyBuffer spentBuffer() {
    mvFrequencyBuffer buffer(8, 8);
    mvPelBuffer<double> out;
    mfInverseFFT<double>(buffer, out, false, true);
    return buffer;
}

// All ten accesses to the elements of a buffer, at coordinates outside of it.
std::vector<Row> accessesOutside(mvFrequencyBuffer& b, const std::string& expected,
                                 const std::string& expectedOfImages) {
    return {{"get", expected, [&] { b.get(999, 0, false); }},
            {"getReal", expected, [&] { b.getReal(999, 0, true); }},
            {"getImaginary", expected, [&] { b.getImaginary(0, -999, true); }},
            {"put", expected,
             [&] {
                 b.put(999, 0, {1, 2}, false);
             }},
            {"putReal", expected, [&] { b.putReal(0, 999, 1, false); }},
            {"putImaginary", expected, [&] { b.putImaginary(0, 999, 1, true); }},
            {"getRealImage", expectedOfImages, [&] { b.getRealImage(true); }},
            {"getImaginaryImage", expectedOfImages, [&] { b.getImaginaryImage(false); }},
            {"getMagnitudeImage", expectedOfImages, [&] { b.getMagnitudeImage(true); }},
            {"getPhaseImage", expectedOfImages, [&] { b.getPhaseImage(false); }}};
}

TEST(Messages, OfElementAccess) {
    mvFrequencyBuffer empty;
    mvFrequencyBuffer spent = spentBuffer();
    mvFrequencyBuffer fresh(8, 8);
    expectRows(accessesOutside(empty, support::kNoData, support::kNoData));
    expectRows(accessesOutside(spent, support::kSpent, support::kSpent));
    expectRows(accessesOutside(fresh, support::kOutOfBounds, "nothing"));
    EXPECT_EQ(spent.width(), 8);
    EXPECT_EQ(spent.height(), 8);
}

TEST(Messages, OfAMissingPlaneComeBeforeThoseOfASpentOne) {
    mvFrequencyBuffer moved = spentBuffer();
    const mvFrequencyBuffer target = std::move(moved);
    EXPECT_EQ(thrownBy([&] { moved.get(0, 0, false); }), support::kNoData);
    EXPECT_EQ(thrownBy([&] { target.get(0, 0, false); }), support::kSpent);
}

TEST(Messages, OfTheReducedCopyInTheirOrder) {
    const mvFrequencyBuffer source(256, 128);
    const mvFrequencyBuffer empty;
    const long huge = support::asLong((std::int64_t{1} << 32) + 64);
    const struct {
        const mvFrequencyBuffer& source;
        long width, height;
        const char* expected;
    } cases[] = {
        {source, 1, 64, kCopiedWidthTooSmall},
        {source, 0, 64, kCopiedWidthTooSmall},
        {source, 1 - huge, 64, kCopiedWidthTooSmall},
        {source, 64, 1, kCopiedHeightTooSmall},
        {source, 64, -5, kCopiedHeightTooSmall},
        {empty, 64, 64, support::kNoData},
        {source, 512, 64, kCopiedWidthTooLarge},
        {source, huge, 64, kCopiedWidthTooLarge},
        {source, 64, 256, kCopiedHeightTooLarge},
        {source, 64, huge, kCopiedHeightTooLarge},
        {source, 96, 64, kUnsupportedWidth},
        {source, 64, 96, kUnsupportedHeight},
        {source, 64, 128, "nothing"},
        {source, 256, 2, "nothing"},
        // Each check before the next one.
        {source, 1, 1, kCopiedWidthTooSmall},
        {empty, 1, 64, kCopiedWidthTooSmall},
        {empty, 64, 1, kCopiedHeightTooSmall},
        {source, 512, 1, kCopiedHeightTooSmall},
        {empty, 4096, 96, support::kNoData},
        {source, 512, 256, kCopiedWidthTooLarge},
        {source, 300, 64, kCopiedWidthTooLarge},
        {source, 96, 256, kCopiedHeightTooLarge},
        {source, 64, 200, kCopiedHeightTooLarge},
        {source, 96, 96, kUnsupportedWidth},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(thrownBy([&] { mvFrequencyBuffer(c.source, c.width, c.height); }), c.expected)
            << c.width << " x " << c.height;
    }
}

TEST(Messages, OfTheComplexBufferInTheirOrder) {
    const mvPelBuffer<double> unbound;
    const auto a = image<double>(4, 4);
    const auto large = image<double>(2049, 1);
    const auto row = [](const char* call, const char* expected, const mvPelBuffer<double>& real,
                        const mvPelBuffer<double>& imaginary) {
        return Row{call, expected, [=] { mvFrequencyBuffer(real, imaginary); }};
    };
    expectRows({
        row("real unbound", support::kUnbound, unbound, a),
        row("imaginary unbound", support::kUnbound, a, unbound),
        row("both unbound", support::kUnbound, unbound, unbound),
        row("heights", kPelBuffersDiffer, a, image<double>(4, 5)),
        row("widths", kPelBuffersDiffer, a, image<double>(3, 4)),
        row("offsets in x", kPelBuffersDiffer, a, image<double>(4, 4, 1, 0)),
        row("offsets in y", kPelBuffersDiffer, a, image<double>(4, 4, 0, 1)),
        row("too large", support::kTooLarge, large, large),
        row("too large in y", support::kTooLarge, image<double>(1, 2049), image<double>(1, 2049)),
        row("unbound before sizes", support::kUnbound, large, unbound),
        row("differing before too large", kPelBuffersDiffer, large, a),
        row("good", "nothing", a, a),
    });
}

template <class T>
std::vector<Row> forwardRows(mvFrequencyBuffer& dst) {
    const mvPelBuffer<T> unbound;
    const auto a = image<T>(4, 4);
    const auto wide = image<T>(2049, 1);
    const auto tall = image<T>(1, 2049);
    const auto one = [&dst](const char* call, const char* expected, const mvPelBuffer<T>& src) {
        return Row{call, expected, [&dst, src] { mfForwardFFT<T>(src, dst); }};
    };
    const auto two = [&dst](const char* call, const char* expected, const mvPelBuffer<T>& real,
                            const mvPelBuffer<T>& imaginary) {
        return Row{call, expected,
                   [&dst, real, imaginary] { mfForwardFFT<T>(real, imaginary, dst); }};
    };
    return {
        one("unbound", support::kUnbound, unbound),
        one("too wide", support::kTooLarge, wide),
        one("too tall", support::kTooLarge, tall),
        one("too wide, with an offset", support::kTooLarge, image<T>(2049, 1, 3, 4)),
        two("real unbound", support::kUnbound, unbound, a),
        two("imaginary unbound", support::kUnbound, a, unbound),
        two("widths", kBuffersDiffer, a, image<T>(3, 4)),
        two("heights", kBuffersDiffer, a, image<T>(4, 5)),
        two("offsets in x", kBuffersDiffer, a, image<T>(4, 4, -1, 0)),
        two("offsets in y", kBuffersDiffer, a, image<T>(4, 4, 0, -1)),
        two("too wide", support::kTooLarge, wide, wide),
        two("unbound before sizes", support::kUnbound, wide, unbound),
        two("differing before too large", kBuffersDiffer, wide, tall),
    };
}

template <class T>
struct ForwardMessages : testing::Test {};
using PelTypes = testing::Types<unsigned char, unsigned short, double>;
TYPED_TEST_SUITE(ForwardMessages, PelTypes, );

TYPED_TEST(ForwardMessages, ComeInTheirOrderAndBeforeAnythingChanges) {
    mvFrequencyBuffer dst;
    mfForwardFFT<double>(image<double>(3, 5, 7, 8), dst);
    support::BufferProbe::maskFrequencyBuffer(dst, true, 1, 2);
    const mvFrequencyBuffer before = dst;
    const support::AttentionCounter polls;
    expectRows(forwardRows<TypeParam>(dst));
    EXPECT_TRUE(dst == before);
    EXPECT_EQ(polls.polls(), 0);
}

TEST(Messages, OfTheForwardTransformOfABuffer) {
    const mvFrequencyBuffer empty;
    mvFrequencyBuffer dst(4, 4);
    const mvFrequencyBuffer before = dst;
    EXPECT_EQ(thrownBy([&] { mfForwardFFT(empty, dst); }), support::kNoData);
    EXPECT_TRUE(dst == before);
    mvFrequencyBuffer self;
    EXPECT_EQ(thrownBy([&] { mfForwardFFT(self, self); }), support::kNoData);
}

template <class T>
std::vector<Row> inverseRows(mvFrequencyBuffer& b, mvPelBuffer<T>& out, mvPelBuffer<double>& angle,
                             mvPelBuffer<unsigned char>& codes) {
    const char* expected = support::kNoData;
    const mvFrequencyBuffer& c = b;
    return {
        {"plain", expected, [&] { mfInverseFFT<T>(b, out, false, false); }},
        {"plain, destroy", expected, [&] { mfInverseFFT<T>(b, out, true, true); }},
        {"plain, const", expected, [&] { mfInverseFFT<T>(c, out, false); }},
        {"angle", expected, [&] { mfInverseFFTAngle<T>(b, out, angle, false, true); }},
        {"angle, const", expected, [&] { mfInverseFFTAngle<T>(c, out, angle, false); }},
        {"quadrant", expected, [&] { mfInverseFFTQuadrant<T>(b, out, codes, false, true); }},
        {"quadrant, const", expected, [&] { mfInverseFFTQuadrant<T>(c, out, codes, false); }},
    };
}

template <class T>
struct InverseMessages : testing::Test {};
TYPED_TEST_SUITE(InverseMessages, PelTypes, );

TYPED_TEST(InverseMessages, ComeBeforeAnythingChanges) {
    mvFrequencyBuffer empty;
    mvPelBuffer<TypeParam> out;
    mvPelBuffer<double> angle;
    mvPelBuffer<unsigned char> codes;
    const support::AttentionCounter polls;
    expectRows(inverseRows(empty, out, angle, codes));
    EXPECT_FALSE(out.isBound());
    EXPECT_FALSE(angle.isBound());
    EXPECT_FALSE(codes.isBound());
    EXPECT_EQ(polls.polls(), 0);
}

TEST(Messages, OfTheOtherInverseTransformsAndPhaseImages) {
    mvFrequencyBuffer empty;
    const mvFrequencyBuffer& constant = empty;
    mvFrequencyBuffer dst(4, 4);
    const mvFrequencyBuffer before = dst;
    mvPelBuffer<double> real;
    mvPelBuffer<double> imaginary;
    mvPelBuffer<unsigned char> codes;
    expectRows({
        {"buffer", support::kNoData, [&] { mfInverseFFT(empty, dst, false); }},
        {"buffer, destroy", support::kNoData, [&] { mfInverseFFT(empty, dst, true); }},
        {"buffer, const", support::kNoData, [&] { mfInverseFFT(constant, dst); }},
        {"images", support::kNoData, [&] { mfInverseFFT(empty, real, imaginary, false); }},
        {"images, destroy", support::kNoData, [&] { mfInverseFFT(empty, real, imaginary, true); }},
        {"images, const", support::kNoData, [&] { mfInverseFFT(constant, real, imaginary); }},
        {"angle", support::kNoData, [&] { mf_ComputeAngleImage(empty, real); }},
        {"quadrant", support::kNoData, [&] { mf_ComputeQuadrantImage(empty, codes); }},
    });
    EXPECT_TRUE(dst == before);
    EXPECT_FALSE(real.isBound());
    EXPECT_FALSE(codes.isBound());
}

}  // namespace
