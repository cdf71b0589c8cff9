// Vectors of float lanes: what the passes need of an instruction set.
//
// This header is compiled once per instruction set. Nothing in it may be shared between the
// translation units of different sets: all types, and through them all functions, differ.
#pragma once

#include <filt/fft/internal/kernel/paths/pel_of.h>
#include <filt/fft/internal/kernel/paths/shuffle.h>
#include <internal/product.h>
// Not <cmath>, which has inline functions: linkers keep one of each, whatever processor it is for.
#include <math.h>  // NOLINT(modernize-deprecated-headers)

#include <utility>

namespace mvi {

// A hint to bring what stands at an address, if there is anything, into the cache.
#if defined(__GNUC__)
#define MVFREQ_PREFETCH(address) __builtin_prefetch(address)
#else
#define MVFREQ_PREFETCH(address) static_cast<void>(address)
#endif

/// L lanes as plain floats, for the compiler to vectorise as it can.
template <int L>
struct PlainVector {
    static constexpr int kLanes = L;

    float lane[L];

    static PlainVector load(const float* from) {
        PlainVector v;
        for (int i = 0; i < L; ++i) v.lane[i] = from[i];
        return v;
    }
    static PlainVector filled(float value) {
        PlainVector v;
        for (int i = 0; i < L; ++i) v.lane[i] = value;
        return v;
    }
    void store(float* to) const {
        for (int i = 0; i < L; ++i) to[i] = lane[i];
    }

    /// As PelOf rounds them.
    template <class T>
    void storePels(T* to) const {
        for (int i = 0; i < L; ++i) to[i] = PelOf<PlainVector>::template rounded<T>(lane[i]);
    }

    /// The square root of each lane.
    PlainVector root() const {
        PlainVector v;
        for (int i = 0; i < L; ++i) v.lane[i] = ::sqrtf(lane[i]);
        return v;
    }

    /// Lane by lane the product with the gain; +0 where that is a NaN.
    PlainVector gained(PlainVector gain) const {
        PlainVector v;
        for (int i = 0; i < L; ++i) {
            v.lane[i] = gain.lane[i] == gain.lane[i] ? lane[i] * gain.lane[i] : 0.0f;
        }
        return v;
    }

    friend PlainVector operator+(PlainVector a, PlainVector b) {
        for (int i = 0; i < L; ++i) a.lane[i] += b.lane[i];
        return a;
    }
    friend PlainVector operator-(PlainVector a, PlainVector b) {
        for (int i = 0; i < L; ++i) a.lane[i] -= b.lane[i];
        return a;
    }
    friend PlainVector operator*(PlainVector a, float b) {
        for (int i = 0; i < L; ++i) a.lane[i] = product(a.lane[i], b);
        return a;
    }
    friend PlainVector operator*(PlainVector a, PlainVector b) {
        for (int i = 0; i < L; ++i) a.lane[i] = product(a.lane[i], b.lane[i]);
        return a;
    }
    friend PlainVector operator-(PlainVector a) {
        for (int i = 0; i < L; ++i) a.lane[i] = -a.lane[i];
        return a;
    }

    /// Splits the L pairs of `a` and `b` into first and second members.
    static void unzip(PlainVector a, PlainVector b, PlainVector& first, PlainVector& second) {
        for (int i = 0; i < L / 2; ++i) {
            first.lane[i] = a.lane[2 * i];
            second.lane[i] = a.lane[2 * i + 1];
            first.lane[L / 2 + i] = b.lane[2 * i];
            second.lane[L / 2 + i] = b.lane[2 * i + 1];
        }
    }

    /// The inverse of unzip.
    static void zip(PlainVector first, PlainVector second, PlainVector& a, PlainVector& b) {
        for (int i = 0; i < L / 2; ++i) {
            a.lane[2 * i] = first.lane[i];
            a.lane[2 * i + 1] = second.lane[i];
            b.lane[2 * i] = first.lane[L / 2 + i];
            b.lane[2 * i + 1] = second.lane[L / 2 + i];
        }
    }

    /// The pairs in reverse order, their second members negated.
    PlainVector mirrored() const {
        PlainVector v;
        for (int i = 0; i < L; i += 2) {
            v.lane[i] = lane[L - 2 - i];
            v.lane[i + 1] = -lane[L - 1 - i];
        }
        return v;
    }

