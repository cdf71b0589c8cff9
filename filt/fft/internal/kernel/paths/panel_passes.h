// The passes of a filtered picture: pels to panels of columns, gains, rows, columns to pels.
#pragma once

#include <filt/fft/internal/kernel/path.h>
#include <filt/fft/internal/kernel/paths/line_transform.h>
#include <filt/fft/internal/kernel/paths/pel_runs.h>
#include <filt/fft/internal/kernel/paths/real_lines.h>
#include <filt/fft/internal/kernel/paths/row_lanes.h>

namespace mvi {

/// The passes with the lanes of the vector type V, over panels of as many columns: the column
/// passes load whole vectors, and only the row passes have to transpose.
template <class V>
class PanelPasses {
  public:
    static constexpr long kLanes = V::kLanes;

    /// As PelRuns::pelsToPanels.
    template <class T>
    static void pelsToPanels(const T* const* pels, long count, long filled, long width,
                             const Panels& to, long y, float* scratch) {
        const T* rows[kLanes];
        for (long r = 0; r < kLanes; ++r) rows[r] = pels[r < count ? r : 0];
        const long half = width / 2;
        Z* const lines = reinterpret_cast<Z*>(scratch);
        Z* const result = lines + half;
        for (long x = 0; x < width; x += kRun) {
            loadPels(rows, x, filled < x + kRun ? filled : x + kRun, width, lines);
        }
        RealLines<V>::transform(lines, result, half);
        RowLanes<V>::storeToPanels(result, half + 1, to, y, count);
    }

    /// As KernelPath::gainColumns.
    static void gainColumns(float* panel, long filled, long height, const ColumnGains& direct,
                            float* mirroredPanel, const ColumnGains& mirrored, float* scratch) {
        const auto load = [=](long y) { return y < filled ? Z::load(panel + kRow * y) : zeros(); };
        const auto store = [&](long k, Z z) {
            if (direct.row[k] >= 0) {
                gained(z, direct.first + direct.row[k]).store(panel + kRow * k);
            }
            if (mirroredPanel == nullptr || mirrored.row[k] < 0) return;
            gained(z, mirrored.first + mirrored.row[k]).store(mirroredPanel + kRow * k);
        };
        LineTransform<V>::transform(height, reinterpret_cast<Z*>(scratch), load, store);
    }

    /// As KernelPath::panelsToRows.
    static void panelsToRows(const HalfSpectrum& from, const std::int32_t* rows, long count,
                             const PanelBlocks& to, long y, float* scratch) {
        const Panels direct = from.direct, mirrored = from.mirrored;
        const long width = from.width;
        Z* const lines = reinterpret_cast<Z*>(scratch);
        Z* const first = lines + width;
        Z* const second = first + wholeVectors(direct.end - direct.begin);
        const RowNumbers numbers(rows, count, from.height);
        loadRows(direct, numbers.direct, first);
        loadRows(mirrored, numbers.opposite, second);
        // An inverse is the conjugate of the transform of the conjugate. What is mirrored is stored
        // conjugated; the last conjugation meets the first one of the columns, and both are left
        // out.
        const auto load = [=](long x) {
            if (x >= direct.begin && x < direct.end) {
                return conjugated(first[x - direct.begin]);
            }
            const long opposed = width - x;
            const bool isMirrored = opposed >= mirrored.begin && opposed < mirrored.end;
            return isMirrored && 2 * opposed < width ? second[opposed - mirrored.begin] : zeros();
        };
        Z* const result = first;
        LineTransform<V>::transform(width, lines, load, [result](long k, Z z) { result[k] = z; });
        storeRows(result, width, to, y, count);
    }

    /// As KernelPath::panelsToProductRows.
    static void panelsToProductRows(const HalfSpectrum& from, const float* factors,
                                    const std::int32_t* rows, long count, const PanelBlocks& to,
                                    long y, float* scratch) {
        const long width = from.width, half = width / 2;
        Z* const lines = reinterpret_cast<Z*>(scratch);
        Z* const first = lines + width;
        Z* const second = first + wholeVectors(half + 1);
        const RowNumbers numbers(rows, count, from.height);
        loadRows(from.direct, numbers.direct, first);
        loadRows(from.mirrored, numbers.opposite, second);
        const float* factorRows[kLanes];
        for (long r = 0; r < kLanes; ++r) factorRows[r] = factors + 2 * width * numbers.direct[r];
        RowLanes<V>::template load<false>(factorRows, kLanes, lines, width);
        for (long x = 0; x <= half; ++x) lines[x] = conjugated(product(lines[x], first[x]));
        for (long x = half + 1; x < width; ++x) {
            lines[x] = conjugated(product(lines[x], conjugated(second[width - x])));
        }
        LineTransform<V>::between(lines, first, width);
        storeRows(first, width, to, y, count);
    }

