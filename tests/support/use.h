// Everything that can be done with what came out of an archive. None of it may do harm.
#pragma once

#include <filt/freqfilt.h>

namespace archive {

/// Planes of more elements than this, and filters with more gains, are read and not used otherwise.
inline constexpr long kLargestArea = 1L << 20;

/// Reads, transforms, combines, compares, copies and stores. Exceptions of the library and of its
/// base, std::length_error and std::bad_alloc are good answers.
void use(mvFrequencyBuffer& buffer, long largestArea = kLargestArea);

/// Applies to buffers of the filter's size where such can be made, transforms the result, sets
/// parameters, compares, copies and stores.
void use(mvFrequencyFilter& filter, long largestArea = kLargestArea);

/// The same for an object of any registered class.
void use(mvPersistent& object, long largestArea = kLargestArea);

}  // namespace archive
