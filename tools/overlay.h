// Marks on a picture.
#pragma once

#include <vector>

#include "picture.h"
#include "spots.h"

/// A copy of the picture with a frame around each spot: bright between black, so that it shows on
/// any ground; yellow where the picture is in colour, else white.
template <class T>
PictureOf<T> withFrames(const PictureOf<T>& picture, const std::vector<Spot>& spots);
