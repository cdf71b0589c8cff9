// The transforms of a plane: from where its rows come to where its columns go.
#pragma once

#include <filt/fft/internal/kernel/path.h>
#include <filt/fft/internal/kernel/row_band.h>
#include <filt/platform.h>

namespace mvi {

/// Rows that are written just before the row pass transforms them.
class RowSource {
  public:
    /// How many rows there are; those that follow are zero.
    virtual long rows() const = 0;

    /// Writes a row: complex elements, or packed reals for the transform of a real plane.
    virtual void write(long y, float* row) const = 0;

  protected:
    ~RowSource() = default;
};

/// A few neighbouring columns of a finished plane, from column `x` on. Their elements of row y
/// begin at `first` + y * `pitch`.
struct FinishedColumns {
    long x;
    long count;
    const float* first;
    long pitch;
};

/// Takes columns as the column pass finishes them.
class ColumnSink {
  public:
    virtual void take(const FinishedColumns& columns) = 0;

  protected:
    ~ColumnSink() = default;
};

/// Transforms the complex plane `src` into `dst`, which may be `src` or apart from it.
///
/// The rows outside `band` are taken as zero and not transformed in the row pass. `sink` may be
/// null; otherwise it takes the first `columns` columns, the others of a `dst` apart from `src` are
/// left unfinished, and `dst` may be null when the plane itself is not needed.
void transformComplex(const float* src, float* dst, mvPair<long> size, Direction direction,
                      const RowBand& band, long columns, ColumnSink* sink,
                      const KernelPath& path = bestKernelPath());

struct Work;

/// The forward transform of the complex plane `src` into `dst`, which may be `src`, with memory
/// that was taken before: only polls can end it.
void transformComplex(Work work, const float* src, float* dst);

/// The forward transform of complex rows.
void transformComplex(const RowSource& source, float* dst, mvPair<long> size,
                      const KernelPath& path = bestKernelPath());

/// The forward transform of rows of packed reals; for a width of 1 the second float is 0.
void transformReal(const RowSource& source, float* dst, mvPair<long> size,
                   const KernelPath& path = bestKernelPath());

}  // namespace mvi
