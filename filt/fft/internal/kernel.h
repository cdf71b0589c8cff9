// The two-dimensional transforms of a complex plane.
#pragma once

#include <filt/fft/internal/kernel/path.h>
#include <filt/platform.h>

/// @file
/// The plane holds size.y rows of size.x interleaved complex elements; both sides are powers of two
/// of at most 2048. DC is element (0, 0). Nothing is scaled. What an attention poll throws leaves a
/// partly transformed plane. All paths give the same bits.

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

}  // namespace mvi

/// Transforms a complex plane in place; any negative `direction` is inverse.
///
/// The rows outside the band `rowLow` .. `rowHigh`, inclusive limits in shifted coordinates, are
/// taken as zero and not transformed in the first pass; (0, H) lets every row through.
void mf_FFT2D(float* data, mvPair<long> size, int direction, int rowLow, int rowHigh,
              const mvi::KernelPath& path = mvi::bestKernelPath());

/// Forward transform of a real plane in place: the first size.x floats of each row are the packed
/// samples, the row's other floats are ignored; for a width of 1 the second float is 0.
/// Direction and band are not used.
void mf_RealFFT2D(float* data, mvPair<long> size, int direction, int rowLow, int rowHigh,
                  const mvi::KernelPath& path = mvi::bestKernelPath());

/// The same two forward transforms of the rows of `source`.
void mf_FFT2D(const mvi::RowSource& source, float* data, mvPair<long> size,
              const mvi::KernelPath& path = mvi::bestKernelPath());
void mf_RealFFT2D(const mvi::RowSource& source, float* data, mvPair<long> size,
                  const mvi::KernelPath& path = mvi::bestKernelPath());

/// The complex transform of the plane `src` into `dst`: `src` itself, another plane of the size, or
/// null when nothing is kept. The columns 0 .. `columns` - 1 go to `sink`, unless that is null; of
/// another plane no more than these are computed. At least one of `dst` and `sink` is given.
void mf_FFT2D(const float* src, float* dst, mvPair<long> size, int direction, int rowLow,
              int rowHigh, long columns, mvi::ColumnSink* sink,
              const mvi::KernelPath& path = mvi::bestKernelPath());
