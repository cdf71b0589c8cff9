// What the page asks of the library: one picture, some filters, one result.
#pragma once

#include <suggest/filter_step.h>

#include <optional>
#include <string>
#include <vector>

#include "tile_work.h"
#include "tools/kernel_filter.h"
#include "tools/picture.h"

/// One of the filters: by numbers, or the weights that were chosen.
struct FilterSettings {
    bool isConvolution = false;
    mvFilterStep step{};
};

/// A picture of `channels` interleaved samples a pel, the first three of which are colours, as the
/// program reads it. Throws a Failure for sizes that no picture has.
template <class T>
mvPelBuffer<T> greyPicture(const T* samples, long width, long height, long channels);

/// The filters of the settings, applied in turn, to be built for any plane. A convolution needs
/// weights.
ChainRecipe recipeOf(const std::vector<FilterSettings>& settings,
                     const std::optional<Kernel>& kernel);

/// The gains of filters, centred, at most `side` by `side`: 255 is the largest.
mvPelBuffer<unsigned char> shownGains(mvFilterList filters, long side);

/// Filters as the bytes of an archive, for `mvfreq apply`.
std::string archiveOf(mvFilterList filters);

/// A picture of half the size, each pel the mean of four.
mvPelBuffer<unsigned char> halved(const mvPelBuffer_const<unsigned char>& picture);

/// The upper eight bits, to be looked at.
mvPelBuffer<unsigned char> upperBytes(const mvPelBuffer_const<unsigned short>& picture);
