// Pictures in JPEG files.
#pragma once

#include <memory>

#include "picture_reader.h"

/// Reads JPEG of 8 bits, grey or in colour, and the orientation that a camera notes.
std::unique_ptr<PictureReader> jpegReader(InputBytes& file);
