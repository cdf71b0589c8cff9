// Inputs and the answers that are expected.
#pragma once

#include <random>

#include "peer.h"
#include "pipeline.h"

namespace bench {

/// Evenly spread over -1 .. 1, the same in every run.
inline Values randomValues(long count) {
    std::mt19937 generator(7);
    Values values;
    for (long i = 0; i < count; ++i) {
        values.push_back(static_cast<float>(static_cast<int>(generator() >> 8)) / 8388608.0f -
                         1.0f);
    }
    return values;
}

/// Whole numbers 0 .. top.
inline Values randomPels(long count, unsigned top) {
    std::mt19937 generator(7);
    Values values;
    for (long i = 0; i < count; ++i) values.push_back(static_cast<float>(generator() % (top + 1)));
    return values;
}

/// The transform in double precision of a complex plane (direction -1: inverse), and columns 0 to
/// W/2 of the forward one of a real one.
Values expectedComplex(const Values& plane, Size size, int direction = 1);
Values expectedReal(const Values& image, Size size);

/// The pipeline's pels up to `top`, computed in double precision.
Values expectedPels(const Values& image, const Pipeline& work, float top);

/// The same for a large image in tiles of the plane of `tile`, with `margin` pels around each that
/// are dropped and zeros around the image.
Values expectedOfTiles(const Values& image, Size size, const Pipeline& tile, long margin,
                       float top);

}  // namespace bench
