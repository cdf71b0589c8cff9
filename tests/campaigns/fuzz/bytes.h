// The bytes of an input as values, and values that follow from them.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace fuzz {

class Bytes {
  public:
    explicit Bytes(std::string_view all) : all_(all) {}

    /// The next value; what lies behind the end counts as zeros.
    template <class T>
    T next() {
        T value{};
        const std::size_t size = std::min(sizeof(T), all_.size());
        std::memcpy(&value, all_.data(), size);
        all_.remove_prefix(size);
        return value;
    }
    bool holds(std::size_t size) const { return all_.size() >= size; }

  private:
    std::string_view all_;
};

/// Random values that begin at once: a generator of the standard library takes longer to make its
/// state than most inputs take altogether.
class Noise {
  public:
    explicit Noise(std::uint32_t seed) : state_(seed) {}

    /// 0 .. count - 1.
    std::uint32_t below(std::uint32_t count) {
        state_ = state_ * 6364136223846793005U + 1442695040888963407U;
        return static_cast<std::uint32_t>((state_ >> 32) * count >> 32);
    }

    /// -1 .. 1, of 2^24 + 1 equally spaced values.
    float symmetric() { return static_cast<float>(below((1U << 24) + 1)) / 8388608.0F - 1.0F; }

  private:
    std::uint64_t state_;
};

}  // namespace fuzz
