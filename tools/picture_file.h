// Files of pictures, of any kind that the program reads.
#pragma once

#include <string>

#include "picture.h"

/// What is read of a file, and how many pels it may have.
struct ReadOptions {
    static constexpr long kMaxPixels = 200'000'000;

    Channels channels = Channels::grey;
    long maxPixels = kMaxPixels;
};

/// Reads a PNG, JPEG, TIFF, BMP or PNM. The kind is recognised by the first bytes of the file.
/// Fewer than 8 bits a sample, and palettes, become 8 bits. Colour becomes grey, when that is asked
/// for, by the weights 0.299 red, 0.587 green, 0.114 blue on the stored values, rounded; alpha is
/// ignored. A picture that is stored turned or mirrored, and says so, is turned upright.
///
/// Throws a Failure for a file that is missing, of another kind, broken, or of too many pels. A
/// size that so few bytes cannot hold is refused before any pel is decoded, where the kind allows
/// that.
Picture readPicture(const std::string& path, const ReadOptions& options);

/// True for a picture that this program wrote, by the text that it bears.
bool isOwnPicture(const std::string& path);

/// True when a file that begins so may be a picture; no archive begins so.
bool beginsPicture(int firstByte);

/// What `info` says of a picture, without decoding it. Throws a Failure for what is none.
std::string pictureReport(const std::string& path);
