// Rows in lanes: how a few rows come into vectors, one row a lane, and out of them again.
#pragma once

#include <filt/fft/internal/kernel/path.h>
#include <filt/fft/internal/kernel/paths/line_transform.h>

namespace mvi {

/// The rows of a pass over rows with the lanes of the vector type V. Rows are brought into lanes
/// and out of them by transposition in registers.
template <class V>
class RowLanes {
  public:
    using Z = Elements<V>;
    static constexpr long kLanes = V::kLanes;

    /// As many pointers as there are lanes; where rows are fewer, the lanes beyond do once more
    /// what the first one does.
    template <class Pointer>
    struct Pointers {
        Pointers(const Pointer* rows, long available) {
            for (long r = 0; r < kLanes; ++r) row[r] = rows[r < available ? r : 0];
        }
        Pointer row[kLanes];
    };

    /// The first `width` elements of the rows, or their conjugates. Half a vector of elements is
    /// loaded from each row; transposed, each vector holds one part of one element of all rows.
    template <bool kConjugate>
    static void load(const float* const* rows, long available, Z* lines, long width) {
        const Pointers<const float*> from(rows, available);
        long x = 0;
        for (; x + kBlock <= width; x += kBlock) {
            V block[kLanes];
            for (long r = 0; r < kLanes; ++r) block[r] = V::load(from.row[r] + 2 * x);
            V::transpose(block);
            for (long i = 0; i < kBlock; ++i) {
                lines[x + i] =
                    Z{block[2 * i], block[2 * i + 1]}.template conjugatedIf<kConjugate>();
            }
        }
        for (; x < width; ++x) {
            float re[kLanes], im[kLanes];
            for (long r = 0; r < kLanes; ++r) {
                re[r] = from.row[r][2 * x];
                im[r] = from.row[r][2 * x + 1];
            }
            lines[x] = Z{V::load(re), V::load(im)}.template conjugatedIf<kConjugate>();
        }
    }

    /// Writes `width` elements of each row, or their conjugates. Rows a power of two apart compete
    /// for the same cache lines; each row is written in long runs, where the lanes are as many rows
    /// as the cache has ways.
    template <bool kConjugate>
    static void store(const Z* lines, float* const* rows, long available, long width) {
        constexpr long kRun = 64, kPitch = 2 * kRun + 16;
        const Pointers<float*> to(rows, available);
        alignas(64) float run[kLanes][kPitch];
        long x = 0;
        for (; kLanes >= 8 && width >= kWideRow && x + kRun <= width; x += kRun) {
            for (long i = 0; i < kRun; i += kBlock) {
                V block[kLanes];
                transposeElements<kConjugate>(lines + x + i, block);
                for (long r = 0; r < kLanes; ++r) block[r].store(run[r] + 2 * i);
            }
            for (long r = 0; r < kLanes; ++r) {
                for (long i = 0; i < 2 * kRun; i += kLanes) {
                    V::load(run[r] + i).store(to.row[r] + 2 * x + i);
                }
            }
        }
        for (; x + kBlock <= width; x += kBlock) {
            V block[kLanes];
            transposeElements<kConjugate>(lines + x, block);
            for (long r = 0; r < kLanes; ++r) block[r].store(to.row[r] + 2 * x);
        }
        storeElements<kConjugate>(lines, to, x, width);
    }

    /// Writes the first `count` rows to the rows from y on of panels of as many columns as there
    /// are lanes. Each row has `width` elements; zeros fill up the last panel.
    static void storeToPanels(const Z* lines, long width, const Panels& to, long y, long count) {
        float* rows = to.first + 2 * kLanes * y;
        for (long x = to.begin; x < to.end; x += kLanes, rows += to.pitch) {
            storeBlock(count, rows,
                       [=](long i) { return x + i < width ? lines[x + i].re : zero(); });
            storeBlock(count, rows + kLanes,
                       [=](long i) { return x + i < width ? lines[x + i].im : zero(); });
        }
    }

    /// Writes the elements from x to `end` - 1 of each row, or their conjugates.
    template <bool kConjugate>
    static void storeElements(const Z* lines, const Pointers<float*>& to, long x, long end) {
        for (; x < end; ++x) {
            float re[kLanes], im[kLanes];
            const Z z = lines[x].template conjugatedIf<kConjugate>();
            z.re.store(re), z.im.store(im);
            for (long r = 0; r < kLanes; ++r) {
                to.row[r][2 * x] = re[r];
                to.row[r][2 * x + 1] = im[r];
            }
        }
    }

  private:
    // Elements of a row that fill one vector.
    static constexpr long kBlock = kLanes / 2;

    // Rows of this width and more are written in long runs.
    static constexpr long kWideRow = 512;

    static V zero() { return V::filled(0.0f); }

    // Writes as many columns as there are lanes to `count` rows of a panel.
    template <class Column>
    MVFREQ_ALWAYS_INLINE static void storeBlock(long count, float* rows, Column column) {
        V block[kLanes];
        for (long i = 0; i < kLanes; ++i) block[i] = column(i);
        V::transpose(block);
        for (long r = 0; r < count; ++r) block[r].store(rows + 2 * kLanes * r);
    }

    template <bool kConjugate>
    MVFREQ_ALWAYS_INLINE static void transposeElements(const Z* lines, V (&block)[kLanes]) {
        for (long i = 0; i < kBlock; ++i) {
            const Z z = lines[i].template conjugatedIf<kConjugate>();
            block[2 * i] = z.re;
            block[2 * i + 1] = z.im;
        }
        V::transpose(block);
    }
};

}  // namespace mvi
