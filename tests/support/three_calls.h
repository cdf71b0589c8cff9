// A picture through a filter by the three calls that the picture call stands for.
#pragma once

#include <filt/freqfilt.h>

namespace support {

// Magnitudes, on a plane of the picture's own size.
template <class U, class T>
mvPelBuffer<U> byThreeCalls(const mvPelBuffer<T>& picture, const mvFrequencyFilter& filter) {
    mvFrequencyBuffer spectrum;
    mfForwardFFT(picture, spectrum);
    filter.apply(spectrum);
    mvPelBuffer<U> magnitudes;
    mfInverseFFT(spectrum, magnitudes, false, true);
    return magnitudes;
}

}  // namespace support
