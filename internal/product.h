// A product that is rounded before anything is added to it.
#pragma once

// Both libraries include this file: neither is built with flags that give bits away for speed.
#if defined(__FAST_MATH__) || (defined(__FINITE_MATH_ONLY__) && __FINITE_MATH_ONLY__) || \
    defined(__ASSOCIATIVE_MATH__) || defined(__RECIPROCAL_MATH__) ||                     \
    defined(__NO_SIGNED_ZEROS__) || defined(_M_FP_FAST)
#error "Every build gives the same bits: leave out -ffast-math, its parts, -Ofast and /fp:fast."
#endif
#if defined(__FLT_EVAL_METHOD__) && (__FLT_EVAL_METHOD__ < 0 || __FLT_EVAL_METHOD__ > 1)
#error "Every build gives the same bits: compute floats as floats, -msse2 -mfpmath=sse on x86."
#endif

#if defined(_MSC_VER) && !defined(__clang__)
#pragma fp_contract(off)
#endif

#if defined(__has_builtin)
#if __has_builtin(__builtin_assoc_barrier)
#define MVFREQ_BARRIER(value) __builtin_assoc_barrier(value)
#endif
#endif
#if !defined(MVFREQ_BARRIER)
#define MVFREQ_BARRIER(value) (value)
#endif

// What sources for different processors include is never kept out of line: they would share a copy.
#if defined(__GNUC__)
#define MVFREQ_ALWAYS_INLINE [[gnu::always_inline]] inline
#else
#define MVFREQ_ALWAYS_INLINE inline
#endif

namespace mvi {

/// a * b for a sum: what is added to it never shares its rounding.
///
/// All sources are built with -ffp-contract=off, and that should be enough. But g++ makes one
/// instruction of products whose sums and differences alternate, as in a complex product, where the
/// processor has it (vfmaddsub: g++ 12; fcmla of AArch64). It does not look behind a barrier, which
/// costs nothing. So every product of floats or doubles that feeds a sum is written with this
/// function, but for vectors of machine registers: g++ looks for no patterns among these, and a
/// barrier would take them to pieces.
template <class A, class B>
MVFREQ_ALWAYS_INLINE constexpr auto product(A a, B b) {
#if defined(__clang__)
#pragma clang fp contract(off)
#endif
    return MVFREQ_BARRIER(a * b);
}

}  // namespace mvi

#undef MVFREQ_BARRIER
