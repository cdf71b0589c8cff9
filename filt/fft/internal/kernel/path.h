// The loops of the library that are compiled for each instruction set.
#pragma once

#include <cstddef>
#include <cstdint>

namespace mvi {

/// Forward: e^(-2 pi i k n / N); inverse: e^(+2 pi i k n / N).
enum class Direction { forward, inverse };

/// The most lanes that a path has.
inline constexpr long kMostLanes = 16;

/// The least and the greatest squared magnitude. The limits at which it starts are contract: 1e20
/// is no infinity, and squares that all lie above it leave `least` where it is.
struct SquareRange {
    float least = 1e20f;
    float greatest = -1e20f;
};

/// Columns begin .. end - 1 of a plane in panels of as many columns as a path has lanes: row after
/// row of a panel, so many real parts and then so many imaginary parts. Panels stand `pitch` floats
/// apart; the columns that fill up the last one hold anything.
struct Panels {
    float* first;
    long pitch;
    long begin, end;
};

/// Neighbouring columns in several blocks of panels.
struct PanelBlocks {
    const Panels* first;
    long count;
};

/// The gains of a panel's columns, by row: those of row k begin at `first` + row[k], rows with a
/// negative entry are dropped. A NaN clears.
struct ColumnGains {
    const float* first;
    const std::int32_t* row;
};

/// The gains of whole rows of a plane: those of row y begin at `first` + row[y]. A NaN clears.
struct RowGains {
    const float* first;
    const std::int32_t* row;
};

/// The spectrum of width x height frequencies of a real image, of which only some columns of 0 to
/// width / 2 hold data, and those opposite: element (width - x, height - y) is the conjugate of
/// (x, y).
struct HalfSpectrum {
    Panels columns;
    long width, height;
};

/// Gains by distance: gain i is that at i / samplesPerBin bins from a ring of `radius` bins. A zero
/// stands behind the `count` gains.
struct RadialProfile {
    const float* gains;
    std::int64_t count;
    double radius, samplesPerBin;
};

/// Conversions between runs of pels of type T and runs of elements.
///
/// Integer pels are rounded half up and clamped to the range of T; NaN gives 0. Runs do not
/// overlap.
template <class T>
struct PelRuns {
    /// out[i] = pels[i].
    void (*toReals)(const T* pels, long count, float* out);

    /// The elements (re[i], im[i]).
    void (*toElements)(const T* re, const T* im, long count, float* out);

    /// The magnitudes of elements times `scale`.
    void (*fromMagnitudes)(const float* elements, long count, float scale, T* pels);

    /// (magnitude * scale - low) * factor.
    void (*fromMagnitudesMapped)(const float* elements, long count, float scale, float low,
                                 float factor, T* pels);

    /// fromMagnitudesMapped of squared magnitudes.
    void (*fromSquaresMapped)(const float* squares, long count, float scale, float low,
                              float factor, T* pels);

    /// The row pass over `count` rows of pels, at most as many as there are lanes: of each row
    /// `filled` pels are read, zeros follow them up to `width`. The frequencies of the columns of
    /// `to`, which are at most width / 2 + 1, go to its rows y .. y + count - 1.
    void (*pelsToPanels)(const T* const* pels, long count, long filled, long width,
                         const Panels& to, long y, float* scratch);
};

/// Results of type T of the column pass of an inverse: pels are the magnitudes times `scale`, as
/// conversions of runs give them, floats the squares of the magnitudes.
///
/// A strip holds the results of as many columns as a path has lanes, row after row.
template <class T>
struct ColumnStrips {
    /// The pass, without the first conjugation, over a panel whose row y begins at
    /// panel + rows[y].
    void (*panelToStrip)(const float* panel, const std::int32_t* rows, long height, float scale,
                         T* strip, float* scratch);

