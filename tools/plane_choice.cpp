// Which plane a picture is filtered in.
#include "plane_choice.h"

#include <algorithm>
#include <string>

#include "failure.h"
#include "size_text.h"

namespace {

constexpr long kUsualTile = 1024;

// One axis of the choice.
struct Axis {
    long picture, reach, least;
    const PlaneOptions& options;

    long margin(long side) const { return options.margin.value_or(std::min(reach, side / 4)); }

    bool fits(long side) const {
        const long room = options.border == mvBorder::mirror ? 2 * margin(side) : 0;
        return picture + room <= side;
    }

    // Larger tiles lose less to a margin of more than a quarter.
    long tile() const {
        if (options.tile) return *options.tile;
        const bool isRoomy = options.margin.value_or(reach) <= kUsualTile / 4;
        return isRoomy && least <= kUsualTile ? kUsualTile : kLargestPlaneSide;
    }

    // Only a given margin can leave nothing of a tile.
    long planes(long side) const {
        if (fits(side)) return 1;
        const long step = side - 2 * margin(side);
        if (step > 0) return (picture + step - 1) / step;
        throw BadArgument("--margin: at most " + std::to_string((side - 1) / 2) +
                          " leaves anything of tiles of " + std::to_string(side));
    }

    // Two planes of 1024 take less time than one of 2048, and two threads can share them.
    bool isBetterCut(long side) const { return side > tile() && planes(tile()) <= 2; }

    long side() const {
        const long most = options.tile.value_or(kLargestPlaneSide);
        for (long whole = least; whole <= most; whole *= 2) {
            if (fits(whole)) return isBetterCut(whole) ? tile() : whole;
        }
        return tile();
    }
};

}  // namespace

PlaneChoice choosePlane(const mv_PelBuffer& picture, const PlaneNeeds& needs,
                        const PlaneOptions& options) {
    if (needs.plane && options.tile) {
        throw BadArgument("--tile: a filter from an archive has its plane, of " +
                          sizeText(*needs.plane));
    }
    const Axis x{picture.width(), needs.reach.x, needs.leastPlane.x, options};
    const Axis y{picture.height(), needs.reach.y, needs.leastPlane.y, options};
    const mvPair<long> plane = needs.plane.value_or(mvPair<long>(x.side(), y.side()));
    return {plane, x.planes(plane.x) * y.planes(plane.y)};
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
