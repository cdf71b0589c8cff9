// The row pass and the column pass over a plane, in steps of a few rows or columns.
#pragma once

#include <filt/fft/internal/kernel/path.h>
#include <filt/fft/internal/kernel/paths/line_transform.h>
#include <filt/fft/internal/kernel/paths/vector.h>

namespace mvi {

/// The passes with the lanes of the vector type V.
///
/// Lines are brought into lanes on the way in and out of a scratch of V-wide elements: rows by
/// transposition in registers, columns by splitting real and imaginary parts.
template <class V>
class Passes {
  public:
    static constexpr long kLanes = V::kLanes;

    /// Transforms `count` complex rows of `width` elements from `src` to `dst`, which may be the
    /// same rows. Inverse: conjugated before and after.
    static void complexRows(const float* const* src, float* const* dst, long count, long width,
                            Direction direction, float* scratch) {
        for (long r = 0; r < count; r += kLanes) {
            const Rows rows(src + r, dst + r, count - r);
            Z* const lines = reinterpret_cast<Z*>(scratch);
            Z* const result = lines + width;
            if (direction == Direction::inverse) {
                transformRows<true>(rows, width, lines, result);
            } else {
                transformRows<false>(rows, width, lines, result);
            }
            storeRows(rows, result, width);
        }
    }

    /// Transforms `count` rows of `width` packed reals to their width / 2 + 1 lowest frequencies.
    static void realRows(const float* const* src, float* const* dst, long count, long width,
                         float* scratch) {
        const long half = width / 2;
        for (long r = 0; r < count; r += kLanes) {
            const Rows rows(src + r, dst + r, count - r);
            Z* const lines = reinterpret_cast<Z*>(scratch);
            Z* const result = lines + half;
            loadRows(rows, lines, half);
            realLines(lines, result, half);
            storeRows(rows, result, half);
            storeElements(rows, result, half, half + 1);
        }
    }

    /// Transforms the columns x .. x + count - 1 of `height` rows; those of row y go to
    /// dst + y * pitch.
    static void complexColumns(const float* const* rows, float* dst, long pitch, long height,
                               long x, long count, Direction direction, float* scratch) {
        long i = 0;
        for (; i + kLanes <= count; i += kLanes) {
            const WholeColumns columns(rows, x + i, dst + 2 * i, pitch);
            transformColumns(columns, height, direction, scratch);
        }
        if constexpr (kLanes > 1) {
            // A real spectrum has a column more than fill its vectors.
            if (count - i == 1) {
                Passes<OneLane<V>>::complexColumns(rows, dst + 2 * i, pitch, height, x + i, 1,
                                                   direction, scratch);
            } else if (i < count) {
                const SomeColumns columns(rows, x + i, dst + 2 * i, pitch, count - i);
                transformColumns(columns, height, direction, scratch);
            }
        }
    }

    using Z = Elements<V>;

    /// Transforms n elements of all lanes; lengths are powers of two up to 2048, and each has a
    /// program of its own.
    template <long N = 2048, class Load, class Store>
    static void transformLines(long n, Z* scratch, const Load& load, const Store& store) {
        if (n == N) return LineTransform<V>::template transform<N>(scratch, load, store);
        if constexpr (N > 1) transformLines<N / 2>(n, scratch, load, store);
    }

    /// The n + 1 lowest frequencies of n packed pairs of reals.
    static void realLines(Z* lines, Z* result, long n) {
        transformLines(
            n, lines, [lines](long i) { return lines[i]; },
            [result](long k, Z z) { result[k] = z; });
        separate(result, n);
    }

  private:
    // Elements of a row that fill one vector.
    static constexpr long kBlock = kLanes / 2;

    // Rows of this width and more are written in long runs.
    static constexpr long kWideRow = 512;

