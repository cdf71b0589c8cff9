// The recipes of filters that are given by numbers, or by a picture of weights.
#pragma once

#include <suggest/filter_step.h>

#include <string>

#include "filter_recipe.h"
#include "kernel_filter.h"

/// What becomes of colour behind a filter: pass filters are those that only show something.
Channels channelsOf(const mvFrequencyFilter& filter);

/// The recipes of a step: one, or those of its two lobes. Throws for parameters that no plane
/// takes; the filters are refused for planes that have no room for the radius, which is called
/// `radiusName` then.
ChainRecipe recipeOf(const mvFilterStep& step, const std::string& radiusName);

/// The recipe of a convolution.
FilterRecipe recipeOf(const Kernel& kernel);
