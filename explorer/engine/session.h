// What the page asks of the library: one picture, one filter, one result.
#pragma once

#include <filt/freqfilt.h>

#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "tile_work.h"
#include "tools/kernel_filter.h"
#include "tools/picture.h"

enum class FilterKind { bandPass, bandReject, gabor, gaborReject, convolve };

/// The numbers beside the picture, in the units of the command line.
struct FilterSettings {
    FilterKind kind = FilterKind::bandPass;
    double frequency = 0, degrees = 0;
    mvPair<double> sigma{}, plateau{};
    long dcRadius = 0;
};

/// A picture of `channels` interleaved samples a pel, the first three of which are colours, as the
/// program reads it. Throws a Failure for sizes that no picture has.
template <class T>
mvPelBuffer<T> greyPicture(const T* samples, long width, long height, long channels);

/// The filter of the settings, to be built for any plane. A convolution needs weights.
FilterRecipe recipeOf(const FilterSettings& settings, const std::optional<Kernel>& kernel);

/// The gains of a filter, centred, at most `side` by `side`: 255 is the largest.
mvPelBuffer<unsigned char> shownGains(const mvFrequencyFilter& filter, long side);

/// A filter as the bytes of an archive, for `mvfreq apply`.
std::string archiveOf(const mvFrequencyFilter& filter);

/// A picture of half the size, each pel the mean of four.
mvPelBuffer<unsigned char> halved(const mvPelBuffer_const<unsigned char>& picture);

/// The upper eight bits, to be looked at.
mvPelBuffer<unsigned char> upperBytes(const mvPelBuffer_const<unsigned short>& picture);
