// A filter of which only the plane is missing.
#pragma once

#include <filt/freqfilt.h>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "picture.h"

/// What a command line says of a filter. Which plane it is built for depends on the picture.
struct FilterRecipe {
    /// Builds the filter for planes of a padded size.
    std::function<std::unique_ptr<mvFrequencyFilter>(mvPair<long> plane)> make;

    /// How far the filter reaches in the picture, in pels; the plane changes nothing in it.
    mvPair<long> reach;

    /// The smallest plane that the filter goes into.
    mvPair<long> leastPlane{1, 1};

    /// The only plane there is, for a filter that has been built before.
    std::optional<mvPair<long>> plane{};

    /// What becomes of colour if nothing is said. What a filter leaves of a picture has its
    /// colours; what passes one is looked at in grey.
    Channels channels = Channels::grey;
};

/// Filters that are applied one after the other.
using ChainRecipe = std::vector<FilterRecipe>;

/// Colour stays colour when no filter of them is looked at in grey.
Channels channelsOf(const ChainRecipe& chain);

/// What filters need of their plane.
struct PlaneNeeds {
    mvPair<long> reach;
    mvPair<long> leastPlane{1, 1};
    std::optional<mvPair<long>> plane{};
};

PlaneNeeds needsOf(const FilterRecipe& recipe);

/// Of a chain: the sum of the reaches, the largest of the least planes, and the plane of those that
/// have one. Throws BadArgument when these are several.
PlaneNeeds needsOf(const ChainRecipe& chain);
