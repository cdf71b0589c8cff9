// Pictures in PNG files, for the examples.
#pragma once

#include <base/pel_buffer.h>

#include <string>

using Image = mvPelBuffer<unsigned char>;

struct Colour {
    unsigned char red, green, blue;
};

/// Reads any PNG as 8-bit grey. Throws std::runtime_error.
Image readPicture(const std::string& path);

/// Writes a grey or a coloured PNG. Throws std::runtime_error.
void writePicture(const std::string& path, const Image& picture);
void writePicture(const std::string& path, const mvPelBuffer<Colour>& picture);
