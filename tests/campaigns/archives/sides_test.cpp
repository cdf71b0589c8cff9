// Small records of buffers and filters with sides from nothing to the largest: whatever is done
// with them costs no more than they hold.
#include <cstdint>
#include <limits>

#include "load_and_use.h"
#include "support/buffer_record.h"
#include "support/filter_classes.h"
#include "support/sanitizers.h"
#include "support/work_meter.h"

namespace {

using archive::loadAndUse;
using archive::Record;
using support::BufferRecord;

constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kSides[] = {0, 1, 2, 1 << 11, 1 << 16, 1 << 27, kHighest};

// Records stay small: larger planes come with fewer floats than they have, or not at all.
constexpr std::int64_t kLargestStored = 1 << 17;
constexpr std::int64_t kLargestThorough = 16;

struct Sides {
    std::int32_t x, y;

    std::int64_t area() const { return std::int64_t{x} * y; }
};

std::vector<Sides> allPairs() {
    std::vector<Sides> pairs;
    for (const std::int32_t x : kSides) {
        for (const std::int32_t y : kSides) pairs.push_back({x, y});
    }
    return pairs;
}

// The pairs that go with small planes, and those that go with all.
std::vector<Sides> imagesFor(Sides plane) {
    if (plane.area() <= kLargestThorough) return allPairs();
    return {plane, {plane.x, 0}, {0, plane.y}, {kHighest, kHighest}};
}

// Records of a plane with all of its floats, with a few and with none, and of no data.
std::vector<BufferRecord> recordsOf(Sides plane) {
    BufferRecord record{.width = plane.x, .height = plane.y};
    std::vector<BufferRecord> records;
    for (const std::int64_t count : {std::int64_t{0}, std::int64_t{2}, 2 * plane.area()}) {
        if (count > 2 * kLargestStored) continue;
        record.floats.assign(static_cast<std::size_t>(count), 1.5F);
        records.push_back(record);
    }
    record.hasData = false;
    records.push_back(record);
    return records;
}

std::string nameOf(Sides sides) {
    return std::to_string(sides.x) + " x " + std::to_string(sides.y);
}

// Loads what must load: planes of up to 2048 x 2048, planes of nothing, and those that bring all
// of their floats.
void loadAndUseBuffer(const BufferRecord& record) {
    const Sides plane{record.width, record.height};
    const bool whole = static_cast<std::int64_t>(record.floats.size()) >= 2 * plane.area();
    const bool ordinary = plane.x <= 2048 && plane.y <= 2048;
    mvFrequencyBuffer buffer;
    EXPECT_EQ(loadAndUse(record.bytes(), buffer),
              whole || ordinary || !record.hasData ? "nothing" : "BadValue");
}

TEST(SidesOfABuffer, CostNoMoreThanItsPlane) {
    for (const Sides plane : allPairs()) {
        for (BufferRecord record : recordsOf(plane)) {
            for (const Sides image : imagesFor(plane)) {
                SCOPED_TRACE(nameOf(plane) + ", image " + nameOf(image) + ", " +
                             std::to_string(record.floats.size()) + " floats");
                record.imageWidth = image.x;
                record.imageHeight = image.y;
                for (const bool spent : {false, true}) {
                    record.inverseComputed = spent;
                    loadAndUseBuffer(record);
                }
            }
        }
    }
}

TEST(SidesOfABuffer, OfTheLargestPlaneCostNoMoreThanIt) {
    if (support::kSanitized) GTEST_SKIP() << "planes of this size are left to the other builds";
    BufferRecord record{.width = 2048, .height = 2048, .imageWidth = 2048, .imageHeight = 2048};
    record.x = 1;
    mvFrequencyBuffer buffer;
    EXPECT_EQ(loadAndUse(record.bytes(), buffer, support::kLargestArea), "nothing");
}

TEST(SidesOfAnImageFilter, CostNoMoreThanItsImage) {
    for (const Sides plane : allPairs()) {
        for (const BufferRecord& record : recordsOf(plane)) {
            SCOPED_TRACE(nameOf(plane) + ", " + std::to_string(record.floats.size()) + " floats");
            mvFrequencyFilterImage filter;
            loadAndUse(Record().u8(0).u8(0).flag(true).bytes() + record.bytes(), filter);
        }
    }
}

template <class Kind>
struct SidesOfAFilter : testing::Test {
    using Fields = typename Kind::Fields;

    // Whether it loads is asked elsewhere.
    static void loadAndUseFilter(const Fields& fields, long largestArea = archive::kLargestArea) {
        SCOPED_TRACE(nameOf({fields.width, fields.height}) + ", support " +
                     nameOf({fields.supportWidth, fields.supportHeight}) + ", radius " +
                     std::to_string(fields.radius));
        typename Kind::Filter filter;
        loadAndUse(fields.record().bytes(), filter, largestArea);
    }
};
TYPED_TEST_SUITE(SidesOfAFilter, archive::ParametricFilters);

TYPED_TEST(SidesOfAFilter, CostNoMoreThanItsPlane) {
    for (const Sides size : allPairs()) {
        for (const std::int32_t radius : {0, 1, kHighest}) {
            typename TypeParam::Fields fields;
            fields.width = size.x;
            fields.height = size.y;
            fields.radius = radius;
            this->loadAndUseFilter(fields);
        }
    }
}

TYPED_TEST(SidesOfAFilter, OfTheLargestPlaneCostNoMoreThanIt) {
    if (support::kSanitized) GTEST_SKIP() << "planes of this size are left to the other builds";
    typename TypeParam::Fields fields;
    fields.width = fields.height = 2048;
    for (const std::int32_t radius : {0, 1024}) {
        fields.radius = radius;
        this->loadAndUseFilter(fields, support::kLargestArea);
    }
}

TYPED_TEST(SidesOfAFilter, OfItsSupportCostNoMoreThanItsGains) {
    for (const Sides support : allPairs()) {
        for (const Sides size : {Sides{8, 4}, Sides{0, kHighest}, Sides{kHighest, 0}}) {
            for (const bool hasResponse : {true, false}) {
                typename TypeParam::Fields fields;
                fields.width = size.x;
                fields.height = size.y;
                fields.supportWidth = support.x;
                fields.supportHeight = support.y;
                fields.hasResponse = hasResponse;
                this->loadAndUseFilter(fields);
            }
        }
    }
}

TEST(WorkMeter, CountsTheSameAgain) {
    const auto workOf = [](long side) {
        mvFrequencyBuffer buffer(side, side);
        const support::WorkMeter meter;
        mfFrequencyConjugate(buffer);
        return meter.work();
    };
    EXPECT_EQ(workOf(64), workOf(64));
    EXPECT_EQ(workOf(64) > 64, support::WorkMeter::counts());
}

}  // namespace
