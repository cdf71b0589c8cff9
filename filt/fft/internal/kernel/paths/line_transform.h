// One-dimensional transforms of many lines at once, one line per lane.
#pragma once
#include <filt/fft/internal/kernel/paths/twiddles.h>
#include <internal/product.h>

namespace mvi {

/// One element of all lines.
template <class V>
struct Elements {
    V re, im;

    /// From and to as many real parts as there are lanes and then so many imaginary parts.
    static Elements load(const float* from) { return {V::load(from), V::load(from + V::kLanes)}; }
    void store(float* to) const { re.store(to), im.store(to + V::kLanes); }

    template <bool kConjugate>
    Elements conjugatedIf() const {
        return {re, kConjugate ? -im : im};
    }
};

/// Forward split-radix transform, decimation in frequency.
///
/// With w = e^(-2 pi i / n) and Q = n / 4, the frequencies of a block x of n elements are
///
///     X(2k)     = transform of length n/2 of   x(j) + x(j + 2Q)
///     X(4k + 1) = transform of length n/4 of ((x(j) - x(j + 2Q)) - i (x(j + Q) - x(j + 3Q))) w^j
///     X(4k + 3) = transform of length n/4 of ((x(j) - x(j + 2Q)) + i (x(j + Q) - x(j + 3Q))) w^3j
///
/// for j = 0 .. Q - 1. One L-shaped butterfly makes the j-th element of each part: 12 additions for
/// its sums and differences, then 8 products and 4 additions for the two factors. Factors that are
/// 1 are multiplied by as well: all butterflies are alike, and zeros keep the signs that this gives
/// them. A line of N = 2^m elements, m >= 1, takes ((3 m - 2) N + 2 (-1)^m) / 18 butterflies and
/// (N - (-1)^m) / 3 sums and differences of neighbours: 1593 and 341 for N = 1024.
///
/// The scheme is that of P. Duhamel and H. Hollmann, "Split radix FFT algorithm", Electronics
/// Letters 20 (1984), in the arrangement of H. V. Sorensen, M. T. Heideman and C. S. Burrus, "On
/// computing the split-radix FFT", IEEE Trans. ASSP 34 (1986). Its factors grow by rotation:
/// w^(j+1) = w^j w in single precision, which is part of the result's bits.
///
/// Every lane runs the very same operations in the same order as a single line would. Two stages go
/// through the registers at once; blocks are finished depth first, while they are in the nearest
/// cache; the last sweep stores each element under its natural index, so that no bit reversal is
/// left to do. The steps are short and called everywhere; out of line they would run at half the
/// speed.
template <class V>
class LineTransform {
  public:
    using Z = Elements<V>;

    /// Transforms N elements: `load(i)` gives element i, `store(k, z)` takes frequency k. `scratch`
    /// holds N elements.
    template <long N, class Load, class Store>
    static void transform(Z* scratch, const Load& load, const Store& store) {
        if constexpr (N <= kLeaf) {
            leaf<N>(load, 0, 1, store);
        } else {
            twoStages<N>(load, [scratch](long i, Z z) { scratch[i] = z; });
            finishParts<N>(scratch, 0, 1, store);
        }
    }

    /// The same for a length that is known late: a power of two of at most kLongest. Each length
    /// has a program of its own.
    template <long kLongest = 2048, class Load, class Store>
    static void transform(long n, Z* scratch, const Load& load, const Store& store) {
        if (n == kLongest) return transform<kLongest>(scratch, load, store);
        if constexpr (kLongest > 1) transform<kLongest / 2>(n, scratch, load, store);
    }

    /// Transforms `lines`, which is overwritten, to `result`.
    static void between(Z* lines, Z* result, long n) {
        transform(
            n, lines, [lines](long i) { return lines[i]; },
            [result](long k, Z z) { result[k] = z; });
    }

    /// The factors of the separation of n = 2, 4 ... 1024 complex points; entry i, 1 to n/2 - 1,
    /// is that of the elements i and n - i.
    static constexpr const TwiddleTables::Factor* separationFactors(long n) {
        return kTwiddles.separation + (n / 2 - 1);
    }

  private:
    using Factors = TwiddleTables::Butterfly;

    // The span / 4 factors of the stage of span 4, 8 ... 2048.
    static constexpr const Factors* stageFactors(long span) {
        return kTwiddles.stage + (span / 4 - 1);
    }

    // Blocks of this length are transformed in registers.
    static constexpr long kLeaf = 8;

