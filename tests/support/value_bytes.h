// The bytes of base library values.
#pragma once

#include <string>

#include "support/archive_bytes.h"

using support::hex;
using support::Loading;
using support::storedBy;

/// The bytes of one value.
template <class Value>
std::string bytesOf(Value value) {
    return storedBy([&](mvArchive& ar) { ar || value; });
}
