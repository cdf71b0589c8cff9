// Archive records laid byte by byte.
#pragma once

#include <base/archive.h>
#include <internal/bit_cast.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "support/archive_bytes.h"

namespace archive {

/// Bytes in the order in which they are laid.
class Record {
  public:
    Record& u8(unsigned value) {
        bytes_.push_back(static_cast<char>(value));
        return *this;
    }
    Record& flag(bool value) { return u8(value ? 1 : 0); }
    Record& u32(std::uint32_t value) { return little(value, 4); }
    Record& i32(std::int32_t value) { return u32(static_cast<std::uint32_t>(value)); }
    Record& f32(float value) { return u32(mvi::bitCast<std::uint32_t>(value)); }
    Record& f64(double value) { return little(mvi::bitCast<std::uint64_t>(value), 8); }
    Record& text(std::string_view value) {
        u32(static_cast<std::uint32_t>(value.size()));
        bytes_ += value;
        return *this;
    }
    Record& then(const Record& other) {
        bytes_ += other.bytes_;
        return *this;
    }

    Record& integerPair(std::int32_t x, std::int32_t y) { return u8(0).i32(x).i32(y); }
    Record& doublePair(double x, double y) { return u8(0).f64(x).f64(y); }
    Record& floats(const std::vector<float>& values) {
        u8(0).u32(static_cast<std::uint32_t>(values.size()));
        for (const float value : values) f32(value);
        return *this;
    }

    const std::string& bytes() const { return bytes_; }

  private:
    Record& little(std::uint64_t value, int size) {
        for (int i = 0; i < size; ++i) u8(static_cast<unsigned>(value >> (8 * i) & 0xFF));
        return *this;
    }

    std::string bytes_;
};

/// The bytes that storing the values, in one archive, leaves in a stream.
template <class... T>
std::string stored(T&... values) {
    return support::storedBy([&](mvArchive& ar) { (static_cast<void>(ar || values), ...); });
}

}  // namespace archive