    /// The first `count` columns of strips that stand `pitch` apart, side by side: `rows` rows to
    /// out and on, a `step` from row to row.
    void (*joinStrips)(const T* strips, long pitch, long rows, long count, T* out,
                       std::ptrdiff_t step);
};

/// One instruction set's loops. All give the same bits.
///
/// Rows are given by pointers to their first float; at most kMostLanes at a time. Scratch is
/// aligned to 64 bytes and holds kernelScratchFloats floats.
struct KernelPath : PelRuns<unsigned char>,
                    PelRuns<unsigned short>,
                    PelRuns<double>,
                    ColumnStrips<unsigned char>,
                    ColumnStrips<unsigned short>,
                    ColumnStrips<double>,
                    ColumnStrips<float> {
    const char* name;
    bool (*isSupported)();
    long lanes;

    /// Complex transforms of `count` rows of `width` elements. A row's source and destination may
    /// be the same.
    void (*complexRows)(const float* const* src, float* const* dst, long count, long width,
                        Direction direction, float* scratch);

    /// The width / 2 + 1 lowest frequencies of `count` rows of `width` >= 2 packed reals.
    void (*realRows)(const float* const* src, float* const* dst, long count, long width,
                     float* scratch);

    /// Complex transforms of the columns x .. x + count - 1 of `height` rows. The elements of row y
    /// go to dst + y * pitch, which may be where they are. Behind the rows stand
    /// kRowsAhead pointers more, to be prefetched only.
    void (*complexColumns)(const float* const* rows, float* dst, long pitch, long height, long x,
                           long count, Direction direction, float* scratch);

    /// The conjugates of `count` elements in reverse order; the last one goes before `end`.
    void (*mirrored)(const float* elements, long count, float* end);

    /// Widens `range` by the squared magnitudes of elements; NaNs do not count.
    void (*squareRange)(const float* elements, long count, SquareRange& range);

    /// The squared magnitudes of elements.
    void (*squares)(const float* elements, long count, float* out);

    /// Widens `range` by squared magnitudes; NaNs do not count.
    void (*rangeOfSquares)(const float* squares, std::int64_t count, SquareRange& range);

    /// The gains of the columns begin .. end - 1 of a row whose squared distance is `rowTerm`, to
    /// gains[begin] and on.
    void (*radialGains)(const RadialProfile& profile, std::int64_t rowTerm, long begin, long end,
                        float* gains);

    /// The forward column pass over a panel of `height` rows, in place: those from `filled` on
    /// count as zeros. Each value is multiplied by its gain before it is stored.
    void (*gainColumns)(float* panel, long filled, long height, const ColumnGains& gains,
                        float* scratch);

    /// The inverse row pass over `count` rows of a plane, at most as many as there are lanes,
    /// without the last conjugation. The columns of `to` go to its rows y ..
    void (*complexRowsToPanels)(const float* const* src, long count, long width,
                                const PanelBlocks& to, long y, float* scratch);

    /// The inverse row pass over `count` rows of a spectrum, at most as many as there are lanes, by
    /// their numbers, without the last conjugation. The columns of `to` go to its rows y ..
    void (*panelsToRows)(const HalfSpectrum& from, const std::int32_t* rows, long count,
                         const PanelBlocks& to, long y, float* scratch);

    /// The same of values that are multiplied by their gains; for a width of 16 and more.
    void (*panelsToGainedRows)(const HalfSpectrum& from, const RowGains& gains,
                               const std::int32_t* rows, long count, const PanelBlocks& to, long y,
                               float* scratch);

    /// The same of products: each frequency is multiplied by its factor, the complex element of a
    /// plane of height rows of width. `from` holds all columns.
    void (*panelsToProductRows)(const HalfSpectrum& from, const float* factors,
                                const std::int32_t* rows, long count, const PanelBlocks& to, long y,
                                float* scratch);

    /// The conversions of pels of type T.
    template <class T>
    constexpr const PelRuns<T>& pels() const {
        return *this;
    }

    /// The strips of results of type T.
    template <class T>
    constexpr const ColumnStrips<T>& strips() const {
        return *this;
    }
};

/// How far ahead of its use a row of a column panel is asked for; no processor foresees such
/// strides.
inline constexpr long kRowsAhead = 4;

/// All paths that were built, the fastest first; the last one, plain C++, runs everywhere.
struct KernelPathList {
    static const KernelPath* const* begin();
    static const KernelPath* const* end();
};

/// The fastest path that this processor has.
const KernelPath& bestKernelPath();

/// What any path needs for a plane of this size.
constexpr std::size_t kernelScratchFloats(long width, long height) {
    const long elements = 2 * width > height ? 2 * width : height;
    return static_cast<std::size_t>(elements * 2 * kMostLanes);
}

/// What the passes over panels need for a plane of this size.
constexpr std::size_t panelScratchFloats(long width, long height) {
    const long elements = 2 * width + 4 * kMostLanes;
    return static_cast<std::size_t>((elements > height ? elements : height) * 2 * kMostLanes);
}

}  // namespace mvi
