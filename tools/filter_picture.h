// A picture through a filter and back.
#pragma once

#include <filt/freqfilt.h>

#include <functional>
#include <memory>
#include <string>

#include "border.h"

/// What one filter run reads and writes; an empty name writes nothing.
struct FilterRun {
    std::string input;
    std::string output;
    std::string save;
    std::string angleImage;
    std::string quadrantImage;
    bool rescale = false;
    Border border = Border::mirror;
};

/// Builds the filter for planes of a padded size.
using MakeFilter = std::function<std::unique_ptr<mvFrequencyFilter>(mvPair<long> size)>;

/// Filters the input picture and writes all outputs, or none of them when anything fails.
void filterPicture(const FilterRun& run, const MakeFilter& makeFilter);
