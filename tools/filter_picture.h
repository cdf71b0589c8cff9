// A picture through a filter and back.
#pragma once

#include <string>

#include "picture_arguments.h"
#include "plane_choice.h"
#include "shared_filters.h"

/// What a filter run writes besides the picture, and how; an empty name writes nothing.
struct FilterOptions {
    std::string save;
    std::string angleImage;
    std::string quadrantImage;
    bool rescale = false;
    bool withSign = false;
    PlaneOptions plane;
};

/// Filters the input picture on up to `threads` threads and writes all outputs, or none of them
/// when anything fails.
void filterPicture(const PictureFiles& files, const FilterOptions& options, SharedFilters& filters,
                   int threads);
