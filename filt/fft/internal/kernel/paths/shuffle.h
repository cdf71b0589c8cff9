// Lanes of two vectors in another order, for g++ before version 12: it knows another builtin, which
// takes the order as a vector.
#pragma once

#if defined(__GNUC__) && !defined(__clang__) && __GNUC__ < 12

#include <utility>

namespace mvi {

/// Of the lanes of both, one after the other, those at the indices. Not shared between paths.
template <class Vector, int... Index>
[[gnu::always_inline]] static inline Vector shuffled(Vector a, Vector b,
                                                     std::integer_sequence<int, Index...>) {
    using Order __attribute__((vector_size(sizeof(Vector)))) = int;
    return __builtin_shuffle(a, b, Order{Index...});
}

}  // namespace mvi

#define __builtin_shufflevector(a, b, ...) \
    mvi::shuffled(a, b, std::integer_sequence<int, __VA_ARGS__>{})

#endif
