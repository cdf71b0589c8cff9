// Pel buffers: memory, windows, offsets and views.
#include <base/exception.h>
#include <base/pel_buffer.h>

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

#include "support/longs.h"
#include "support/sanitizers.h"

namespace {

struct Rgb {
    constexpr Rgb() = default;
    constexpr explicit Rgb(unsigned char grey) : r(grey), g(grey), b(grey) {}
    unsigned char r = 0, g = 0, b = 0;
    friend bool operator==(const Rgb&, const Rgb&) = default;
};

template <class T>
struct PelBuffer : testing::Test {};
using Pels = testing::Types<unsigned char, unsigned short, float, double, Rgb>;
TYPED_TEST_SUITE(PelBuffer, Pels, );

template <class T>
void expectUnbound(const mvPelBuffer_const<T>& buffer) {
    EXPECT_FALSE(buffer.isBound());
    EXPECT_EQ(buffer.width(), 0);
    EXPECT_EQ(buffer.height(), 0);
    EXPECT_EQ(buffer.rowUpdate(), 0);
    EXPECT_EQ(buffer.pointToOffset(), nullptr);
    EXPECT_THROW(buffer.pointToRow(0), mvException);
    EXPECT_THROW(buffer.pel(0, 0), mvException);
    EXPECT_THROW(buffer.window(0, 0, 1, 1), mvException);
}

TYPED_TEST(PelBuffer, IsNotBoundByDefault) {
    expectUnbound(mvPelBuffer<TypeParam>());
    expectUnbound(mvPelBuffer_const<TypeParam>());
    EXPECT_EQ(mvPelBuffer<TypeParam>().offset(), mvPair<long>(0, 0));
    EXPECT_FALSE(mvPelBuffer<TypeParam>().xformCache().isSet());
}

TYPED_TEST(PelBuffer, StartsItsRowsAtMultiplesOfTheAlignment) {
    for (long alignment = 1; alignment <= 65536; alignment *= 2) {
        const mvPelBuffer<TypeParam> buffer(7, 3, alignment);
        EXPECT_GE(buffer.rowUpdate(), 7);
        for (long y = 0; y < 3; ++y) {
            const auto address = reinterpret_cast<std::uintptr_t>(buffer.pointToRow(y));
            EXPECT_EQ(address % static_cast<std::uintptr_t>(alignment), 0u) << alignment;
            EXPECT_EQ(buffer.pointToRow(y), buffer.pointToOffset() + y * buffer.rowUpdate());
        }
    }
}

TYPED_TEST(PelBuffer, AlignsTo32BytesByDefault) {
    const mvPelBuffer<TypeParam> buffer(5, 2);
    EXPECT_EQ(buffer.rowUpdate(), mvPelBuffer<TypeParam>(5, 2, 32).rowUpdate());
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(buffer.pointToRow(1)) % 32, 0u);
}

TYPED_TEST(PelBuffer, IsZeroWhenNew) {
    const mvPelBuffer<TypeParam> buffer(33, 17);
    EXPECT_TRUE(buffer.isBound());
    EXPECT_EQ(buffer.width(), 33);
    EXPECT_EQ(buffer.height(), 17);
    for (long y = 0; y < 17; ++y) {
        for (long x = 0; x < 33; ++x) EXPECT_EQ(buffer.pel(x, y), TypeParam{});
    }
}

TYPED_TEST(PelBuffer, CanBeWrittenInEveryPel) {
    const mvPelBuffer<TypeParam> buffer(33, 17, 1);
    for (long y = 0; y < 17; ++y) std::fill_n(buffer.pointToRow(y), 33, TypeParam{1});
    EXPECT_EQ(buffer.pel(32, 16), TypeParam{1});
}

TYPED_TEST(PelBuffer, RefusesPelsOutsideTheWindow) {
    const mvPelBuffer<TypeParam> buffer(4, 3);
    EXPECT_NO_THROW(buffer.pel(3, 2));
    const long places[][2] = {{-1, 0}, {0, -1}, {4, 0}, {0, 3}, {LONG_MIN, 0}, {0, LONG_MAX}};
    for (const auto& place : places) EXPECT_THROW(buffer.pel(place[0], place[1]), mvException);
    for (const long y : {-1L, 3L, LONG_MIN, LONG_MAX}) {
        EXPECT_THROW(buffer.pointToRow(y), mvException);
        EXPECT_THROW(mvPelBuffer_const<TypeParam>(buffer).pointToRow(y), mvException);
    }
}

