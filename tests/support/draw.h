// Random choices.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>

namespace support {

/// The same for the same seed on every machine: the standard's distributions are not.
class Draw {
  public:
    explicit Draw(std::uint64_t seed) : state_(seed * 2 + 1) {
        for (int i = 0; i < 4; ++i) next();
    }
    /// From 0 to count - 1.
    long below(long count) { return static_cast<long>(next() % static_cast<std::uint64_t>(count)); }
    bool oneIn(long count) { return below(count) == 0; }
    template <class List>
    auto of(const List& list) {
        return list[static_cast<std::size_t>(below(static_cast<long>(std::size(list))))];
    }

  private:
    std::uint64_t next() {
        state_ = state_ * std::uint64_t{6364136223846793005} + std::uint64_t{1442695040888963407};
        std::uint64_t mixed = state_ ^ (state_ >> 29);
        mixed *= std::uint64_t{0xBF58476D1CE4E5B9};
        return (mixed ^ (mixed >> 32)) >> 8;
    }

    std::uint64_t state_;
};

}  // namespace support
