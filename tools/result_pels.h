// What a filter makes of a picture, as pels to be stored.
#pragma once

#include <filt/freqfilt.h>

#include <optional>

#include "filter_chain.h"

/// The magnitudes, in pels of the picture's depth: grey levels, or with a percentage so many of the
/// pels spread over the whole range.
template <class T>
mvPelBuffer<T> magnitudePels(const mvPelBuffer_const<T>& picture, FilterList filters,
                             const mvFilterImageOptions& image, std::optional<double> percent);
template <class T>
mvPelBuffer<T> magnitudePels(const mvPelBuffer_const<T>& picture, const mvFrequencyFilter& filter,
                             const mvFilterImageOptions& image, std::optional<double> percent) {
    const mvFrequencyFilter* const list[] = {&filter};
    return magnitudePels(picture, FilterList(list), image, percent);
}

/// Real parts, 32768 being zero: grey levels, or with a percentage so many of the pels spread over
/// the range.
mvPelBuffer<unsigned short> realPels(const mvPelBuffer_const<double>& real,
                                     std::optional<double> percent);
