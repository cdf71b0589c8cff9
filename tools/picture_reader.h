// What decoders of picture files have in common.
#pragma once

#include <memory>

class InputBytes;

/// What a file says of its picture before it is decoded.
struct PictureHeader {
    const char* kind;       // "PNG"
    long width, height;     // as the file stores it
    int depth;              // bits a sample in the file
    const char* colour;     // "grey", "palette"
    bool isColour = false;  // three samples a pel are decoded, not one
    bool isOwn = false;     // this program wrote it
    int orientation = 1;    // 1 to 8, as cameras count: which way up the picture is to be shown

    /// Rows are shown as columns.
    bool isTurned() const { return orientation >= 5; }

    /// Samples are decoded to bytes, or to unsigned shorts.
    bool isWide() const { return depth > 8; }
};

/// Where decoded samples go.
class PictureRows {
  public:
    virtual ~PictureRows() = default;

    /// `count` pels of the stored row y, from column x on: bytes or unsigned shorts, `step` of them
    /// from pel to pel, the first one or three of which count. Throws what stops the program.
    virtual void put(long x, long y, long count, const void* samples, long step) = 0;
};

/// A picture's file that is being decoded.
class PictureReader {
  public:
    virtual ~PictureReader() = default;
    virtual PictureHeader header() = 0;

    /// Gives all pels to `rows`, each once. Throws a Failure, which does not name the file.
    virtual void read(PictureRows& rows) = 0;
};
