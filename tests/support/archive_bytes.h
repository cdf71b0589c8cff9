// Archives in memory, and their bytes as text.
#pragma once

#include <base/archive.h>

#include <initializer_list>
#include <sstream>
#include <string>
#include <string_view>

namespace support {

/// The bytes that `store(archive)` leaves in the stream.
template <class Store>
std::string storedBy(Store store) {
    std::ostringstream out;
    mvArchive ar(out);
    store(ar);
    return out.str();
}

/// The bytes of objects stored by pointer, one after the other.
inline std::string storedByPointer(std::initializer_list<mvPersistent*> objects) {
    return storedBy([&](mvArchive& ar) {
        for (mvPersistent* object : objects) ar || object;
    });
}

/// An archive that loads from bytes in memory.
class Loading {
  public:
    explicit Loading(const std::string& bytes) : in_(bytes), archive_(in_) {}

    operator mvArchive&() { return archive_; }
    mvArchive& archive() { return archive_; }

    /// How many bytes have not been read.
    std::size_t rest() { return static_cast<std::size_t>(in_.rdbuf()->in_avail()); }

  private:
    std::istringstream in_;
    mvArchive archive_;
};

/// Two hexadecimal digits a byte, separated by blanks.
inline std::string hex(std::string_view bytes) {
    constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (!text.empty()) text += ' ';
        text += kDigits[byte / 16];
        text += kDigits[byte % 16];
    }
    return text;
}

}  // namespace support
