// Stream archives: the bytes of each value, and what bad streams do.
#include <base/archive.h>
#include <internal/bit_cast.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <functional>
#include <limits>
#include <streambuf>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "support/longs.h"
#include "support/value_bytes.h"

namespace {

using namespace std::string_literals;

mvXform<2> someXform() {
    return {mvMatrix<2>(1, -2, 0.5, 4), mvVector<2>(5, -0.0)};
}

mv2XformCache cacheOf(const mvXform<2>& xform) {
    mv2XformCache cache;
    cache.xform(xform);
    return cache;
}

const char* const kSomeXformBytes =
    "00 00 00 00 00 00 f0 3f 00 00 00 00 00 00 00 c0 00 00 00 00 00 00 e0 3f "
    "00 00 00 00 00 00 10 40 00 00 00 00 00 00 14 40 00 00 00 00 00 00 00 80";

struct Golden {
    std::string stored;
    std::string bytes;
};

TEST(Archive, HasFixedLittleEndianBytes) {
    const Golden cases[] = {
        {bytesOf<unsigned char>(0), "00"},
        {bytesOf<unsigned char>(255), "ff"},
        {bytesOf(false), "00"},
        {bytesOf(true), "01"},
        {bytesOf(0x12345678L), "78 56 34 12"},
        {bytesOf(-2L), "fe ff ff ff"},
        {bytesOf(long{INT32_MIN}), "00 00 00 80"},
        {bytesOf(long{INT32_MAX}), "ff ff ff 7f"},
        {bytesOf(-3), "fd ff ff ff"},
        {bytesOf(0x89abcdefUL), "ef cd ab 89"},
        {bytesOf(static_cast<unsigned long>(UINT32_MAX)), "ff ff ff ff"},
        {bytesOf(1.0f), "00 00 80 3f"},
        {bytesOf(-0.0f), "00 00 00 80"},
        {bytesOf(1.0), "00 00 00 00 00 00 f0 3f"},
        {bytesOf(-0.1), "9a 99 99 99 99 99 b9 bf"},
        {bytesOf("hey"s), "03 00 00 00 68 65 79"},
        {bytesOf(""s), "00 00 00 00"},
        {bytesOf(someXform()), kSomeXformBytes},
        {bytesOf(mv2XformCache()), "00"},
        {bytesOf(cacheOf(someXform())), "01 "s + kSomeXformBytes},
    };
    for (const Golden& golden : cases) EXPECT_EQ(hex(golden.stored), golden.bytes);
}

template <class Value>
void expectRoundTrip(Value value, Value former) {
    const std::string bytes = bytesOf(value);
    Loading loading(bytes + "more");
    Value loaded = former;
    EXPECT_EQ(&(loading.archive() || loaded), &loading.archive());
    EXPECT_EQ(loaded, value);
    EXPECT_EQ(bytesOf(loaded), bytes);
    EXPECT_EQ(loading.rest(), 4u) << "exactly the bytes of the value are read";
}

TEST(Archive, LoadsWhatItStored) {
    for (int i = 0; i < 256; ++i) {
        expectRoundTrip(static_cast<unsigned char>(i), static_cast<unsigned char>(i + 1));
    }
    expectRoundTrip(true, false);
    expectRoundTrip(false, true);
    for (const long value : {0L, 1L, -1L, long{INT32_MIN}, long{INT32_MAX}}) {
        expectRoundTrip(value, 7L);
        expectRoundTrip(static_cast<int>(value), 7);
    }
    for (const unsigned long value : {0UL, 1UL, 0x80000000UL, 0xffffffffUL}) {
        expectRoundTrip(value, 7UL);
    }
    for (const double value : {0.0, 1.5, -1e300, 5e-324}) expectRoundTrip(value, 7.0);
    for (const float value : {0.0f, 1.5f, -1e30f, 1e-45f}) expectRoundTrip(value, 7.0f);
    expectRoundTrip(std::string(200000, 'x'), "former"s);
    expectRoundTrip("a\0b"s, "former"s);
    expectRoundTrip(someXform(), mvXform<2>());
    expectRoundTrip(mv2XformCache(), cacheOf(someXform()));
    expectRoundTrip(cacheOf(someXform()), mv2XformCache());
}

TEST(Archive, KeepsEveryBitOfFloatingValues) {
    for (const std::uint32_t bits : {0x80000000u, 0x7fa00001u, 0xffc12345u, 0x00000001u}) {
        float value = mvi::bitCast<float>(bits), loaded = 0;
        Loading(bytesOf(value)).archive() || loaded;
        EXPECT_EQ(mvi::bitCast<std::uint32_t>(loaded), bits);
    }
    const std::uint64_t quiet = 0xfff8000000012345u;
    double loaded = 0;
    Loading(bytesOf(mvi::bitCast<double>(quiet))).archive() || loaded;
    EXPECT_EQ(mvi::bitCast<std::uint64_t>(loaded), quiet);
}

TEST(Archive, KnowsItsMode) {
    std::ostringstream out;
    std::istringstream in;
    EXPECT_TRUE(mvArchive(out).isStoring());
    EXPECT_FALSE(mvArchive(in).isStoring());
    static_assert(!std::is_convertible_v<std::ostream&, mvArchive>);
    static_assert(!std::is_convertible_v<std::istream&, mvArchive>);
    static_assert(!std::is_copy_constructible_v<mvArchive>);
}

TEST(Archive, LeavesTheBytesInTheStreamAfterEachValue) {
    std::stringstream stream;
    mvArchive storing(static_cast<std::ostream&>(stream));
    mvArchive loading(static_cast<std::istream&>(stream));
    for (long value = 0; value < 10; ++value) {
        long stored = value, loaded = -1;
        storing || stored;
        loading || loaded;
        EXPECT_EQ(loaded, value);
    }
}

template <class Value>
void expectRefused(Value value) {
    EXPECT_EQ(storedBy([&](mvArchive& ar) { EXPECT_THROW(ar || value, mvArchive::BadValue); }), "");
}

TEST(Archive, RefusesIntegersBeyond32BitsAndWritesNothing) {
    if (!support::kLongIsWide) GTEST_SKIP() << "every long fits";
    expectRefused(support::asLong(std::int64_t{INT32_MAX} + 1));
    expectRefused(support::asLong(std::int64_t{INT32_MIN} - 1));
    expectRefused(LONG_MAX);
    expectRefused(LONG_MIN);
    expectRefused(static_cast<unsigned long>(support::powerOfTwo(32)));
    expectRefused(ULONG_MAX);
}

TEST(Archive, AcceptsOnlyZeroAndOneAsTruthValues) {
    for (int byte = 2; byte < 256; ++byte) {
        bool value = true;
        EXPECT_THROW(Loading(std::string(1, static_cast<char>(byte))).archive() || value,
                     mvArchive::BadValue);
        EXPECT_TRUE(value);
    }
    mv2XformCache cache = cacheOf(someXform());
    EXPECT_THROW(Loading(std::string(49, '\2')).archive() || cache, mvArchive::BadValue);
    EXPECT_EQ(cache, cacheOf(someXform()));
}

template <class Value>
void expectTruncated(Value value, Value former) {
    const std::string bytes = bytesOf(value);
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        Loading loading(bytes.substr(0, size));
        Value loaded = former;
        EXPECT_THROW(loading.archive() || loaded, mvArchive::Truncated) << size;
        EXPECT_EQ(loaded, former) << "a value that fails to load keeps what it had";
        EXPECT_THROW(loading.archive() || loaded, mvArchive::Truncated) << "and so does the next";
    }
}

