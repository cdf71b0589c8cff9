// The checks that filters share.
#pragma once

#include <filt/fft/frequency_buffer.h>
#include <filt/freqfilt/response.h>

/// Throws mvFrequencyDefs::InvalidSize for a width, then a height, that is no power of two.
void mf_RequirePowersOfTwo(const mvPair<long>& size);

/// The checks of `apply`: a buffer with data, a filter with response, equal sizes.
void mf_RequireApplicable(const mvFrequencyBuffer& buf, const mvFilterResponse& response,
                          const mvPair<long>& size);

/// Throws mvFrequencyDefs::InvalidSize unless the buffer has the filter's size.
void mf_RequireFilterSize(const mvFrequencyBuffer& buf, const mvPair<long>& size);
