// Records that no library wrote: whatever they say, loading and using them does no harm and holds
// no more memory than they have bytes for.
#include <limits>
#include <new>

#include "load_and_use.h"
#include "support/buffer_record.h"
#include "support/filter_classes.h"
#include "support/spectra.h"
#include "support/thrown.h"

namespace {

using archive::loadAndUse;
using archive::Record;
using support::BufferRecord;

constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();

// A buffer record that ends with its count: no floats follow.
std::string withCount(BufferRecord record, std::uint32_t count) {
    record.floats.clear();
    std::string bytes = record.bytes();
    bytes.resize(bytes.size() - 4);
    return bytes + Record().u32(count).bytes();
}

TEST(HostileMemory, TheMeterMeters) {
    const archive::AllocationMeter meter;
    // A plain call: a compiler may leave out what a new expression allocates for nothing.
    ::operator delete(::operator new(1000000));
    { const mvFrequencyBuffer buffer(256, 256); }
    EXPECT_GE(meter.peak(), 1000000U);
    EXPECT_LE(meter.peak(), 1100000U);
}

TEST(HostileBuffer, ACountWithoutBytesIsTruncatedWhateverElseIsWrong) {
    for (const auto& [w, h] : {std::pair(2, 1), std::pair(kHighest, kHighest), std::pair(-1, 7),
                               std::pair(0, 0), std::pair(65536, 65536)}) {
        for (const std::uint32_t count : {1U, 4U, 1000000U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
            mvFrequencyBuffer buffer;
            EXPECT_EQ(loadAndUse(withCount({.width = w, .height = h}, count), buffer), "Truncated")
                << w << " x " << h << ", " << count;
        }
    }
}

TEST(HostileBuffer, AShortPlaneIsPaddedWithZeros) {
    for (const auto& [w, h] : {std::pair(4, 2), std::pair(3, 5), std::pair(2048, 2048)}) {
        BufferRecord record{.width = w, .height = h, .imageWidth = 1, .imageHeight = 1};
        record.floats = {1.0F, 2.0F, 3.0F};
        mvFrequencyBuffer buffer;
        ASSERT_EQ(archive::loadingThrows(record.bytes(), buffer), "nothing");
        EXPECT_EQ(buffer.width(), w);
        EXPECT_EQ(buffer.height(), h);
        EXPECT_EQ(buffer.get(0, 0, false), mvPair(1.0, 2.0));
        EXPECT_EQ(buffer.get(1, 0, false), mvPair(3.0, 0.0));
        EXPECT_EQ(buffer.get(w - 1, h - 1, false), mvPair(0.0, 0.0));
    }
}

TEST(HostileBuffer, ALongArrayIsCutOrRefused) {
    BufferRecord record = support::recordOf(2, 1);
    record.floats.resize(4000, 9.0F);
    mvFrequencyBuffer buffer;
    const std::string thrown = loadAndUse(record.bytes(), buffer);
    EXPECT_TRUE(thrown == "nothing" || thrown == "BadValue") << thrown;
}

TEST(HostileBuffer, SidesBeyondTheLargestNeedAllTheirFloats) {
    for (const auto& [w, h] : {std::pair(2049, 1), std::pair(4096, 1), std::pair(1, 100000)}) {
        mvFrequencyBuffer buffer;
        EXPECT_EQ(loadAndUse(support::recordOf(w, h).bytes(), buffer), "nothing");
        EXPECT_EQ(buffer.width(), w);
        mvFrequencyBuffer out(2, 2);
        EXPECT_EQ(support::thrownBy([&] { mfInverseFFT(buffer, out); }), support::kNotPowerOfTwo);
        EXPECT_EQ(support::thrownBy([&] { mfForwardFFT(buffer, out); }), support::kNotPowerOfTwo);
    }
    for (const auto& [w, h] :
         {std::pair(65536, 65536), std::pair(kHighest, kHighest), std::pair(kHighest, 1),
          std::pair(8192, 8192), std::pair(2049, 1), std::pair(1, 4096)}) {
        BufferRecord record{.width = w, .height = h};
        record.floats = {1.0F, 2.0F};
        mvFrequencyBuffer buffer;
        EXPECT_EQ(loadAndUse(record.bytes(), buffer), "BadValue") << w << " x " << h;
    }
}

TEST(HostileBuffer, AnySizesDoNoHarm) {
    for (const std::int32_t w : {kLowest, -2048, -1, 0, 1, 3, 8, 2048, 2049, 65536, kHighest}) {
        for (const std::int32_t h : {kLowest, -3, 0, 1, 5, 8, 65536, kHighest}) {
            for (const std::int32_t image : {kLowest, -1, 0, 8, 9, kHighest}) {
                BufferRecord record{
                    .width = w, .height = h, .imageWidth = image, .imageHeight = image};
                record.masked = image;
                record.maskedMiny = image;
                record.maskedMaxy = h;
                record.x = image;
                record.y = kLowest;
                record.floats = {1.0F, 2.0F, 3.0F, 4.0F};
                const bool large = w == 2048 && h > 0;
                if (large) continue;
                mvFrequencyBuffer buffer(4, 4);
                loadAndUse(record.bytes(), buffer);
            }
        }
    }
}

TEST(HostileBuffer, AnyBandDoesNoHarm) {
    for (const std::int32_t low : {kLowest, -9, 0, 3, 8, kHighest}) {
        for (const std::int32_t high : {kLowest, -9, 0, 3, 8, kHighest}) {
            for (const auto& [w, h] : {std::pair(8, 8), std::pair(4, 8), std::pair(1, 8)}) {
                BufferRecord record = support::recordOf(w, h);
                record.masked = 1;
                record.maskedMiny = low;
                record.maskedMaxy = high;
                mvFrequencyBuffer buffer;
                EXPECT_EQ(loadAndUse(record.bytes(), buffer), "nothing");
            }
        }
    }
}

TEST(HostileMemory, ALargeHonestBufferStaysWithinTheBound) {
    const std::string bytes = support::recordOf(2048, 1024).bytes();
    archive::Loading loading(bytes);
    mvFrequencyBuffer buffer;
    const archive::AllocationMeter meter;
    loading.archive() || buffer;
    EXPECT_LE(meter.peak(), 4 * bytes.size());
}

TEST(HostileMemory, ARecordWithoutAPlaneGivesUpTheOneBefore) {
    const std::string bytes = BufferRecord{.hasData = false}.bytes();
    archive::Loading loading(bytes);
    const archive::AllocationMeter meter;
    mvFrequencyBuffer buffer(1024, 1024);
    loading.archive() || buffer;
    const mvFrequencyBuffer another(1024, 1024);
    EXPECT_LE(meter.peak(), std::size_t{12} << 20);
}

template <class Kind>
struct HostileFilter : testing::Test {};
TYPED_TEST_SUITE(HostileFilter, archive::ParametricFilters);

std::vector<std::int32_t> someIntegers() {
    return {kLowest, kLowest + 1, -65536, -3, -1, 0, 1, 2, 5, 31, 64, 2048, 65537, kHighest};
}

std::vector<double> someDoubles() {
    return {-std::numeric_limits<double>::infinity(),
            -1e300,
            -5.0,
            0.0,
            5e-324,
            0.5,
            3.0,
            1e10,
            1e300,
            std::numeric_limits<double>::infinity(),
            std::numeric_limits<double>::quiet_NaN()};
}

// The fields of each kind of number, so that each can be set to anything.
std::vector<std::int32_t*> integersOf(archive::RingRecord& r) {
    return {&r.supportWidth, &r.supportHeight, &r.width, &r.height, &r.radius};
}
std::vector<std::int32_t*> integersOf(archive::LobeRecord& r) {
    return {&r.supportWidth, &r.supportHeight, &r.width, &r.height, &r.radius};
}
std::vector<double*> doublesOf(archive::RingRecord& r) {
    return {&r.frequency, &r.sigma, &r.plateau};
}
std::vector<double*> doublesOf(archive::LobeRecord& r) {
    return {&r.angle, &r.frequency, &r.sigmaX, &r.sigmaY, &r.plateauX, &r.plateauY};
}

TYPED_TEST(HostileFilter, AnyTwoIntegersDoNoHarm) {
    typename TypeParam::Fields fields;
    const std::vector<std::int32_t*> all = integersOf(fields);
    for (std::int32_t* one : all) {
        for (std::int32_t* other : all) {
            if (other <= one) continue;
            const auto good = fields;
            for (const std::int32_t a : someIntegers()) {
                for (const std::int32_t b : someIntegers()) {
                    *one = a;
                    *other = b;
                    typename TypeParam::Filter filter;
                    loadAndUse(fields.record().bytes(), filter);
                }
            }
            fields = good;
        }
    }
}

TYPED_TEST(HostileFilter, AnyDoubleDoesNoHarm) {
    typename TypeParam::Fields fields;
    for (double* one : doublesOf(fields)) {
        const auto good = fields;
        for (const double value : someDoubles()) {
            *one = value;
            for (const std::int32_t height : {1, 4, 8}) {
                fields.height = height;
                typename TypeParam::Filter filter;
                EXPECT_EQ(loadAndUse(fields.record().bytes(), filter), "nothing");
            }
        }
        fields = good;
    }
}

TYPED_TEST(HostileFilter, AShortResponseIsPaddedWithZeros) {
    typename TypeParam::Fields fields;
    fields.response = {0.25F, 0.5F};
    typename TypeParam::Filter filter;
    EXPECT_EQ(loadAndUse(fields.record().bytes(), filter), "nothing");
    auto padded = typename TypeParam::Fields();
    for (float& gain : padded.response) gain = 0;
    padded.response[0] = 0.25F;
    padded.response[1] = 0.5F;
    archive::load(fields.record().bytes(), filter);
    EXPECT_EQ(archive::hex(archive::stored(filter)), archive::hex(padded.record().bytes()));
}

TYPED_TEST(HostileFilter, ALongResponseDoesNoHarm) {
    typename TypeParam::Fields fields;
    fields.response.resize(1000, 2.0F);
    typename TypeParam::Filter filter;
    const std::string thrown = loadAndUse(fields.record().bytes(), filter);
    EXPECT_TRUE(thrown == "nothing" || thrown == "BadValue") << thrown;
}

TYPED_TEST(HostileFilter, AHugeSupportNeedsItsFloats) {
    typename TypeParam::Fields fields;
    for (const auto& [w, h] : {std::pair(kHighest, kHighest), std::pair(65536, 65536)}) {
        fields.supportWidth = w;
        fields.supportHeight = h;
        typename TypeParam::Filter filter;
        EXPECT_EQ(loadAndUse(fields.record().bytes(), filter), "BadValue");
    }
}

TYPED_TEST(HostileFilter, ACountWithoutBytesIsTruncated) {
    typename TypeParam::Fields fields;
    fields.response.clear();
    std::string bytes = fields.record().bytes();
    bytes.resize(bytes.size() - 4);
    for (const std::uint32_t count : {1U, 1000000U, 0xFFFFFFFFU}) {
        typename TypeParam::Filter filter;
        EXPECT_EQ(loadAndUse(bytes + Record().u32(count).bytes(), filter), "Truncated");
    }
}

}  // namespace
