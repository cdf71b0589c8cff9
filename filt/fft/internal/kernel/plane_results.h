// The inverse transform of a plane, of which only results are kept.
#pragma once

#include <filt/fft/internal/kernel/path.h>
#include <filt/fft/internal/kernel/plane_output.h>
#include <filt/fft/internal/kernel/row_band.h>

namespace mvi {

/// Writes the results that `out` asks for, of what transformComplex makes of the plane `src` of
/// frequencies with a sink; for pels of all types, and floats.
template <class P>
void transformToResults(const float* src, mvPair<long> size, const RowBand& band,
                        const PlaneOutput<P>& out, const KernelPath& path = bestKernelPath());

}  // namespace mvi