    MVFREQ_ALWAYS_INLINE static void butterfly(Z& z0, Z& z1, Z& z2, Z& z3, const Factors& w) {
        const V r1 = z0.re - z2.re, r2 = z1.re - z3.re;
        const V s1 = z0.im - z2.im, s2 = z1.im - z3.im;
        z0 = {z0.re + z2.re, z0.im + z2.im};
        z1 = {z1.re + z3.re, z1.im + z3.im};
        const V r3 = r1 - s2, r4 = r1 + s2;
        const V s3 = r2 - s1, s4 = r2 + s1;
        z2 = {r4 * w.re1 - s3 * w.im1, -s3 * w.re1 - r4 * w.im1};
        z3 = {r3 * w.re3 + s4 * w.im3, s4 * w.re3 - r3 * w.im3};
    }

    // The stage of span n on a whole block and that of span n/2 on its first half.
    template <long n, class Load, class Save>
    MVFREQ_ALWAYS_INLINE static void twoStages(const Load& load, const Save& save) {
        const long e = n / 8;
        const Factors* const outer = stageFactors(n);
        const Factors* const inner = stageFactors(n / 2);
        for (long j = 0; j < e; ++j) {
            Z z0 = load(j), z1 = load(j + e), z2 = load(j + 2 * e), z3 = load(j + 3 * e);
            Z z4 = load(j + 4 * e), z5 = load(j + 5 * e), z6 = load(j + 6 * e),
              z7 = load(j + 7 * e);
            butterfly(z0, z2, z4, z6, outer[j]);
            save(j + 4 * e, z4), save(j + 6 * e, z6);
            butterfly(z1, z3, z5, z7, outer[j + e]);
            save(j + 5 * e, z5), save(j + 7 * e, z7);
            butterfly(z0, z1, z2, z3, inner[j]);
            save(j, z0), save(j + e, z1), save(j + 2 * e, z2), save(j + 3 * e, z3);
        }
    }

    // What two stages leave of a block of n. The frequency of a part's first element, in units of
    // the step between the block's frequencies, is the position of the part with its bits reversed.
    template <long n, class Store>
    static void finishParts(Z* z, long first, long step, const Store& store) {
        finish<n / 4>(z, first, 4 * step, store);
        finish<n / 8>(z + n / 4, first + 2 * step, 8 * step, store);
        finish<n / 8>(z + n / 4 + n / 8, first + 6 * step, 8 * step, store);
        finish<n / 4>(z + n / 2, first + step, 4 * step, store);
        finish<n / 4>(z + n / 2 + n / 4, first + 3 * step, 4 * step, store);
    }

    template <long n, class Store>
    static void finish(Z* z, long first, long step, const Store& store) {
        const auto load = [z](long i) { return z[i]; };
        if constexpr (n <= kLeaf) {
            leaf<n>(load, first, step, store);
        } else {
            twoStages<n>(load, [z](long i, Z value) { z[i] = value; });
            finishParts<n>(z, first, step, store);
        }
    }

    template <long n, class Load, class Store>
    MVFREQ_ALWAYS_INLINE static void leaf(const Load& load, long first, long step,
                                          const Store& store) {
        Z z[n];
        loadAll<n, 0>(z, load);
        inRegisters<n>(z);
        storeAll<n, 0>(z, first, step, store);
    }

    // A whole block of n elements, stage after stage; the loops are unrolled by recursion, so that
    // the elements need no memory.
    template <long n>
    MVFREQ_ALWAYS_INLINE static void inRegisters(Z* z) {
        if constexpr (n == 2) {
            const Z difference{z[0].re - z[1].re, z[0].im - z[1].im};
            z[0] = {z[0].re + z[1].re, z[0].im + z[1].im};
            z[1] = difference;
        } else if constexpr (n > 2) {
            butterflies<n, 0>(z);
            inRegisters<n / 2>(z);
            inRegisters<n / 4>(z + n / 2);
            inRegisters<n / 4>(z + n / 2 + n / 4);
        }
    }

    template <long n, long j>
    MVFREQ_ALWAYS_INLINE static void butterflies(Z* z) {
        butterfly(z[j], z[j + n / 4], z[j + n / 2], z[j + n / 2 + n / 4], stageFactors(n)[j]);
        if constexpr (j + 1 < n / 4) butterflies<n, j + 1>(z);
    }

    template <long n, long i, class Load>
    MVFREQ_ALWAYS_INLINE static void loadAll(Z* z, const Load& load) {
        z[i] = load(i);
        if constexpr (i + 1 < n) loadAll<n, i + 1>(z, load);
    }

    template <long n, long i, class Store>
    MVFREQ_ALWAYS_INLINE static void storeAll(const Z* z, long first, long step,
                                              const Store& store) {
        store(first + step * reversed(i, n), z[i]);
        if constexpr (i + 1 < n) storeAll<n, i + 1>(z, first, step, store);
    }

    static constexpr long reversed(long i, long n) {
        return n == 1 ? 0 : (i % 2) * (n / 2) + reversed(i / 2, n / 2);
    }
};

}  // namespace mvi
