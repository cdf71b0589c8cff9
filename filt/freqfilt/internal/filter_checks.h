// The checks that filters share.
#pragma once

#include <filt/fft/frequency_buffer.h>
#include <filt/freqfilt/response.h>

namespace mvi {

/// Throws mvFrequencyDefs::InvalidSize for a width, then a height, that is no power of two.
void requirePowersOfTwo(const mvPair<long>& size);

/// The checks of `apply`: a buffer with data, a filter with response, equal sizes.
void requireApplicable(const mvFrequencyBuffer& buf, const mvFilterResponse& response,
                       const mvPair<long>& size);

/// Throws mvFrequencyDefs::InvalidSize unless the buffer has the filter's size.
void requireFilterSize(const mvFrequencyBuffer& buf, const mvPair<long>& size);

}  // namespace mvi
