// The column passes over a plane, a few columns at a time.
#pragma once

#include <filt/fft/internal/kernel/path.h>
#include <filt/fft/internal/kernel/paths/line_transform.h>
#include <filt/fft/internal/kernel/paths/vector.h>

namespace mvi {

/// The column passes with the lanes of the vector type V. Columns come into lanes by splitting real
/// and imaginary parts.
template <class V>
class ColumnPasses {
  public:
    /// As KernelPath::complexColumns.
    static void complexColumns(const float* const* rows, float* dst, long pitch, long height,
                               long x, long count, Direction direction, float* scratch) {
        Z* const lines = reinterpret_cast<Z*>(scratch);
        long i = 0;
        for (; i + kLanes <= count; i += kLanes) {
            transform(RowColumns{rows, x + i}, Columns{dst + 2 * i, pitch}, height, direction,
                      lines);
        }
        if (i == count) return;
        // A real spectrum has a column more than fill its vectors.
        if constexpr (kLanes > 1) {
            if (count - i == 1) {
                ColumnPasses<OneLane<V>>::complexColumns(rows, dst + 2 * i, pitch, height, x + i, 1,
                                                         direction, scratch);
            } else {
                const SomeColumns columns{rows, x + i, dst + 2 * i, pitch, count - i, direction};
                columns.transform(height, lines);
            }
        }
    }

  private:
    static constexpr long kLanes = V::kLanes;
    using Z = Elements<V>;

    // The columns of rows of elements from column x on.
    struct RowColumns {
        const float* const* rows;
        long x;

        Z load(long y) const {
            const float* const ahead = rows[y + kRowsAhead] + 2 * x;
            MVFREQ_PREFETCH(ahead);
            MVFREQ_PREFETCH(ahead + kLanes);
            return unzipped(rows[y] + 2 * x);
        }
    };

    // Where columns of a plane go.
    struct Columns {
        float* first;
        long pitch;

        void store(long y, Z z) const { zipTo(first + y * pitch, z); }
    };

    // Fewer columns than fill a vector.
    struct SomeColumns {
        const float* const* rows;
        long x;
        float* first;
        long pitch;
        long count;
        Direction direction;

        void transform(long height, Z* lines) const {
            LineTransform<V>::transform(
                height, lines, [this](long y) { return load(y); },
                [this](long y, Z z) { store(y, z); });
        }

        Z load(long y) const {
            float row[2 * kLanes] = {};
            for (long i = 0; i < 2 * count; ++i) row[i] = rows[y][2 * x + i];
            return conjugatedIfInverse(unzipped(row));
        }

        void store(long y, Z z) const {
            float row[2 * kLanes];
            zipTo(row, conjugatedIfInverse(z));
            for (long i = 0; i < 2 * count; ++i) first[y * pitch + i] = row[i];
        }

        Z conjugatedIfInverse(Z z) const {
            return direction == Direction::inverse ? z.template conjugatedIf<true>() : z;
        }
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

    static void transform(const RowColumns& from, const Columns& to, long height,
                          Direction direction, Z* lines) {
        if (direction == Direction::inverse) {
            transform<true>(from, to, height, lines);
        } else {
            transform<false>(from, to, height, lines);
        }
    }

    template <bool kInverse>
    static void transform(const RowColumns& from, const Columns& to, long height, Z* lines) {
        LineTransform<V>::transform(
            height, lines, [&](long y) { return from.load(y).template conjugatedIf<kInverse>(); },
            [&](long y, Z z) { to.store(y, z.template conjugatedIf<kInverse>()); });
    }
};

}  // namespace mvi
