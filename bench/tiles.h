// A large picture, cut into tiles that overlap.
#pragma once

#include <vector>

#include "peer.h"

namespace bench {

/// The part of a picture that one plane filters. Rectangles count in the picture's pels.
class Tile {
  public:
    struct Rectangle {
        long left, top, right, bottom;
    };

    /// What the plane takes of the picture, and what the picture takes of the result.
    Rectangle source, target;

    /// The picture's position of the plane's first pel; negative where the plane begins outside.
    long x, y;
    long planeWidth;

    /// visit(position in the picture, position in the plane, count) for each row of `part`.
    template <class Visit>
    void forEachRow(const Rectangle& part, long pictureWidth, Visit visit) const {
        for (long row = part.top; row < part.bottom; ++row) {
            visit(row * pictureWidth + part.left, (row - y) * planeWidth + part.left - x,
                  part.right - part.left);
        }
    }
};

/// Tiles of a picture that is larger than the plane in both directions, with `margin` pels around
/// each that are filtered with it and dropped.
std::vector<Tile> tilesOf(Size picture, Size plane, long margin);

}  // namespace bench
