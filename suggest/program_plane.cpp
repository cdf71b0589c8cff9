// Which plane the program filters a picture in.
#include "program_plane.h"

#include <algorithm>

namespace {

constexpr long kLargestSide = 2048, kUsualTile = 1024;

}  // namespace

long mvPlaneAxis::marginOf(long side) const {
    return margin.value_or(std::min(reach, side / 4));
}

bool mvPlaneAxis::fits(long side) const {
    const long room = border == mvBorder::mirror ? 2 * marginOf(side) : 0;
    return picture + room <= side;
}

// Larger tiles lose less to a margin of more than a quarter.
long mvPlaneAxis::usualTile() const {
    if (tile) return *tile;
    const bool isRoomy = margin.value_or(reach) <= kUsualTile / 4;
    return isRoomy && least <= kUsualTile ? kUsualTile : kLargestSide;
}

long mvPlaneAxis::planes(long side) const {
    if (fits(side)) return 1;
    const long step = side - 2 * marginOf(side);
    return step > 0 ? (picture + step - 1) / step : 0;
}

// Two planes of 1024 take less time than one of 2048, and two threads can share them.
bool mvPlaneAxis::isBetterCut(long side) const {
    return side > usualTile() && planes(usualTile()) <= 2;
}

long mvPlaneAxis::side() const {
    const long most = tile.value_or(kLargestSide);
    for (long whole = least; whole <= most; whole *= 2) {
        if (fits(whole)) return isBetterCut(whole) ? usualTile() : whole;
    }
    return usualTile();
}

mvPair<long> mfProgramPlane(mvPair<long> picture, mvPair<long> reach) {
    return {mvPlaneAxis{.picture = picture.x, .reach = reach.x}.side(),
            mvPlaneAxis{.picture = picture.y, .reach = reach.y}.side()};
}
