// Pictures into PNG files.
#pragma once

#include "picture_writer.h"

/// Begins a PNG that bears the program's name in a text entry "Software".
std::unique_ptr<PictureWriter> pngWriter(OutputFile& file, const PictureForm& form);
