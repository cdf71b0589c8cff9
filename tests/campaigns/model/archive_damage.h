// Records that are stored, damaged and loaded.
#pragma once

#include <string>

#include "support/archive_bytes.h"

namespace model {

/// What a step makes of a record before it is loaded: 0 nothing, 1 to 15 so many sixteenths of it,
/// from 16 on another byte. In a filter's record the first ones are two versions and a flag.
inline std::string damaged(std::string bytes, long how) {
    if (how >= 16) bytes[static_cast<std::size_t>(how - 16)] = 7;
    if (how > 0 && how < 16) bytes.resize(bytes.size() * static_cast<std::size_t>(how) / 16);
    return bytes;
}

template <class T>
std::string stored(T& object) {
    return support::storedBy([&](mvArchive& ar) { ar || object; });
}

template <class T>
void loadInto(T& object, const std::string& bytes) {
    support::Loading loading(bytes);
    loading.archive() || object;
}

}  // namespace model