TYPED_TEST(PelBuffer, RefusesBadSidesAndAlignments) {
    using Buffer = mvPelBuffer<TypeParam>;
    const auto sides = support::thatLongsHold<std::vector<long>>(
        {0, -1, LONG_MIN}, {support::powerOfTwo(31), LONG_MAX});
    for (const long side : sides) {
        EXPECT_THROW(Buffer(side, 1), mvExceptionWithString) << side;
        EXPECT_THROW(Buffer(1, side), mvExceptionWithString) << side;
    }
    for (const long alignment : {0L, -1L, -32L, 3L, 48L, 131072L, LONG_MIN, LONG_MAX}) {
        EXPECT_THROW(Buffer(1, 1, alignment), mvExceptionWithString) << alignment;
    }
}

TEST(PelBufferSize, BeyondAllMemoryIsRefused) {
    constexpr long kLargest = std::numeric_limits<std::int32_t>::max();
    EXPECT_THROW(mvPelBuffer<double>(kLargest, kLargest), mvExceptionWithString);
    EXPECT_THROW((mvPelBuffer<std::array<double, 1024>>(kLargest, kLargest)),
                 mvExceptionWithString);
}

TEST(PelBufferSize, BeyondFreeMemoryIsABadAllocation) {
    if (sizeof(void*) < 8) GTEST_SKIP() << "such sizes are beyond all memory";
    if (support::kSanitized) GTEST_SKIP() << "sanitizers abort on impossible allocations";
    constexpr long kLargest = std::numeric_limits<std::int32_t>::max();
    // The step from row to row is a long, too.
    constexpr long kWidest = support::kLongIsWide ? kLargest : kLargest / 64 * 64;
    EXPECT_THROW(mvPelBuffer<unsigned char>(kWidest, kLargest), std::bad_alloc);
    EXPECT_THROW(mvPelBuffer<unsigned char>(1, kLargest, 65536), std::bad_alloc);
}

TEST(PelBufferOffset, IsHeldToTheNearest32BitValue) {
    mvPelBuffer<double> buffer;
    buffer.offset(-3, 4);
    EXPECT_EQ(buffer.offset(), mvPair<long>(-3, 4));
    buffer.offset(mvPair<long>(5, -6));
    EXPECT_EQ(buffer.offset(), mvPair<long>(5, -6));
    buffer.offset(LONG_MAX, LONG_MIN);
    EXPECT_EQ(buffer.offset(), mvPair<long>(INT32_MAX, INT32_MIN));
}

TEST(PelBufferView, SharesPelsButNotItsOffsetAndTransform) {
    mvPelBuffer<unsigned char> buffer(4, 3);
    buffer.offset(7, 8);
    mvPelBuffer<unsigned char> view(buffer), assigned;
    assigned = buffer;
    mvPelBuffer_const<unsigned char> readOnly = buffer;
    *view.pointToRow(1) = 9;
    EXPECT_EQ(buffer.pel(0, 1), 9);
    EXPECT_EQ(assigned.pel(0, 1), 9);
    EXPECT_EQ(readOnly.pel(0, 1), 9);
    EXPECT_EQ(view.offset(), buffer.offset());

    mv2XformCache identity;
    identity.setIdentity();
    view.offset(0, 0);
    view.copyXforms(identity);
    EXPECT_EQ(buffer.offset(), mvPair<long>(7, 8));
    EXPECT_FALSE(buffer.xformCache().isSet());
    buffer.copyXforms(view);
    EXPECT_EQ(buffer.xformCache(), identity);
    buffer.copyXforms(mvPelBuffer<double>());
    EXPECT_FALSE(buffer.xformCache().isSet());
}

TEST(PelBufferView, KeepsThePelsAlive) {
    mvPelBuffer_const<unsigned short> view;
    {
        mvPelBuffer<unsigned short> buffer(4, 3);
        buffer.pointToRow(2)[3] = 77;
        view = buffer.window(3, 2, 1, 1);
    }
    EXPECT_EQ(view.pel(0, 0), 77);
}

TEST(PelBufferMove, LeavesTheSourceUnbound) {
    using Buffer = mvPelBuffer<unsigned char>;
    static_assert(std::is_nothrow_move_constructible_v<Buffer>);
    static_assert(std::is_nothrow_move_assignable_v<Buffer>);
    Buffer buffer(4, 3);
    buffer.offset(1, 2);
    const unsigned char* pels = buffer.pointToOffset();
    Buffer moved(std::move(buffer));
    expectUnbound(buffer);
    EXPECT_EQ(buffer.offset(), mvPair<long>(0, 0));
    EXPECT_EQ(moved.pointToOffset(), pels);
    EXPECT_EQ(moved.offset(), mvPair<long>(1, 2));
    buffer = std::move(moved);
    expectUnbound(moved);
    EXPECT_EQ(buffer.pointToOffset(), pels);
    Buffer& same = buffer;
    buffer = std::move(same);
    EXPECT_EQ(buffer.pointToOffset(), pels);
    buffer = Buffer();
    expectUnbound(buffer);
}

