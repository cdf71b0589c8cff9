// What a filter makes of a picture, as pels to be stored.
#pragma once

#include <suggest/filter_chain.h>

#include <optional>

/// The magnitudes, in pels of the picture's depth: grey levels, or with a percentage so many of the
/// pels spread over the whole range.
template <class T>
mvPelBuffer<T> magnitudePels(const mvPelBuffer_const<T>& picture, mvFilterList filters,
                             const mvFilterImageOptions& image, std::optional<double> percent);

/// Real parts, 32768 being zero: grey levels, or with a percentage so many of the pels spread over
/// the range.
mvPelBuffer<unsigned short> realPels(const mvPelBuffer_const<double>& real,
                                     std::optional<double> percent);
