// What the passes of a transform share: memory, the table of rows, steps and polls.
#pragma once

#include <filt/fft/internal/attention.h>
#include <filt/fft/internal/kernel/path.h>
#include <filt/fft/internal/kernel/row_band.h>
#include <filt/platform.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>

namespace mvi {

/// Attention is polled before each line whose index is a multiple of this. The number of polls of
/// a call is part of its contract, whatever the steps below are.
inline constexpr long kLinesPerPoll = 16;

/// Rows go through a path this many at a time: what the widest has lanes.
inline constexpr long kRowsPerStep = kMostLanes;

/// Columns go through a path in steps of whole cache lines of each row.
inline constexpr long kColumnsPerStep = 64;

/// Rows of a scratch plane are a cache line longer than a power of two: addresses a power of two
/// apart compete for the same places in the caches.
inline constexpr long kPitchPadding = 16;

/// The most bytes that are taken at once. Common allocators map blocks of 32 MiB and more anew each
/// time: their pages would be cleared again for every transform.
inline constexpr std::size_t kLargestBlock = std::size_t{31} << 20;

struct AlignedDelete {
    void operator()(float* floats) const;
};
using Floats = std::unique_ptr<float[], AlignedDelete>;

/// Floats from a 64-byte boundary on, not initialised.
Floats makeFloats(std::size_t count);

/// Sizes and memory of one transform.
struct Work {
    Work(const KernelPath& kernelPath, mvPair<long> planeSize);

    /// Where the column pass finds row y.
    const float*& row(long y) { return rows[static_cast<std::size_t>(y)]; }

    const KernelPath& path;
    mvPair<long> size;
    Floats scratch;
    std::unique_ptr<const float*[]> rows;
};

/// The poll of the blocked transposition that once stood between the passes; planes with a side
/// below `smallest` went without. The passes here transpose in registers, the poll has stayed.
void pollTransposition(mvPair<long> size, long smallest);

/// Calls transform(rows, count) with the numbers of a few rows of the band at a time.
template <class Transform>
void passRows(long height, const RowBand& band, Transform transform) {
    long rows[kRowsPerStep];
    long count = 0;
    for (long y = 0; y < height; ++y) {
        if (!band.contains(y)) continue;
        if (y % kLinesPerPoll == 0) pollAttention();
        rows[count++] = y;
        if (count == kRowsPerStep) transform(rows, std::exchange(count, 0));
    }
    if (count > 0) transform(rows, count);
}

/// Calls transform(x, count) for the columns 0 to `end` - 1, a few at a time.
template <class Transform>
void passColumns(Work& work, long end, Transform transform) {
    for (long i = 0; i < kRowsAhead; ++i) work.row(work.size.y + i) = work.row(work.size.y - 1);
    for (long x = 0; x < end; x += kColumnsPerStep) {
        const long count = std::min(kColumnsPerStep, end - x);
        // One poll for each 16 columns, as if they went by 16: the number of polls is contract.
        for (long i = 0; i < count; i += kLinesPerPoll) pollAttention();
        transform(x, count);
    }
}

}  // namespace mvi