    static void transpose(PlainVector (&row)[L]) {
        for (int i = 0; i < L; ++i) {
            for (int j = 0; j < i; ++j) {
                const float swapped = row[i].lane[j];
                row[i].lane[j] = row[j].lane[i];
                row[j].lane[i] = swapped;
            }
        }
    }
};

/// One lane, for lines that fill no vector V.
template <class V>
struct OneLane {
    static constexpr int kLanes = 1;

    float raw;

    static OneLane load(const float* from) { return {*from}; }
    void store(float* to) const { *to = raw; }

    friend OneLane operator+(OneLane a, OneLane b) { return {a.raw + b.raw}; }
    friend OneLane operator-(OneLane a, OneLane b) { return {a.raw - b.raw}; }
    friend OneLane operator*(OneLane a, float b) { return {product(a.raw, b)}; }
    friend OneLane operator-(OneLane a) { return {-a.raw}; }

    static void unzip(OneLane a, OneLane b, OneLane& first, OneLane& second) {
        first = a;
        second = b;
    }
    static void zip(OneLane first, OneLane second, OneLane& a, OneLane& b) {
        a = first;
        b = second;
    }
};

#if defined(__GNUC__)

/// L lanes in a machine register.
template <int L>
struct MachineVector {
    static constexpr int kLanes = L;
    using Raw __attribute__((vector_size(4 * L))) = float;
    using Unaligned __attribute__((vector_size(4 * L), aligned(4), may_alias)) = float;

    Raw raw;

    static MachineVector load(const float* from) {
        return {*reinterpret_cast<const Unaligned*>(from)};
    }
    static MachineVector filled(float value) { return {value - Raw{}}; }
    void store(float* to) const { *reinterpret_cast<Unaligned*>(to) = raw; }

    friend MachineVector operator+(MachineVector a, MachineVector b) { return {a.raw + b.raw}; }
    friend MachineVector operator-(MachineVector a, MachineVector b) { return {a.raw - b.raw}; }
    // No product(): g++ makes patterns of scalars only, and takes a barrier's vector to pieces.
    friend MachineVector operator*(MachineVector a, float b) { return {a.raw * b}; }
    friend MachineVector operator*(MachineVector a, MachineVector b) { return {a.raw * b.raw}; }
    friend MachineVector operator-(MachineVector a) { return {-a.raw}; }

    /// As PelOf rounds them.
    template <class T>
    MVFREQ_ALWAYS_INLINE void storePels(T* to) const {
        if constexpr (T(0.5) != T(0)) {
            alignas(4 * L) float lanes[L];
            store(lanes);
            for (int i = 0; i < L; ++i) to[i] = lanes[i];
        } else {
            const Raw full = static_cast<T>(-1) - Raw{};
            const Raw positive = raw > Raw{} ? raw : Raw{};
            const Raw held = positive < full ? positive : full;
            storeAs((converted<int>(held + held) + 1) >> 1, to);
        }
    }

    /// The square root of each lane.
    MachineVector root() const {
        alignas(4 * L) float roots[L];
        store(roots);
        for (int i = 0; i < L; ++i) roots[i] = ::sqrtf(roots[i]);
        return load(roots);
    }

    /// Lane by lane the product with the gain; +0 where that is a NaN.
    MachineVector gained(MachineVector gain) const {
        return {gain.raw == gain.raw ? raw * gain.raw : Raw{}};
    }

    static void unzip(MachineVector a, MachineVector b, MachineVector& first,
                      MachineVector& second) {
        unzip(a.raw, b.raw, first.raw, second.raw, All());
    }
    static void zip(MachineVector first, MachineVector second, MachineVector& a, MachineVector& b) {
        zip(first.raw, second.raw, a.raw, b.raw, All());
    }
    MachineVector mirrored() const { return mirrored(All()); }

    /// In-register transposition: 4 x 4 within blocks of four lanes, then of the blocks.
    static void transpose(MachineVector (&row)[L]) {
        for (int i = 0; i < L; i += 4) transposeWithinBlocks(row + i, All());
        if constexpr (L > 4) {
            for (int c = 0; c < 4; ++c) transposeBlocks(row + c, All());
        }
    }

