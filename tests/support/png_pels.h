// PNG files as pel buffers.
#pragma once

#include <base/pel_buffer.h>

#include <vector>

#include "support/png_file.h"

namespace support {

template <class T>
mvPelBuffer<T> pelsOf(const PngFile& picture) {
    mvPelBuffer<T> buffer(picture.width, picture.height);
    for (long y = 0; y < picture.height; ++y) {
        for (long x = 0; x < picture.width; ++x) {
            buffer.pointToRow(y)[x] = static_cast<T>(picture.at(x, y));
        }
    }
    return buffer;
}

template <class T>
std::vector<unsigned> samplesOf(const mvPelBuffer<T>& buffer) {
    std::vector<unsigned> all;
    for (long y = 0; y < buffer.height(); ++y) {
        for (long x = 0; x < buffer.width(); ++x) all.push_back(buffer.pel(x, y));
    }
    return all;
}

}  // namespace support
