// The two entries of the kernel, by the names and arguments that its callers have always used.
#pragma once

#include <filt/fft/internal/kernel/path.h>
#include <filt/platform.h>

/// @file
/// The plane holds size.y rows of size.x interleaved complex elements; both sides are powers of two
/// of at most 2048. DC is element (0, 0). Nothing is scaled. What an attention poll throws leaves a
/// partly transformed plane. All paths give the same bits.

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
