// Random choices.
#pragma once

#include <cstddef>
#include <iterator>

namespace support {

/// The same for the same seed on every machine: the standard's distributions are not.
class Draw {
  public:
    explicit Draw(unsigned long seed) : state_(seed * 2 + 1) {
        for (int i = 0; i < 4; ++i) next();
    }
    /// From 0 to count - 1.
    long below(long count) { return static_cast<long>(next() % static_cast<unsigned long>(count)); }
    bool oneIn(long count) { return below(count) == 0; }
    template <class List>
    auto of(const List& list) {
        return list[static_cast<std::size_t>(below(static_cast<long>(std::size(list))))];
    }

  private:
    unsigned long next() {
        state_ = state_ * 6364136223846793005UL + 1442695040888963407UL;
        unsigned long mixed = state_ ^ (state_ >> 29);
        mixed *= 0xBF58476D1CE4E5B9UL;
        return (mixed ^ (mixed >> 32)) >> 8;
    }

    unsigned long state_;
};

}  // namespace support
