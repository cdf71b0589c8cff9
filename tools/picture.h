// Pictures: their channels of pels.
#pragma once

#include <base/pel_buffer.h>

#include <variant>
#include <vector>

/// One channel of grey; or red, green and blue, three channels of one size.
template <class T>
struct PictureOf {
    std::vector<mvPelBuffer<T>> channels;

    bool isColour() const { return channels.size() == 3; }
    const mvPelBuffer<T>& first() const { return channels.front(); }
};

/// A picture with as many bits a sample as its file has.
using Picture = std::variant<PictureOf<unsigned char>, PictureOf<unsigned short>>;

/// What becomes of a picture in colour: one channel of grey, or each channel by itself.
enum class Channels { grey, each };
