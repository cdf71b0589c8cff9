// Which plane a picture is filtered in.
#include "plane_choice.h"

#include <suggest/program_plane.h>

#include <algorithm>
#include <string>

#include "failure.h"
#include "size_text.h"

namespace {

mvPlaneAxis axisOf(long picture, long reach, long least, const PlaneOptions& options) {
    return {picture, reach, least, options.border, options.tile, options.margin};
}

// Only a given margin can leave nothing of a tile.
long planesOf(const mvPlaneAxis& axis, long side) {
    const long planes = axis.planes(side);
    if (planes > 0) return planes;
    throw BadArgument("--margin: at most " + std::to_string((side - 1) / 2) +
                      " leaves anything of tiles of " + std::to_string(side));
}

}  // namespace

PlaneChoice choosePlane(const mv_PelBuffer& picture, const PlaneNeeds& needs,
                        const PlaneOptions& options) {
    if (needs.plane && options.tile) {
        throw BadArgument("--tile: a filter from an archive has its plane, of " +
                          sizeText(*needs.plane));
    }
    const auto x = axisOf(picture.width(), needs.reach.x, needs.leastPlane.x, options);
    const auto y = axisOf(picture.height(), needs.reach.y, needs.leastPlane.y, options);
    const mvPair<long> plane = needs.plane.value_or(mvPair<long>(x.side(), y.side()));
    return {plane, planesOf(x, plane.x) * planesOf(y, plane.y)};
}

mvFilterImageOptions imageOptions(const PlaneOptions& options, int threads) {
    const long margin = options.margin.value_or(-1);
    return {.border = options.border, .margin = {margin, margin}, .threads = threads};
}

// Each pass of a transform asks before every 16 rows or columns; half the columns of a real picture
// are not transformed.
long expectedPolls(const PlaneChoice& choice, int threads) {
    const long eachPlane = choice.plane.y / 8 + 3 * choice.plane.x / 32 + 6;
    return choice.planes * eachPlane / std::min<long>(choice.planes, threads);
}
