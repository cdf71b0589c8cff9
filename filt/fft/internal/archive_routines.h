// The small versioned archive records that buffers and filters share.
#pragma once

#include <filt/fft/float_array.h>
#include <filt/platform.h>

#include <cstddef>
#include <cstdint>

namespace mvi {

/// Throws mvArchive::UnknownVersion made with `text` and `number` when `version` is above `newest`.
void requireVersion(unsigned char version, unsigned char newest, const char* text, long number);

/// Version byte 0, then x and y.
void exchangePair(mvArchive& ar, mvPair<std::int32_t>& pair);
void exchangePair(mvArchive& ar, mvPair<long>& pair);
void exchangePair(mvArchive& ar, mvPair<double>& pair);

/// Version byte 0, the count, then the floats.
void storeFloats(mvArchive& ar, const float* values, std::size_t count);

/// Floats that were loaded, padded with zeros or cut to the size that they are needed in.
struct LoadedFloats {
    mvFloatArray values;
    std::size_t count = 0;
};

/// Loads what storeFloats stores. The array grows as the floats arrive, so that a wrong count
/// costs no more memory than the archive has bytes for; it ends with `slack` zeros.
LoadedFloats loadFloats(mvArchive& ar, std::size_t slack);

/// Makes the size `needed` + `slack` with zeros behind the floats that were read. Throws
/// mvArchive::BadValue when a response or plane so large ought to have come with all its floats:
/// `largestPadded` is what may be padded.
void padFloats(LoadedFloats& floats, std::size_t needed, std::size_t slack,
               std::size_t largestPadded);

}  // namespace mvi
