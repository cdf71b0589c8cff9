// Where an image is bright, for the examples.
#include "spots.h"

namespace {

/// The spot that (x, y) belongs to; its pels are made black in `image`.
Spot takeSpot(Image& image, long x, long y, int threshold) {
    std::vector<mvPair<long>> open{{x, y}};
    Spot sum{0, 0, 0};
    while (!open.empty()) {
        const mvPair<long> at = open.back();
        open.pop_back();
        if (at.x < 0 || at.x >= image.width() || at.y < 0 || at.y >= image.height()) continue;
        unsigned char& pel = image.pointToRow(at.y)[at.x];
        if (pel < threshold) continue;
        pel = 0;
        sum = {sum.pels + 1, sum.x + at.x, sum.y + at.y};
        for (const long step : {-1L, 1L}) {
            open.emplace_back(at.x + step, at.y);
            open.emplace_back(at.x, at.y + step);
        }
    }
    return {sum.pels, sum.x / sum.pels, sum.y / sum.pels};
}

}  // namespace

std::vector<Spot> findSpots(const Image& image, int threshold, long least) {
    Image left = mfPelClone(image);
    std::vector<Spot> spots;
    for (long y = 0; y < left.height(); ++y) {
        for (long x = 0; x < left.width(); ++x) {
            if (left.pel(x, y) < threshold) continue;
            const Spot spot = takeSpot(left, x, y, threshold);
            if (spot.pels >= least) spots.push_back(spot);
        }
    }
    return spots;
}
