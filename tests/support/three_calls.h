// A picture through a filter by the three calls that the picture call stands for.
#pragma once

#include <filt/freqfilt.h>

#include <gtest/gtest.h>

#include "support/compare.h"
#include "support/pel_images.h"

namespace support {

// The first two of them, on a plane of the picture's own size.
template <class T>
mvFrequencyBuffer filteredSpectrum(const mvPelBuffer<T>& picture, const mvFrequencyFilter& filter) {
    mvFrequencyBuffer spectrum;
    mfForwardFFT(picture, spectrum);
    filter.apply(spectrum);
    return spectrum;
}

// Magnitudes.
template <class U, class T>
mvPelBuffer<U> byThreeCalls(const mvPelBuffer<T>& picture, const mvFrequencyFilter& filter) {
    mvFrequencyBuffer spectrum = filteredSpectrum(picture, filter);
    mvPelBuffer<U> magnitudes;
    mfInverseFFT(spectrum, magnitudes, false, true);
    return magnitudes;
}

// Whether the picture call gives the same bits, where one tile is the whole picture.
template <class U, class T>
testing::AssertionResult isFilteredAsByThreeCalls(const mvPelBuffer<T>& picture,
                                                  const mvFrequencyFilter& filter) {
    mvPelBuffer<U> result;
    mfFilterImage(picture, filter, result, {.border = mvBorder::zero});
    return sameImage(imageOf(byThreeCalls<U>(picture, filter)), imageOf(result));
}

}  // namespace support