  private:
    // Lane by lane; that the types are parameters is for g++ to see vectors in them.
    template <class To, class From>
    MVFREQ_ALWAYS_INLINE static auto converted(From from) {
        using Vector __attribute__((vector_size(L * sizeof(To)))) = To;
        return __builtin_convertvector(from, Vector);
    }

    template <class T, class From>
    MVFREQ_ALWAYS_INLINE static void storeAs(From from, T* to) {
        using Vector __attribute__((vector_size(L * sizeof(T)), aligned(alignof(T)), may_alias)) =
            T;
        *reinterpret_cast<Vector*>(to) = converted<T>(from);
    }

    // Paths may share a type of the standard library, but none of its functions.
    using All = std::make_integer_sequence<int, L>;
    template <int... I>
    using Indices = std::integer_sequence<int, I...>;

    template <int... I>
    static void unzip(Raw a, Raw b, Raw& first, Raw& second, Indices<I...>) {
        first = __builtin_shufflevector(a, b, (2 * I)...);
        second = __builtin_shufflevector(a, b, (2 * I + 1)...);
    }

    template <int... I>
    static void zip(Raw first, Raw second, Raw& a, Raw& b, Indices<I...>) {
        a = __builtin_shufflevector(first, second, (I / 2 + (I % 2) * L)...);
        b = __builtin_shufflevector(first, second, (L / 2 + I / 2 + (I % 2) * L)...);
    }

    template <int... I>
    MachineVector mirrored(Indices<I...>) const {
        return {__builtin_shufflevector(raw, -raw, (L - 2 - I + I % 2 * (L + 2))...)};
    }

    // Block by block of four lanes: a[0] b[0] a[1] b[1], a[2] b[2] a[3] b[3], then pairs of these.
    template <int... I>
    static void transposeWithinBlocks(MachineVector* row, Indices<I...>) {
        const Raw a = row[0].raw, b = row[1].raw, c = row[2].raw, d = row[3].raw;
        const Raw ab0 = __builtin_shufflevector(a, b, (I / 4 * 4 + I % 4 / 2 + I % 2 * L)...);
        const Raw ab2 = __builtin_shufflevector(a, b, (I / 4 * 4 + 2 + I % 4 / 2 + I % 2 * L)...);
        const Raw cd0 = __builtin_shufflevector(c, d, (I / 4 * 4 + I % 4 / 2 + I % 2 * L)...);
        const Raw cd2 = __builtin_shufflevector(c, d, (I / 4 * 4 + 2 + I % 4 / 2 + I % 2 * L)...);
        row[0].raw = __builtin_shufflevector(ab0, cd0, (I / 4 * 4 + I % 2 + I % 4 / 2 * L)...);
        row[1].raw = __builtin_shufflevector(ab0, cd0, (I / 4 * 4 + 2 + I % 2 + I % 4 / 2 * L)...);
        row[2].raw = __builtin_shufflevector(ab2, cd2, (I / 4 * 4 + I % 2 + I % 4 / 2 * L)...);
        row[3].raw = __builtin_shufflevector(ab2, cd2, (I / 4 * 4 + 2 + I % 2 + I % 4 / 2 * L)...);
    }

    // The blocks of four lanes of the rows 0, 4, 8 ... change places as a matrix of blocks does.
    template <int... I>
    static void transposeBlocks(MachineVector* row, Indices<I...>) {
        const auto even = [](Raw a, Raw b) {
            return __builtin_shufflevector(a, b, (I / 4 * 8 + I % 4)...);
        };
        const auto odd = [](Raw a, Raw b) {
            return __builtin_shufflevector(a, b, (I / 4 * 8 + 4 + I % 4)...);
        };
        const Raw a = row[0].raw, b = row[4].raw;
        if constexpr (L == 8) {
            row[0].raw = even(a, b);
            row[4].raw = odd(a, b);
        } else {
            static_assert(L == 16);
            const Raw c = row[8].raw, d = row[12].raw;
            const Raw evenAb = even(a, b), oddAb = odd(a, b);
            const Raw evenCd = even(c, d), oddCd = odd(c, d);
            row[0].raw = even(evenAb, evenCd);
            row[4].raw = even(oddAb, oddCd);
            row[8].raw = odd(evenAb, evenCd);
            row[12].raw = odd(oddAb, oddCd);
        }
    }
};
#endif

}  // namespace mvi
