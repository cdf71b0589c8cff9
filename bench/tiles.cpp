// A large picture, cut into tiles that overlap.
#include "tiles.h"

#include <algorithm>

namespace bench {

std::vector<Tile> tilesOf(Size picture, Size plane, long margin) {
    std::vector<Tile> tiles;
    const long width = plane.width - 2 * margin, height = plane.height - 2 * margin;
    for (long top = 0; top < picture.height; top += height) {
        for (long left = 0; left < picture.width; left += width) {
            const long x = left - margin, y = top - margin;
            tiles.push_back(
                {{std::max(0L, x), std::max(0L, y), std::min(picture.width, x + plane.width),
                  std::min(picture.height, y + plane.height)},
                 {left, top, std::min(picture.width, left + width),
                  std::min(picture.height, top + height)},
                 x,
                 y,
                 plane.width});
        }
    }
    return tiles;
}

}  // namespace bench