    // kLanes rows; where there are fewer, the lanes beyond do once more what the first one does.
    struct Rows {
        Rows(const float* const* src, float* const* dst, long available) {
            for (long r = 0; r < kLanes; ++r) {
                from[r] = src[r < available ? r : 0];
                to[r] = dst[r < available ? r : 0];
            }
        }
        const float* from[kLanes];
        float* to[kLanes];
    };

    // kLanes columns of a plane.
    class WholeColumns {
      public:
        WholeColumns(const float* const* rows, long x, float* to, long pitch)
            : rows_(rows), x_(x), to_(to), pitch_(pitch) {}

        Z load(long y) const {
            const float* const ahead = rows_[y + kRowsAhead] + 2 * x_;
            MVFREQ_PREFETCH(ahead);
            MVFREQ_PREFETCH(ahead + kLanes);
            return unzipped(rows_[y] + 2 * x_);
        }

        void store(long y, Z z) const { zipTo(to_ + y * pitch_, z); }

      private:
        const float* const* rows_;
        long x_;
        float* to_;
        long pitch_;
    };

    // Fewer columns than lanes.
    class SomeColumns {
      public:
        SomeColumns(const float* const* rows, long x, float* to, long pitch, long count)
            : rows_(rows), x_(x), to_(to), pitch_(pitch), floats_(2 * count) {}

        Z load(long y) const {
            const float* const row = rows_[y] + 2 * x_;
            float padded[2 * kLanes] = {};
            for (long i = 0; i < floats_; ++i) padded[i] = row[i];
            return unzipped(padded);
        }

        void store(long y, Z z) const {
            float padded[2 * kLanes];
            zipTo(padded, z);
            for (long i = 0; i < floats_; ++i) to_[y * pitch_ + i] = padded[i];
        }

      private:
        const float* const* rows_;
        long x_;
        float* to_;
        long pitch_;
        long floats_;
    };

    static Z unzipped(const float* row) {
        Z z;
        V::unzip(V::load(row), V::load(row + kLanes), z.re, z.im);
        return z;
    }

    static void zipTo(float* row, Z z) {
        V a, b;
        V::zip(z.re, z.im, a, b);
        a.store(row), b.store(row + kLanes);
    }

    template <bool kConjugate>
    static Z conjugatedIf(Z z) {
        if constexpr (kConjugate) z.im = -z.im;
        return z;
    }

    template <bool kInverse>
    static void transformRows(const Rows& rows, long width, Z* lines, Z* result) {
        loadRows(rows, lines, width);
        transformLines(
            width, lines, [lines](long i) { return conjugatedIf<kInverse>(lines[i]); },
            [result](long k, Z z) { result[k] = conjugatedIf<kInverse>(z); });
    }

    template <bool kInverse, class Columns>
    static void transformColumns(const Columns& columns, long height, Z* lines) {
        transformLines(
            height, lines, [&](long y) { return conjugatedIf<kInverse>(columns.load(y)); },
            [&](long y, Z z) { columns.store(y, conjugatedIf<kInverse>(z)); });
    }

    template <class Columns>
    static void transformColumns(const Columns& columns, long height, Direction direction,
                                 float* scratch) {
        Z* const lines = reinterpret_cast<Z*>(scratch);
        if (direction == Direction::inverse) {
            transformColumns<true>(columns, height, lines);
        } else {
            transformColumns<false>(columns, height, lines);
        }
    }

    // Loads half a vector of elements from each row; transposed, each vector holds one part of one
    // element of all rows.
    static void loadRows(const Rows& rows, Z* lines, long width) {
        long x = 0;
        for (; x + kBlock <= width; x += kBlock) {
            V block[kLanes];
            for (long r = 0; r < kLanes; ++r) block[r] = V::load(rows.from[r] + 2 * x);
            V::transpose(block);
            for (long i = 0; i < kBlock; ++i) lines[x + i] = {block[2 * i], block[2 * i + 1]};
        }
        for (; x < width; ++x) {
            float re[kLanes], im[kLanes];
            for (long r = 0; r < kLanes; ++r) {
                re[r] = rows.from[r][2 * x];
                im[r] = rows.from[r][2 * x + 1];
            }
            lines[x] = {V::load(re), V::load(im)};
        }
    }

