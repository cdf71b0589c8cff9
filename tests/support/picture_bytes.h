// Small picture files of every kind that the program reads.
#pragma once

#include <string>
#include <vector>

namespace support {

/// Samples interleaved, one or three a pel.
struct Samples {
    long width, height;
    int depth;
    long channels;
    std::vector<unsigned> values;
};

/// Pels of which no two neighbours are alike.
Samples someSamples(long width, long height, int depth, long channels);

std::string pnmBytes(const Samples& samples, bool isText);

/// 24 bits a pel, or 8 with a grey palette.
std::string bmpBytes(const Samples& samples);

/// Of high quality; with an Exif marker unless the orientation is 0.
std::string jpegBytes(const Samples& samples, int orientation, bool isProgressive = false);

struct TiffKind {
    bool isTiled = false, isApart = false, isBigEndian = false;
    int compression = 1, orientation = 1;
};
std::string tiffBytes(const Samples& samples, const TiffKind& kind = {});

}  // namespace support
