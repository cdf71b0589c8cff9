// Grey pictures in PNG files.
#pragma once

#include <base/pel_buffer.h>

#include <string>
#include <variant>

/// A grey picture with as many bits a pel as its file has.
using Picture = std::variant<mvPelBuffer<unsigned char>, mvPelBuffer<unsigned short>>;

/// Reads a PNG of 8 or 16 bits a sample; fewer bits and palettes become 8 bits. Colour becomes grey
/// by the weights 0.299 red, 0.587 green, 0.114 blue on the stored values, rounded; alpha is
/// ignored.
///
/// Throws a Failure for a file that is missing or no PNG. Memory is taken in proportion to the
/// file: a size that so few bytes cannot hold is refused before any pel is decoded.
Picture readPicture(const std::string& path);

/// True for a PNG that this program wrote, by the text that it bears.
bool isOwnPicture(const std::string& path);

/// What `info` says of a picture, without decoding it. Throws a Failure for what is no PNG.
std::string pictureReport(const std::string& path);
