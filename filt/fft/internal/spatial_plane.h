// The inverse transform of a buffer, with its band and in its state.
#pragma once

#include <filt/fft/frequency_buffer.h>
#include <filt/fft/internal/kernel/plane_output.h>
#include <filt/fft/internal/kernel/transform.h>

namespace mvi {

/// The factor 1 / (W H) of a buffer's plane.
float inverseScale(const mvFrequencyBuffer& buf);

/// The inverse transform of `src`, which holds frequencies, as transformComplex gives it.
void transformToSpace(const mvFrequencyBuffer& src, float* dst, long columns, ColumnSink* sink);

/// Writes the results that `out` asks for of the spatial plane of `buf` and keeps nothing else.
template <class P>
void writeResults(const mvFrequencyBuffer& buf, const PlaneOutput<P>& out);

/// Hands the columns 0 .. `columns` - 1 of the spatial plane of `buf` to `sink` and keeps nothing.
/// A buffer that an inverse has overwritten holds that plane already.
void visitSpatialPlane(const mvFrequencyBuffer& buf, long columns, ColumnSink& sink);

}  // namespace mvi
