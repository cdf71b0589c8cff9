// How an image is cut into tiles that fill a filter's plane.
#pragma once

#include <filt/freqfilt/filter_image.h>

#include <cstdint>

namespace mvi {

/// One axis: an image of `image` pels along it, in one plane of `plane` pels or in several.
///
/// Tile k gives the pels k * step .. k * step + step - 1 of the result. Position 0 of its plane is
/// the pel k * step - margin of the image; an axis in one plane has no margin.
struct AxisPlan {
    long image = 1;
    long plane = 1;
    long margin = 0;
    long step = 1;
    bool isCut = false;

    long tiles() const { return isCut ? (image - 1) / step + 1 : 1; }

    /// The first pel of the result that tile k gives, and how many.
    long begin(long k) const { return k * step; }
    long count(long k) const { return image - begin(k) < step ? image - begin(k) : step; }
};

/// True when an image of `image` pels along an axis needs several planes of `plane` pels.
bool needsTiles(long image, long plane, long margin, mvBorder border);

AxisPlan planAxis(long image, long plane, long margin, mvBorder border);

/// The smallest power of two that takes an image of `image` pels and, with the mirror, an eighth of
/// it at either end.
long planeFor(long image, mvBorder border);

/// Both axes. Tiles are numbered row by row.
struct TilePlan {
    AxisPlan x, y;
    mvBorder border = mvBorder::mirror;

    std::int64_t tiles() const { return std::int64_t{x.tiles()} * y.tiles(); }
    mvPair<long> tile(std::int64_t number) const {
        return {static_cast<long>(number % x.tiles()), static_cast<long>(number / x.tiles())};
    }
    mvPair<long> plane() const { return {x.plane, y.plane}; }
};

}  // namespace mvi
