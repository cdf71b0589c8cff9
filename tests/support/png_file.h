// PNG files of any kind, written and read sample by sample.
#pragma once

#include <png.h>

#include <string>
#include <vector>

/// A picture as its file holds it: samples interleaved, as many channels as the colour type has.
struct PngFile {
    long width = 0;
    long height = 0;
    int depth = 8;
    int colourType = PNG_COLOR_TYPE_GRAY;
    int interlace = PNG_INTERLACE_NONE;
    std::vector<png_color> palette{};
    std::vector<unsigned> samples{};

    unsigned at(long x, long y) const { return samples[static_cast<std::size_t>(y * width + x)]; }
};

void writePng(const std::string& path, const PngFile& picture);

/// Throws std::runtime_error for what is no complete PNG.
PngFile readPng(const std::string& path);

/// A grey picture whose pels are `value(x, y)`.
template <class Value>
PngFile greyPng(long width, long height, int depth, Value value) {
    PngFile picture{.width = width, .height = height, .depth = depth};
    for (long y = 0; y < height; ++y) {
        for (long x = 0; x < width; ++x) {
            picture.samples.push_back(static_cast<unsigned>(value(x, y)));
        }
    }
    return picture;
}

/// A picture of pels that look random and fill the whole range.
PngFile noisePng(long width, long height, int depth);