TEST(Archive, ReportsBytesThatEndEarlyAtEveryByte) {
    expectTruncated<unsigned char>(1, 2);
    expectTruncated(true, false);
    expectTruncated(1L, 2L);
    expectTruncated(1UL, 2UL);
    expectTruncated(1, 2);
    expectTruncated(1.0f, 2.0f);
    expectTruncated(1.0, 2.0);
    expectTruncated("hello"s, "former"s);
    expectTruncated(someXform(), mvXform<2>());
    expectTruncated(cacheOf(someXform()), mv2XformCache());
}

TEST(Archive, BelievesALengthOnlyAsFarAsItsBytesArrive) {
    std::string text = "former";
    EXPECT_THROW(Loading("\xff\xff\xff\xffpatch"s).archive() || text, mvArchive::Truncated);
    EXPECT_EQ(text, "former");
}

TEST(Archive, ExchangesFloatsInBulkAsOneByOne) {
    for (const std::size_t count : {0u, 1u, 4095u, 4096u, 4097u, 20000u}) {
        std::vector<float> values(count);
        for (std::size_t i = 0; i < count; ++i) values[i] = static_cast<float>(i) - 0.5f;
        const std::string bulk =
            storedBy([&](mvArchive& ar) { ar.floats(values.data(), values.size()); });
        EXPECT_EQ(bulk, storedBy([&](mvArchive& ar) {
                      for (float& value : values) ar || value;
                  }));
        std::vector<float> loaded(count, -1.0f);
        Loading loading(bulk + "more");
        loading.archive().floats(loaded.data(), loaded.size());
        EXPECT_EQ(loaded, values);
        EXPECT_EQ(loading.rest(), 4u);
    }
}

