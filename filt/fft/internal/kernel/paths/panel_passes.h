// The passes of a filtered picture: pels to panels of columns, gains, rows, columns to pels.
#pragma once

#include <filt/fft/internal/kernel/path.h>
#include <filt/fft/internal/kernel/paths/line_transform.h>
#include <filt/fft/internal/kernel/paths/pel_runs.h>
#include <filt/fft/internal/kernel/paths/real_lines.h>
#include <filt/fft/internal/kernel/paths/row_lanes.h>
#include <filt/fft/internal/kernel/paths/strips.h>

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
    static void gainColumns(float* panel, long filled, long height, const ColumnGains& gains,
                            float* scratch) {
        const auto load = [=](long y) { return y < filled ? Z::load(panel + kRow * y) : zeros(); };
        const auto store = [&](long k, Z z) {
            if (gains.row[k] < 0) return;
            gained(z, V::load(gains.first + gains.row[k])).store(panel + kRow * k);
        };
        LineTransform<V>::transform(height, reinterpret_cast<Z*>(scratch), load, store);
    }

    // An inverse is the conjugate of the transform of the conjugate. The last conjugation of the
    // row passes meets the first one of the columns, and both are left out.

    /// As KernelPath::complexRowsToPanels.
    static void complexRowsToPanels(const float* const* src, long count, long width,
                                    const PanelBlocks& to, long y, float* scratch) {
        Z* const lines = reinterpret_cast<Z*>(scratch);
        RowLanes<V>::template load<true>(src, count, lines, width);
        LineTransform<V>::between(lines, lines + width, width);
        storeRows(lines + width, width, to, y, count);
    }

    /// As KernelPath::panelsToRows.
    static void panelsToRows(const HalfSpectrum& from, const std::int32_t* rows, long count,
                             const PanelBlocks& to, long y, float* scratch) {
        Z* const lines = reinterpret_cast<Z*>(scratch);
        const SpectrumRows values(from, RowNumbers(rows, count, from.height), lines);
        LineTransform<V>::transform(
            from.width, lines, [&](long x) { return conjugated(values.at(x)); },
            [&](long k, Z z) { values.result[k] = z; });
        storeRows(values.result, from.width, to, y, count);
    }

    /// As KernelPath::panelsToGainedRows.
    static void panelsToGainedRows(const HalfSpectrum& from, const RowGains& gains,
                                   const std::int32_t* rows, long count, const PanelBlocks& to,
                                   long y, float* scratch) {
        const RowNumbers numbers(rows, count, from.height);
        Z* const lines = reinterpret_cast<Z*>(scratch);
        const SpectrumRows values(from, numbers, lines);
        for (long x = 0; x < from.width; x += kLanes) {
            V gain[kLanes];
            loadGains(gains, numbers, x, gain);
            for (long i = 0; i < kLanes; ++i) {
                lines[x + i] = conjugated(gained(values.at(x + i), gain[i]));
            }
        }
        LineTransform<V>::between(lines, values.result, from.width);
        storeRows(values.result, from.width, to, y, count);
    }

    /// As KernelPath::panelsToProductRows.
    static void panelsToProductRows(const HalfSpectrum& from, const float* factors,
                                    const std::int32_t* rows, long count, const PanelBlocks& to,
                                    long y, float* scratch) {
        const RowNumbers numbers(rows, count, from.height);
        Z* const lines = reinterpret_cast<Z*>(scratch);
        const SpectrumRows values(from, numbers, lines);
        const float* factorRows[kLanes];
        for (long r = 0; r < kLanes; ++r) {
            factorRows[r] = factors + 2 * from.width * numbers.direct[r];
        }
        RowLanes<V>::template load<false>(factorRows, kLanes, lines, from.width);
        for (long x = 0; x < from.width; ++x) {
            lines[x] = conjugated(product(lines[x], values.at(x)));
        }
        LineTransform<V>::between(lines, values.result, from.width);
        storeRows(values.result, from.width, to, y, count);
    }

    /// As ColumnStrips::panelToStrip.
    template <class T>
    static void panelToStrip(const float* panel, const std::int32_t* rows, long height, float scale,
                             T* strip, float* scratch) {
        panelTo(StripResults<V>(strip, scale), panel, rows, height, scratch);
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

    // Whole rows of a spectrum, one a lane, that is kept as half a plane. In the scratch stand the
    // lines to be transformed and behind them the rows, which give their place to the result.
    struct SpectrumRows {
        SpectrumRows(const HalfSpectrum& from, const RowNumbers& numbers, Z* scratch)
            : result(scratch + from.width),
              opposite(result + wholeVectors(from.columns.end - from.columns.begin)),
              begin(from.columns.begin),
              end(from.columns.end),
              width(from.width) {
            loadRows(from.columns, numbers.direct, result);
            loadRows(from.columns, numbers.opposite, opposite);
        }

        Z at(long x) const {
            if (2 * x <= width) return x >= begin && x < end ? result[x - begin] : zeros();
            const long opposed = width - x;
            return opposed >= begin && opposed < end ? conjugated(opposite[opposed - begin])
                                                     : zeros();
        }

        Z *result, *opposite;
        long begin, end, width;
    };

    // Called, not inlined: there is one program for all types of results.
    static void panelTo(StripResults<V> results, const float* panel, const std::int32_t* rows,
                        long height, float* scratch) {
        const auto load = [=](long y) { return Z::load(panel + rows[y]); };
        LineTransform<V>::transform(height, reinterpret_cast<Z*>(scratch), load, results);
    }

    static Z zeros() { return {V::filled(0.0f), V::filled(0.0f)}; }

    static long wholeVectors(long columns) { return (columns + kLanes - 1) / kLanes * kLanes; }

    // The gains of as many columns as there are lanes, from x on. Rows often share theirs.
    MVFREQ_ALWAYS_INLINE static void loadGains(const RowGains& gains, const RowNumbers& numbers,
                                               long x, V (&gain)[kLanes]) {
        const float* rows[kLanes];
        bool areShared = true;
        for (long r = 0; r < kLanes; ++r) {
            rows[r] = gains.first + gains.row[numbers.direct[r]] + x;
            areShared = areShared && rows[r] == rows[0];
        }
        if (areShared) {
            for (long i = 0; i < kLanes; ++i) gain[i] = V::filled(rows[0][i]);
        } else {
            for (long r = 0; r < kLanes; ++r) gain[r] = V::load(rows[r]);
            V::transpose(gain);
        }
    }

    static Z gained(Z z, V gain) { return {z.re.gained(gain), z.im.gained(gain)}; }

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
