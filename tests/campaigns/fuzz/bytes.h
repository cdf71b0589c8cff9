// The bytes of an input as values.
#pragma once

#include <algorithm>
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

}  // namespace fuzz
