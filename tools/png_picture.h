// Grey pictures in PNG files.
#pragma once

#include <base/pel_buffer.h>

#include <string>
#include <variant>

class OutputFile;

/// A grey picture with as many bits a pel as its file has.
using Picture = std::variant<mvPelBuffer<unsigned char>, mvPelBuffer<unsigned short>>;

/// Reads a PNG of 8 or 16 bits a sample; fewer bits and palettes become 8 bits. Colour becomes grey
/// by the weights 0.299 red, 0.587 green, 0.114 blue on the stored values, rounded; alpha is
/// ignored.
///
/// Throws a Failure for a file that is missing or no PNG. Memory is taken in proportion to the
/// file: a size that so few bytes cannot hold is refused before any pel is decoded.
Picture readPicture(const std::string& path);

/// Writes a grey PNG of 8 or 16 bits a pel, by the pel type.
template <class T>
void writePicture(OutputFile& file, const mvPelBuffer_const<T>& picture);
