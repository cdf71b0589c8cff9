// Where an image is bright, for the examples.
#pragma once

#include <vector>

#include "picture.h"

/// Bright pels that are connected, and their middle.
struct Spot {
    long pels, x, y;
};

/// The spots of at least `least` pels, none of them darker than `threshold`, from the top down.
std::vector<Spot> findSpots(const Image& image, int threshold, long least);