TEST(PelBufferTypes, DoNotConvertIntoEachOther) {
    using Byte = mvPelBuffer<unsigned char>;
    static_assert(!std::is_constructible_v<Byte, mvPelBuffer<double>>);
    static_assert(!std::is_assignable_v<Byte&, mvPelBuffer<double>>);
    static_assert(!std::is_constructible_v<Byte, mvPelBuffer_const<unsigned char>>);
    static_assert(!std::is_constructible_v<Byte, const unsigned char*, long, long, long>);
    static_assert(!std::is_constructible_v<Byte, unsigned short*, long, long, long>);
    static_assert(std::is_convertible_v<Byte, mvPelBuffer_const<unsigned char>>);
}

// Assigns to a buffer that writes its pels through a reference to its base.
template <class Source>
void assignThroughTheBase(mvPelBuffer<unsigned char>& writer, Source&& source) {
    mvPelBuffer_const<unsigned char>& base = writer;
    base = std::forward<Source>(source);
}

// Nothing of `writer` and `source` is changed by an assignment that is refused.
template <class Source>
void expectRefused(mvPelBuffer<unsigned char>& writer, Source&& source) {
    const mvPelBuffer_const<unsigned char> before(writer);
    const bool bound = source.isBound();
    EXPECT_THROW(assignThroughTheBase(writer, std::forward<Source>(source)), mvExceptionWithString);
    EXPECT_EQ(writer.pointToOffset(), before.pointToOffset());
    EXPECT_EQ(writer.offset(), before.offset());
    EXPECT_EQ(source.isBound(), bound);
}

TEST(PelBufferAccess, ToPelsThatAreOnlyReadIsNotGainedThroughTheBase) {
    const unsigned char pels[6] = {1, 2, 3, 4, 5, 6};
    const mvPelBuffer_const<unsigned char> readOnly(pels, 3, 2, 3);
    mvPelBuffer<unsigned char> fresh(4, 3), source(fresh);
    fresh.offset(7, 8);
    mvPelBuffer<unsigned char> unbound, copied(fresh), moved(std::move(source));
    mvPelBuffer<unsigned char> window = fresh.window(1, 1, 2, 2);
    mvPelBuffer<unsigned char> foreign(fresh.pointToOffset(), 2, 2, 2);
    for (auto* const writer : {&unbound, &fresh, &copied, &moved, &window, &foreign}) {
        expectRefused(*writer, readOnly);
        expectRefused(*writer, mvPelBuffer_const<unsigned char>(readOnly));
        expectRefused(*writer, mvPelBuffer_const<unsigned char>(fresh));
    }
}

TEST(PelBufferAccess, StaysRefusedAfterAssignments) {
    const unsigned char pel = 1;
    mvPelBuffer<unsigned char> writer;
    writer = mvPelBuffer<unsigned char>(4, 3);
    expectRefused(writer, mvPelBuffer_const<unsigned char>(&pel, 1, 1, 1));
    writer = mvPelBuffer<unsigned char>();
    expectRefused(writer, mvPelBuffer_const<unsigned char>(&pel, 1, 1, 1));
}

TEST(PelBufferAccess, OfAnotherWriterIsTakenThroughTheBase) {
    mvPelBuffer<unsigned char> writer, other(4, 3);
    assignThroughTheBase(writer, other);
    EXPECT_EQ(writer.pointToOffset(), other.pointToOffset());
    assignThroughTheBase(writer, mvPelBuffer<unsigned char>());
    expectUnbound(writer);
}

TEST(PelBufferAccess, IsLostInReaders) {
    mvPelBuffer<unsigned char> writer(4, 3);
    mvPelBuffer_const<unsigned char> reader, other;
    reader = writer;
    other = std::move(reader);
    EXPECT_EQ(other.pointToOffset(), writer.pointToOffset());
    expectUnbound(reader);
    expectRefused(writer, other);
}

TEST(PelBufferWindow, IsAPartOfItsParent) {
    mvPelBuffer<unsigned char> buffer(10, 8);
    buffer.offset(100, 200);
    mv2XformCache identity;
    identity.setIdentity();
    buffer.copyXforms(identity);
    const auto window = buffer.window(2, 3, 5, 4);
    EXPECT_EQ(window.width(), 5);
    EXPECT_EQ(window.height(), 4);
    EXPECT_EQ(window.rowUpdate(), buffer.rowUpdate());
    EXPECT_EQ(window.offset(), mvPair<long>(102, 203));
    EXPECT_EQ(window.xformCache(), identity);
    EXPECT_EQ(window.pointToOffset(), buffer.pointToRow(3) + 2);
    const mvPelBuffer_const<unsigned char> readOnly = buffer;
    EXPECT_EQ(readOnly.window(2, 3, 5, 4).window(1, 1, 4, 3).pointToOffset(),
              buffer.pointToRow(4) + 3);
    EXPECT_EQ(buffer.width(), 10);
}

