// The filters of one picture call, as one.
#pragma once

#include <filt/freqfilt/filter.h>

#include <optional>
#include <span>

namespace mvi {

using FilterList = std::span<const mvFrequencyFilter* const>;

/// Throws mvFrequencyDefs::InvalidArgument for a list without filters, then for a null pointer.
void requireFilters(FilterList filters);

/// The plane that all filters with a plane were built for; none when no filter has one. Throws, in
/// this order, mvFrequencyDefs::Uninitialized for the first filter without response,
/// mvFrequencyDefs::InvalidSize for filters of several planes.
std::optional<mvPair<long>> planeOf(FilterList filters);

/// The sum of the filters' reaches, at most 2^31 - 1; (0, 0) when that of any is not known.
mvPair<long> reachOf(FilterList filters);

}  // namespace mvi
