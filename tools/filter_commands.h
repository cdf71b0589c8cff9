// The commands that filter a picture.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "filter_steps.h"
#include "parser.h"
#include "work.h"

/// Filters on a command line, in their order.
using FilterSteps = std::vector<std::shared_ptr<const FilterStep>>;

/// Adds bandpass, bandreject, gabor, gaborreject, convolve and apply, with the options of the
/// filter and no others for what `words` name; the one that is chosen is appended to `steps`.
void addFilterSteps(CLI::App& app, const std::vector<std::string>& words, FilterSteps& steps);

/// Adds the same commands with all options of those that `words` name; the one that is chosen sets
/// `work`. Its filter is applied behind those of `before`.
void addFilterCommands(CLI::App& app, const std::vector<std::string>& words, Work& work,
                       const FilterSteps& before);
