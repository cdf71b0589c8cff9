// A picture through a filter and back.
#pragma once

#include <optional>
#include <string>

#include "find_options.h"
#include "picture.h"
#include "picture_arguments.h"
#include "picture_run.h"
#include "plane_choice.h"
#include "shared_filters.h"

/// What a filter run writes besides the picture, and how.
struct FilterOptions {
    std::optional<std::string> save;
    std::optional<std::string> angleImage;
    std::optional<std::string> quadrantImage;
    std::optional<double> rescale;  // the percentage of pels that is spread over the range
    bool withSign = false;
    std::optional<Channels> channels;  // else what the filter is for
    PlaneOptions plane;
    FindOptions find;

    /// Angles and quadrants are those of a complex result.
    bool hasPhases() const { return angleImage || quadrantImage; }
};

/// Filters the input picture, one channel after the other, on up to `threads` threads, and writes
/// all outputs, or none of them when anything fails. Reports a hint when hardly a grey level is
/// left of the picture, and the list of what stands out when that is asked for.
PictureReport filterPicture(const PictureFiles& files, const FilterOptions& options,
                            SharedFilters& filters, int threads);
