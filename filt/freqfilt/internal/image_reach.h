// How far an image filter reaches.
#pragma once

#include <filt/fft/frequency_buffer.h>

namespace mvi {

/// The smallest distances, at least 1, from the origin of the image's inverse transform beyond
/// which the columns, and the rows, hold at most 1/1024 of the sum of its magnitudes. Distances go
/// around the plane. A sum that is no number reaches over all of it.
///
/// Throws, in this order, mvFrequencyDefs::Uninitialized without data,
/// mvFrequencyDefs::InvalidSize for a plane that no transform takes, what a failing poll throws.
mvPair<long> reachOf(const mvFrequencyBuffer& image);

}  // namespace mvi