TEST(PelBufferWindow, OfTheWholeIsTheWhole) {
    const mvPelBuffer<double> buffer(10, 8);
    const auto window = buffer.window(0, 0, 10, 8);
    EXPECT_EQ(window.pointToOffset(), buffer.pointToOffset());
    EXPECT_EQ(window.width(), 10);
    EXPECT_EQ(window.height(), 8);
}

TEST(PelBufferWindow, OutsideItsParentIsRefused) {
    const mvPelBuffer<unsigned char> buffer(10, 8);
    const long cases[][4] = {
        {-1, 0, 1, 1},       {0, -1, 1, 1},       {10, 0, 1, 1},       {0, 8, 1, 1},
        {0, 0, 0, 1},        {0, 0, 1, 0},        {0, 0, -1, 1},       {0, 0, 1, -1},
        {0, 0, 11, 1},       {0, 0, 1, 9},        {9, 0, 2, 1},        {0, 7, 1, 2},
        {LONG_MAX, 0, 1, 1}, {0, LONG_MIN, 1, 1}, {1, 0, LONG_MAX, 1}, {0, 1, 1, LONG_MIN}};
    for (const auto& c : cases) {
        EXPECT_THROW(buffer.window(c[0], c[1], c[2], c[3]), mvExceptionWithString);
    }
}

TEST(PelBufferWindow, HoldsItsOffsetTo32Bits) {
    mvPelBuffer<unsigned char> buffer(10, 8);
    buffer.offset(INT32_MAX - 1, INT32_MIN);
    EXPECT_EQ(buffer.window(5, 5, 1, 1).offset(), mvPair<long>(INT32_MAX, INT32_MIN + 5L));
}

TEST(ForeignPels, AreViewedWhereTheyStand) {
    std::vector<unsigned short> frame(6 * 4);
    const mvPelBuffer<unsigned short> view(frame.data(), 5, 4, 6);
    EXPECT_TRUE(view.isBound());
    EXPECT_EQ(view.rowUpdate(), 6);
    EXPECT_EQ(view.pointToOffset(), frame.data());
    frame[2 * 6 + 4] = 99;
    EXPECT_EQ(view.pel(4, 2), 99);
    view.pointToRow(3)[0] = 5;
    EXPECT_EQ(frame[18], 5);
    const mvPelBuffer_const<unsigned short> readOnly(frame.data(), 5, 4, 6);
    EXPECT_EQ(readOnly.pel(4, 2), 99);
}

TEST(ForeignPels, KeepTheirOwnerAliveAsLongAsAnyView) {
    auto frame = std::make_shared<std::vector<double>>(12);
    const std::weak_ptr<std::vector<double>> watch = frame;
    mvPelBuffer_const<double> window;
    {
        const mvPelBuffer<double> view(frame->data(), 4, 3, 4, frame);
        frame.reset();
        window = view.window(1, 1, 2, 2);
    }
    EXPECT_FALSE(watch.expired());
    window = {};
    EXPECT_TRUE(watch.expired());
}

TEST(ForeignPels, ThatMakeNoImageAreRefused) {
    double pels[4] = {};
    double* const none = nullptr;
    using View = mvPelBuffer<double>;
    EXPECT_THROW(View(none, 1, 1, 1), mvExceptionWithString);
    EXPECT_THROW(View(pels, 0, 1, 1), mvExceptionWithString);
    EXPECT_THROW(View(pels, 1, 0, 1), mvExceptionWithString);
    EXPECT_THROW(View(pels, -1, 1, 1), mvExceptionWithString);
    EXPECT_THROW(View(pels, 2, 2, 1), mvExceptionWithString);
    EXPECT_THROW(View(pels, 2, 2, -2), mvExceptionWithString);
    if (!support::kLongIsWide) return;  // its largest makes one
    EXPECT_THROW(View(pels, 1, 1, LONG_MAX), mvExceptionWithString);
    EXPECT_THROW(View(pels, 1, INT32_MAX, LONG_MAX / INT32_MAX), mvExceptionWithString);
    EXPECT_THROW(View(pels, LONG_MAX, 1, LONG_MAX), mvExceptionWithString);
}

}  // namespace