    // Rows a power of two apart compete for the same cache lines; each row is written in long runs,
    // where the lanes are as many rows as the cache has ways.
    static void storeRows(const Rows& rows, const Z* lines, long width) {
        constexpr long kRun = 64, kPitch = 2 * kRun + 16;
        alignas(64) float run[kLanes][kPitch];
        long x = 0;
        for (; kLanes >= 8 && width >= kWideRow && x + kRun <= width; x += kRun) {
            for (long i = 0; i < kRun; i += kBlock) {
                V block[kLanes];
                transposedBlock(lines + x + i, block);
                for (long r = 0; r < kLanes; ++r) block[r].store(run[r] + 2 * i);
            }
            for (long r = 0; r < kLanes; ++r) {
                for (long i = 0; i < 2 * kRun; i += kLanes) {
                    V::load(run[r] + i).store(rows.to[r] + 2 * x + i);
                }
            }
        }
        for (; x + kBlock <= width; x += kBlock) {
            V block[kLanes];
            transposedBlock(lines + x, block);
            for (long r = 0; r < kLanes; ++r) block[r].store(rows.to[r] + 2 * x);
        }
        storeElements(rows, lines, x, width);
    }

    MVFREQ_ALWAYS_INLINE static void transposedBlock(const Z* lines, V (&block)[kLanes]) {
        for (long i = 0; i < kBlock; ++i) {
            block[2 * i] = lines[i].re;
            block[2 * i + 1] = lines[i].im;
        }
        V::transpose(block);
    }

    static void storeElements(const Rows& rows, const Z* lines, long x, long end) {
        for (; x < end; ++x) {
            float re[kLanes], im[kLanes];
            lines[x].re.store(re), lines[x].im.store(im);
            for (long r = 0; r < kLanes; ++r) {
                rows.to[r][2 * x] = re[r];
                rows.to[r][2 * x + 1] = im[r];
            }
        }
    }

    // Splits the spectrum Z of n packed pairs z(j) = x(2j) + i x(2j + 1) into the n + 1 lowest
    // frequencies X of the 2 n reals x. The even and the odd samples have the spectra
    //
    //     E(k) = (Z(k) + conj Z(n - k)) / 2,   O(k) = -i (Z(k) - conj Z(n - k)) / 2,
    //
    // and X(k) = E(k) + w^k O(k), X(n - k) = conj (E(k) - w^k O(k)) with w = e^(-pi i / n): the
    // elements k and n - k need only each other. Below, h1 is E and h2 is O; a pair takes 4
    // halvings, 4 products and 12 additions. X(0) and X(n) are the sum and the difference of the
    // parts of Z(0), and X(n / 2) is conj Z(n / 2). The factors grow by rotation in single
    // precision, w^(k+1) = w^k + w^k (w - 1), which is part of the bits.
    static void separate(Z* z, long n) {
        const TwiddleTables::Factor* const factors =
            LineTransform<V>::separationFactors(n < 2 ? 2 : n);
        for (long i = 1; i < n / 2; ++i) {
            Z &a = z[i], &b = z[n - i];
            const float re = factors[i].re, im = factors[i].im;
            const V h1r = (a.re + b.re) * 0.5f, h1i = (a.im - b.im) * 0.5f;
            const V h2r = (a.im + b.im) * 0.5f, h2i = (a.re - b.re) * -0.5f;
            a = {h1r + h2r * re - h2i * im, h1i + h2i * re + h2r * im};
            b = {h1r - h2r * re + h2i * im, -h1i + h2i * re + h2r * im};
        }
        if (n >= 2) z[n / 2].im = -z[n / 2].im;
        const Z dc = z[0];
        const V zero = V::filled(0.0f);
        z[0] = {dc.re + dc.im, zero};
        z[n] = {dc.re - dc.im, zero};
    }
};

}  // namespace mvi
