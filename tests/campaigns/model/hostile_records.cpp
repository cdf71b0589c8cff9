// Records of buffers that no library wrote.
#include "campaigns/model/hostile_records.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>
#include <utility>
#include <vector>

#include "campaigns/model/images.h"
#include "support/archive_record.h"

namespace model {
namespace {

using archive::Record;

constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kSides[] = {1, 2, 3, 4, 5, 7, 8, 8, 16, 17};
constexpr std::int32_t kOddSides[] = {0, -1, 2048, 2049, kHighest};
constexpr std::int32_t kFewRows[] = {0, 1, 1, 3};
constexpr std::int32_t kNumbers[] = {0, 0, 0, 2, 5, -4, 40, 1000, kLowest, kHighest};

class Choice {
  public:
    explicit Choice(long seed) : state_(static_cast<std::uint64_t>(seed)) {
        for (int i = 0; i < 4; ++i) below(2);
    }
    std::size_t below(std::size_t count) { return valueOf<Short>(state_) % count; }
    bool oneIn(std::size_t count) { return below(count) == 0; }
    template <class List>
    auto of(const List& list) {
        return list[below(std::size(list))];
    }

  private:
    std::uint64_t state_;
};

struct Plane {
    std::int32_t width;
    std::int32_t height;
};

// An odd side stands beside few rows, so that no plane is large.
Plane somePlane(Choice& choice) {
    if (!choice.oneIn(4)) return {choice.of(kSides), choice.of(kSides)};
    Plane plane = {choice.of(kOddSides), choice.of(kFewRows)};
    if (choice.oneIn(2)) std::swap(plane.width, plane.height);
    return plane;
}

std::int32_t someImageSide(Choice& choice, std::int32_t side) {
    if (choice.oneIn(12)) return choice.of(kNumbers);
    const auto less = static_cast<std::int32_t>(choice.below(4));
    return choice.oneIn(2) || side <= less ? side : side - less;
}

unsigned truthValue(Choice& choice, bool value) {
    return choice.oneIn(100) ? 2U : value ? 1U : 0U;
}

void layXform(Choice& choice, Record& record, unsigned version) {
    const bool isSet = choice.oneIn(2);
    if (version > 0) record.u8(truthValue(choice, isSet));
    if (version > 0 && !isSet) return;
    for (int i = 0; i < 6; ++i) record.f64(static_cast<double>(choice.below(9)) - 4);
}

std::size_t someCount(Choice& choice, Plane plane) {
    const auto elements = static_cast<std::size_t>(std::max(plane.width, 0)) *
                          static_cast<std::size_t>(std::max(plane.height, 0));
    const std::size_t needed = std::min<std::size_t>(2 * elements, 5000);
    if (!choice.oneIn(6)) return needed;
    return choice.oneIn(2) ? needed / 2 : needed + 9;
}

void layFloats(Choice& choice, Record& record, std::size_t count) {
    record.u8(choice.oneIn(100) ? 3 : 0);
    const std::uint32_t more = choice.oneIn(50) ? 1000000 : 0;
    record.u32(static_cast<std::uint32_t>(count) + more);
    for (std::size_t i = 0; i < count; ++i) {
        record.f32(static_cast<float>(choice.below(2001)) / 8 - 100);
    }
}

}  // namespace

std::string hostileBuffer(long seed) {
    Choice choice(seed);
    const unsigned version = choice.oneIn(4) ? 0 : choice.oneIn(50) ? 2 : 1;
    const Plane plane = somePlane(choice);
    Record record;
    record.u8(version).i32(plane.width).i32(plane.height);
    record.i32(someImageSide(choice, plane.width)).i32(someImageSide(choice, plane.height));
    record.i32(choice.oneIn(3) ? 1 : 0).i32(choice.of(kNumbers)).i32(choice.of(kNumbers));
    record.u8(truthValue(choice, choice.oneIn(5)));
    layXform(choice, record, version);
    record.u8(choice.oneIn(100) ? 1 : 0).i32(choice.of(kNumbers)).i32(choice.of(kNumbers));
    record.u8(truthValue(choice, !choice.oneIn(8)));
    layFloats(choice, record, someCount(choice, plane));
    std::string bytes = record.bytes();
    if (choice.oneIn(10)) bytes.resize(choice.below(bytes.size()));
    return bytes;
}

}  // namespace model
