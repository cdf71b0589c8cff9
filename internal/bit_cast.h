// The bits of a value as another type, for both libraries.
#pragma once

#include <bit>

namespace mvi {

/// std::bit_cast, or the compiler's own where the standard library is older than its compiler.
template <class To, class From>
constexpr To bitCast(const From& from) noexcept {
#if defined(__cpp_lib_bit_cast)
    return std::bit_cast<To>(from);
#else
    static_assert(sizeof(To) == sizeof(From));
    return __builtin_bit_cast(To, from);
#endif
}

}  // namespace mvi
