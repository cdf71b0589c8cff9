// The loops of the library that are compiled for each instruction set.
#pragma once

#include <cstddef>

namespace mvi {

/// Forward: e^(-2 pi i k n / N); inverse: e^(+2 pi i k n / N).
enum class Direction { forward, inverse };

/// The most lanes that a path has.
inline constexpr long kMostLanes = 16;

/// How squared magnitudes spread. Starts empty, at limits of its own.
struct SquareRange {
    float least = 1e20f;
    float greatest = -1e20f;
};

/// Conversions between runs of pels of type T and runs of elements.
///
/// Integer pels are rounded half up and held to the range of T; NaN gives 0. Runs do not overlap.
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
};

/// One instruction set's loops. All give the same bits.
///
/// Rows are given by pointers to their first float; at most kMostLanes at a time. Scratch is
/// aligned to 64 bytes and holds kernelScratchFloats floats.
struct KernelPath : PelRuns<unsigned char>, PelRuns<unsigned short>, PelRuns<double> {
    const char* name;
    bool (*isSupported)();

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

    /// The conversions of pels of type T.
    template <class T>
    constexpr const PelRuns<T>& pels() const {
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
    const long elements = 2 * width + 1 > height ? 2 * width + 1 : height;
    return static_cast<std::size_t>(elements * 2 * kMostLanes);
}

}  // namespace mvi