TEST(Archive, ReportsFloatsThatEndEarly) {
    std::vector<float> values(5000);
    for (const std::size_t size : {0u, 3u, 4u, 16384u, 19999u}) {
        Loading loading(std::string(size, '\0'));
        EXPECT_THROW(loading.archive().floats(values.data(), values.size()), mvArchive::Truncated);
    }
}

// Takes some bytes and then no more.
class FullDisk : public std::streambuf {
  public:
    explicit FullDisk(int room) : room_(room) {}

  protected:
    int_type overflow(int_type c) override { return room_-- > 0 ? c : traits_type::eof(); }

  private:
    int room_;
};

TEST(Archive, ReportsAStreamThatFailsWhileStoring) {
    for (const auto mask :
         {std::ios::goodbit, std::ios::badbit, std::ios::badbit | std::ios::failbit}) {
        for (int room = 0; room < 8; ++room) {
            FullDisk disk(room);
            std::ostream out(&disk);
            out.exceptions(mask);
            mvArchive ar(out);
            double value = 1;
            EXPECT_THROW(ar || value, mvArchive::WriteFailed) << room;
            EXPECT_THROW(ar || value, mvArchive::WriteFailed) << "a failed stream stays failed";
        }
    }
}

TEST(Archive, ReportsAStreamThatHadFailedBefore) {
    std::ostringstream out;
    out.setstate(std::ios::failbit);
    mvArchive storing(out);
    bool value = true;
    EXPECT_THROW(storing || value, mvArchive::WriteFailed);
    std::istringstream in("abc");
    in.setstate(std::ios::failbit);
    mvArchive loading(in);
    EXPECT_THROW(loading || value, mvArchive::Truncated);
}

TEST(Archive, TurnsTheExceptionsOfStreamsIntoItsOwn) {
    std::istringstream in("abc");
    in.exceptions(std::ios::badbit | std::ios::failbit | std::ios::eofbit);
    mvArchive ar(in);
    long value = 7;
    EXPECT_THROW(ar || value, mvArchive::Truncated);
    EXPECT_EQ(value, 7);
}

// Fails by an exception of its own.
class BrokenDevice : public std::streambuf {
  public:
    struct Unplugged {};

  protected:
    int_type underflow() override { throw Unplugged(); }
    int_type overflow(int_type) override { throw Unplugged(); }
};

TEST(Archive, LetsADevicesOwnExceptionThroughWhereTheStreamDoes) {
    BrokenDevice device;
    std::istream in(&device), listening(&device);
    listening.exceptions(std::ios::badbit);
    unsigned char value = 0;
    mvArchive quiet(in), loud(listening);
    EXPECT_THROW(quiet || value, mvArchive::Truncated);
    EXPECT_THROW(loud || value, BrokenDevice::Unplugged);
}

}  // namespace
