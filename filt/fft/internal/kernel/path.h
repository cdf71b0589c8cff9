// The passes of the kernel, compiled for one instruction set.
#pragma once

#include <cstddef>

/// One instruction set's passes. All give the same bits.
///
/// Rows are given by pointers to their first float, source and destination, which may be the same;
/// at most 16 at a time. Scratch is aligned to 64 bytes and holds mf_KernelScratchFloats floats.
struct mf_KernelPath {
    const char* name;
    bool (*isSupported)();

    /// Complex transforms of `count` rows of `width` elements.
    void (*complexRows)(const float* const* src, float* const* dst, long count, long width,
                        bool inverse, float* scratch);

    /// The width / 2 + 1 lowest frequencies of `count` rows of `width` >= 2 packed reals.
    void (*realRows)(const float* const* src, float* const* dst, long count, long width,
                     float* scratch);

    /// Complex transforms, in place, of `count` columns from column `x` on.
    void (*complexColumns)(float* plane, long width, long height, long x, long count, bool inverse,
                           float* scratch);
};

/// All paths that were built, the fastest first; the last one, plain C++, runs everywhere.
struct mf_KernelPathList {
    const mf_KernelPath* const* begin() const;
    const mf_KernelPath* const* end() const;
};

/// The fastest path that this processor has.
const mf_KernelPath& mf_BestKernelPath();

/// What any path needs for a plane of this size.
constexpr std::size_t mf_KernelScratchFloats(long width, long height) {
    constexpr long kMostLanes = 16;
    const long elements = 2 * width + 1 > height ? 2 * width + 1 : height;
    return static_cast<std::size_t>(elements * 2 * kMostLanes);
}
