// The transform of real rows: half of the spectrum is computed, the other half mirrored.
#include <filt/fft/internal/kernel/source_rows.h>
#include <filt/fft/internal/kernel/transform.h>
#include <filt/fft/internal/kernel/work.h>

namespace mvi {

namespace {

// Single samples are their own transforms.
void passRealRows(Work& work, const RowSource& source, float* plane) {
    if (work.size.x == 1) {
        for (long y = 0; y < work.size.y; ++y) writeRow(work, source, plane, y);
        return;
    }
    passSourceRows(work, source, plane, [&](float* const* rows, long count) {
        work.path.realRows(rows, rows, count, work.size.x, work.scratch.get());
    });
}

// F(-u, -v) = conj F(u, v) gives the columns beyond W/2 from those that were just finished.
void fillMirrored(const Work& work, float* plane, long x, long count) {
    const mvPair<long> size = work.size;
    const long first = std::max(x, 1L), end = std::min(x + count, size.x / 2);
    if (first >= end) return;
    for (long y = 0; y < size.y; ++y) {
        float* const mirror = plane + 2 * size.x * (y == 0 ? 0 : size.y - y);
        work.path.mirrored(plane + 2 * (size.x * y + first), end - first,
                           mirror + 2 * (size.x - first + 1));
    }
}

}  // namespace

void transformReal(const RowSource& source, float* dst, mvPair<long> size, const KernelPath& path) {
    Work work(path, size);
    passRealRows(work, source, dst);
    const long transpositionLimit = size.x == size.y ? 8 : 4;
    pollTransposition(size, transpositionLimit);
    passColumns(work, size.x / 2 + 1, [&](long x, long count) {
        path.complexColumns(work.rows.get(), dst + 2 * x, 2 * size.x, size.y, x, count,
                            Direction::forward, work.scratch.get());
        fillMirrored(work, dst, x, count);
    });
    pollTransposition(size, transpositionLimit);
    // The filling of the mirrored half has a poll of its own.
    pollAttention();
}

}  // namespace mvi
