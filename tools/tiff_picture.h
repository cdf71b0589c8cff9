// Pictures in TIFF files.
#pragma once

#include <memory>

#include "picture_reader.h"

/// Reads the first picture of a TIFF: grey of 1, 2, 4, 8 or 16 bits, colour of 8 or 16 bits,
/// palettes; strips and tiles; channels together or apart; all compressions that libtiff has.
std::unique_ptr<PictureReader> tiffReader(InputBytes& file);
