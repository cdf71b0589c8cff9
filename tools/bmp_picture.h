// Pictures in BMP files.
#pragma once

#include <memory>

#include "picture_reader.h"

/// Reads what is not compressed: palettes, and pels of 16, 24 and 32 bits. Grey palettes are grey.
std::unique_ptr<PictureReader> bmpReader(InputBytes& file);
