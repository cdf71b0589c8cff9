// Numbers for arguments of type long, which has 64 bits on some machines and 32 on others.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

namespace support {

/// Whether a long holds more than 32 bits.
inline constexpr bool kLongIsWide = sizeof(long) > sizeof(std::int32_t);

/// The number, or the nearest one that a long holds.
constexpr long asLong(std::int64_t number) {
    return static_cast<long>(std::clamp<std::int64_t>(number, std::numeric_limits<long>::min(),
                                                      std::numeric_limits<long>::max()));
}

/// 2 to that power, or the largest long.
constexpr long powerOfTwo(int exponent) {
    return asLong(std::int64_t{1} << exponent);
}

/// The entries, and those that only a long of more than 32 bits has where it has as many.
template <class Entries>
Entries thatLongsHold(Entries entries, Entries ofWideLongs) {
    if (kLongIsWide) entries.insert(entries.end(), ofWideLongs.begin(), ofWideLongs.end());
    return entries;
}

}  // namespace support
