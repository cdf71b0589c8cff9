// Pictures into TIFF files.
#pragma once

#include "picture_writer.h"

/// Begins a TIFF whose samples are not compressed, with the program's name in the tag "Software".
/// Throws a Failure for a picture of 4 GiB or more, which no TIFF takes.
std::unique_ptr<PictureWriter> tiffWriter(OutputFile& file, const PictureForm& form);
