// The kinds of files that pictures are written to, by their names.
#pragma once

#include <string>

enum class PictureFormat { png, tiff, pgm, ppm };

/// What the name's ending says: .png, .tif or .tiff, .pgm, .ppm. Standard output, and names that
/// say nothing of it, are PNG.
PictureFormat formatOf(const std::string& path);

/// True for the name of a picture, and true for one of a kind that is not written.
bool namesPicture(const std::string& path);
bool namesOtherPicture(const std::string& path);

/// The name itself, or with the ending .png where its own is of a kind that is not written.
std::string writableName(const std::string& path);

/// Throws BadArgument for a picture in colour whose name says that it is grey.
void requireRoomForColour(const std::string& path);
