// Pictures into PNM files.
#pragma once

#include "picture_writer.h"

/// Begins a PGM, or a PPM for three channels, in bytes, with the program's name in a comment.
std::unique_ptr<PictureWriter> pnmWriter(OutputFile& file, const PictureForm& form);
