// Everything that can be done with what came out of an archive. None of it may do harm.
#pragma once

#include <filt/freqfilt.h>

#include <cstdint>

#include "support/steps.h"

namespace archive {

/// Planes of more elements than this, and filters with more gains, are read and not used otherwise.
inline constexpr long kLargestArea = 1L << 20;

/// Every public operation upon the buffer: reads, writes, transforms, combines, compares, copies,
/// stores and loads again. The buffer is not changed.
void use(mvFrequencyBuffer& buffer, Steps& steps, long largestArea = kLargestArea);

/// Every public operation upon the filter, which is applied to buffers of its size where an archive
/// can make such, and to others. The filter is not changed.
void use(mvFrequencyFilter& filter, Steps& steps, long largestArea = kLargestArea);

/// The same for an object of any registered class.
void use(mvPersistent& object, Steps& steps, long largestArea = kLargestArea);

/// The same without looking at what the operations cost.
template <class T>
void use(T& value, long largestArea = kLargestArea) {
    Steps steps;
    use(value, steps, largestArea);
}

/// Elements of the plane; none without data.
std::int64_t areaOf(const mvFrequencyBuffer& buffer);

}  // namespace archive
