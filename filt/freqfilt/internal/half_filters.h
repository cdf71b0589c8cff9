// What filters do to half a plane, for pictures that are filtered without a whole one.
#pragma once

#include <filt/fft/internal/kernel/spectrum_filter.h>
#include <filt/freqfilt/filter.h>

#include <memory>

namespace mvi {

/// What `filter` does to a spectrum in place, as half a plane shows it; the filter has a response
/// and outlives the result.
///
/// None where only `apply` can do it: for filters of the caller's own (also those derived from one
/// of the five), planes of less than 16 columns or 2 rows, which have rules of their own, filters
/// whose square around DC does not fit, responses from an archive that hold NaNs, and frequency
/// images that an inverse has overwritten.
///
/// `forDoubles`: whether it is to give doubles. These show the sign of a NaN, which image filters
/// then leave to `apply`.
std::unique_ptr<const SpectrumFilter> halfFilterOf(const mvFrequencyFilter& filter,
                                                   bool forDoubles);

}  // namespace mvi
