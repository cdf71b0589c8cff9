// Pictures in PNM files: PGM and PPM, in text and in bytes.
#pragma once

#include <memory>

#include "picture_reader.h"

/// Reads P2, P3, P5 and P6. The greatest value that the file names becomes white: 255 for one below
/// 256, else 65535.
std::unique_ptr<PictureReader> pnmReader(InputBytes& file);