    /// As KernelPath::columnsToMagnitudes.
    static void columnsToMagnitudes(const float* panel, const std::int32_t* rows, long height,
                                    bool squared, float* magnitudes, float* scratch) {
        const auto load = [=](long y) { return Z::load(panel + rows[y]); };
        const auto store = [=](long y, Z z) {
            const V square = z.re * z.re + z.im * z.im;
            (squared ? square : square.root()).store(magnitudes + kLanes * y);
        };
        LineTransform<V>::transform(height, reinterpret_cast<Z*>(scratch), load, store);
    }

  private:
    using Z = Elements<V>;

    // Floats of a panel's row, and elements of a row of reals that fill one vector.
    static constexpr long kRow = 2 * kLanes, kBlock = kLanes / 2;

    // Pels of a row that are converted at a time.
    static constexpr long kRun = 128;

    // The rows of a spectrum that the lanes hold, and the opposite ones. Lanes without a row do
    // once more what the first one does.
    struct RowNumbers {
        RowNumbers(const std::int32_t* rows, long count, long height) {
            for (long r = 0; r < kLanes; ++r) {
                direct[r] = rows[r < count ? r : 0];
                opposite[r] = direct[r] == 0 ? 0 : height - direct[r];
            }
        }
        long direct[kLanes], opposite[kLanes];
    };

    static Z zeros() { return {V::filled(0.0f), V::filled(0.0f)}; }

    static long wholeVectors(long columns) { return (columns + kLanes - 1) / kLanes * kLanes; }

    static Z gained(Z z, const float* gains) {
        const V gain = V::load(gains);
        return {z.re.gained(gain), z.im.gained(gain)};
    }

    static Z conjugated(Z z) { return {z.re, -z.im}; }

    // The four real products as they stand, as mfFrequencyMultiply has them.
    static Z product(Z a, Z b) { return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re}; }

    static float* rowOf(const Panels& panels, long x, long y) {
        return panels.first + panels.pitch * ((x - panels.begin) / kLanes) + kRow * y;
    }

    // The packed pairs of a run of pels of each row, from pel x on; those from `filled` on are
    // zero.
    template <class T>
    static void loadPels(const T* const* rows, long x, long filled, long width, Z* lines) {
        alignas(64) float run[kLanes][kRun];
        const long known = filled > x ? filled - x : 0;
        for (long r = 0; r < kLanes; ++r) {
            Runs<V>::toReals(rows[r] + x, known, run[r]);
            for (long i = known; i < kRun; ++i) run[r][i] = 0.0f;
        }
        for (long i = 0; i < kRun && x + i < width; i += kLanes) {
            V block[kLanes];
            for (long r = 0; r < kLanes; ++r) block[r] = V::load(run[r] + i);
            V::transpose(block);
            const long first = (x + i) / 2, pairs = width / 2 - first;
            for (long k = 0; k < kBlock && k < pairs; ++k) {
                lines[first + k] = {block[2 * k], block[2 * k + 1]};
            }
        }
    }

    static void storeRows(const Z* lines, long width, const PanelBlocks& to, long y, long count) {
        for (long i = 0; i < to.count; ++i) {
            RowLanes<V>::storeToPanels(lines, width, to.first[i], y, count);
        }
    }

    // The rows `numbers` of panels, a row in each lane.
    static void loadRows(const Panels& panels, const long* numbers, Z* lines) {
        V block[kLanes];
        for (long x = panels.begin; x < panels.end; x += kLanes, lines += kLanes) {
            const float* const panel = rowOf(panels, x, 0);
            for (long r = 0; r < kLanes; ++r) block[r] = V::load(panel + kRow * numbers[r]);
            V::transpose(block);
            for (long i = 0; i < kLanes; ++i) lines[i].re = block[i];
            for (long r = 0; r < kLanes; ++r) {
                block[r] = V::load(panel + kRow * numbers[r] + kLanes);
            }
            V::transpose(block);
            for (long i = 0; i < kLanes; ++i) lines[i].im = block[i];
        }
    }
};

}  // namespace mvi
