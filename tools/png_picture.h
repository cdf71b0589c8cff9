// Pictures in PNG files.
#pragma once

#include <memory>

#include "picture_reader.h"

/// Reads all kinds of PNG. Throws a Failure for a file that is none, and for one whose bytes cannot
/// hold as many pels as it says.
std::unique_ptr<PictureReader> pngReader(InputBytes& file);
