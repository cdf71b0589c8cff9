// Where a virtual function stands in the table of its class.
#pragma once

#include <internal/bit_cast.h>

#include <cstddef>
#include <type_traits>

namespace support {

/// The place of a virtual function, counted from 0, in the table of the class that the pointer
/// names, as the Itanium ABI lays tables out; -1 for a function that is not virtual. A virtual
/// destructor takes two places.
template <class Function>
std::ptrdiff_t slotOf(Function function) {
    static_assert(std::is_member_function_pointer_v<Function>);
    struct {
        std::ptrdiff_t pointer, adjustment;
    } words = {};
    static_assert(sizeof words == sizeof function);
    words = mvi::bitCast<decltype(words)>(function);
    // A virtual function is given by its offset. What marks it is a bit that addresses of functions
    // leave free: one of the pointer, or, where that is needed for the instruction set, one of the
    // adjustment.
#if defined(__arm__) || defined(__aarch64__) || defined(__wasm__)
    const bool isVirtual = words.adjustment % 2 != 0;
    const std::ptrdiff_t offset = words.pointer;
#else
    const bool isVirtual = words.pointer % 2 != 0;
    const std::ptrdiff_t offset = words.pointer - 1;
#endif
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(void*));
    return isVirtual ? offset / size : -1;
}

}  // namespace support
