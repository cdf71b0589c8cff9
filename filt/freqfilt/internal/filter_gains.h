// The gains of a filter, for pictures that are filtered without a plane.
#pragma once

#include <filt/fft/internal/kernel/spectrum_gains.h>
#include <filt/freqfilt/filter.h>

#include <optional>

namespace mvi {

/// What `filter` does to a spectrum in place, as half a plane holds it; the filter has a response.
///
/// None where only `apply` can do it: for image filters, filters of the caller's own (also those
/// derived from one of the five), planes of less than 16 columns or 2 rows, which have rules of
/// their own, filters whose square around DC does not fit, and responses from an archive that hold
/// NaNs.
std::optional<SpectrumGains> gainsOf(const mvFrequencyFilter& filter);

}  // namespace mvi
