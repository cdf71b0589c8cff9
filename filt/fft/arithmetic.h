// Element-wise arithmetic of frequency buffers.
#pragma once

#include <filt/export.h>
#include <filt/fft/frequency_buffer.h>

/// @file
/// All operations work on the whole stored plane, padding included, in single precision. Operands
/// need equal padded sizes; image sizes may differ. The band of rows is neither combined nor
/// consulted. Any arguments may be the same object.
///
/// A three-argument form gives `result` all other properties of `a`, except that sum and product
/// into `b` itself keep those of `b`; a two-argument form keeps those of `dst`.
///
/// Errors, thrown before anything is changed: mvFrequencyDefs::Uninitialized for an operand without
/// data, mvFrequencyDefs::InvalidBuffer for one that an inverse has overwritten,
/// mvFrequencyDefs::InvalidSize for padded sizes that differ. They are checked in the order data,
/// inverse, size by sum (both forms), difference of two and product of three arguments, and in the
/// order data, size, inverse by the difference of three and the product of two.

/// result = a + b
MVFREQ_API void mfFrequencyAdd(const mvFrequencyBuffer& a, const mvFrequencyBuffer& b,
                               mvFrequencyBuffer& result);
/// dst = dst + src
MVFREQ_API void mfFrequencyAdd(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst);

/// result = a - b
MVFREQ_API void mfFrequencySubtract(const mvFrequencyBuffer& a, const mvFrequencyBuffer& b,
                                    mvFrequencyBuffer& result);
/// dst = dst - src
MVFREQ_API void mfFrequencySubtract(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst);

/// result = a b, the complex product: a convolution of the images.
MVFREQ_API void mfFrequencyMultiply(const mvFrequencyBuffer& a, const mvFrequencyBuffer& b,
                                    mvFrequencyBuffer& result);
/// dst = src dst
MVFREQ_API void mfFrequencyMultiply(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst);

/// buf = conj(buf). Throws mvFrequencyDefs::Uninitialized, then mvFrequencyDefs::InvalidBuffer.
MVFREQ_API void mfFrequencyConjugate(mvFrequencyBuffer& buf);
/// dst = conj(src). Throws as the other form does for `src`.
MVFREQ_API void mfFrequencyConjugate(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst);
