// What is known of a filter beyond its interface: its plane and its reach.
#pragma once

#include <filt/freqfilt/filter.h>

#include <optional>

namespace mvi {

/// The plane that one of the five filters, or a filter derived from one, was built for; none for
/// other filters. Throws mvFrequencyDefs::Uninitialized for one without response.
std::optional<mvPair<long>> planeOf(const mvFrequencyFilter& filter);

/// What mfFilterReach answers.
mvPair<long> reachOf(const mvFrequencyFilter& filter);

}  // namespace mvi
