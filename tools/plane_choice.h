// Which plane a picture is filtered in.
#pragma once

#include <optional>

#include "filter_recipe.h"

/// The side of the largest plane that a transform takes.
constexpr long kLargestPlaneSide = 2048;

/// What the command line says of the plane.
struct PlaneOptions {
    mvBorder border = mvBorder::mirror;
    std::optional<long> tile{};
    std::optional<long> margin{};
};

/// How a picture is laid.
struct PlaneChoice {
    mvPair<long> plane;  // its size
    long planes;         // and how many there are
};

/// Chooses the plane for a picture, each axis by itself, as mvPlaneAxis does. Throws BadArgument
/// for a margin that leaves nothing of a tile, and for tiles of filters that have their plane.
PlaneChoice choosePlane(const mv_PelBuffer& picture, const PlaneNeeds& needs,
                        const PlaneOptions& options);
inline PlaneChoice choosePlane(const mv_PelBuffer& picture, const FilterRecipe& recipe,
                               const PlaneOptions& options) {
    return choosePlane(picture, needsOf(recipe), options);
}

/// The picture call's part of the options.
mvFilterImageOptions imageOptions(const PlaneOptions& options, int threads);

/// About how often the picture call asks the handler of the calling thread.
long expectedPolls(const PlaneChoice& choice, int threads);
