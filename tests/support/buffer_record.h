// The archive record of a frequency buffer, byte by byte, so that tests can make any buffer.
#pragma once

#include <base/archive.h>
#include <filt/fft/frequency_buffer.h>
#include <internal/bit_cast.h>

#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

namespace support {

/// The fields in the order of the record; the transform is none.
struct BufferRecord {
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t imageWidth = 0;
    std::int32_t imageHeight = 0;
    std::int32_t masked = 0;
    std::int32_t maskedMiny = 0;
    std::int32_t maskedMaxy = 0;
    bool inverseComputed = false;
    std::int32_t x = 0;
    std::int32_t y = 0;
    bool hasData = true;
    std::vector<float> floats{};

    std::string bytes() const {
        std::string out;
        const auto byte = [&](int value) { out.push_back(static_cast<char>(value)); };
        const auto word = [&](std::uint32_t value) {
            for (int shift = 0; shift < 32; shift += 8) {
                byte(static_cast<int>(value >> shift & 255U));
            }
        };
        const auto number = [&](std::int32_t value) { word(static_cast<std::uint32_t>(value)); };
        byte(1);
        for (const auto field :
             {width, height, imageWidth, imageHeight, masked, maskedMiny, maskedMaxy}) {
            number(field);
        }
        byte(inverseComputed ? 1 : 0);
        byte(0);  // no transform
        byte(0);
        number(x);
        number(y);
        byte(hasData ? 1 : 0);
        byte(0);
        word(static_cast<std::uint32_t>(floats.size()));
        for (const float value : floats) word(mvi::bitCast<std::uint32_t>(value));
        return out;
    }
};

/// A record of a plane that the image fills, with the floats 1, 2, 3 ...
inline BufferRecord recordOf(std::int32_t width, std::int32_t height) {
    BufferRecord record{
        .width = width, .height = height, .imageWidth = width, .imageHeight = height};
    const auto count = 2 * static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    for (std::size_t i = 0; i < count; ++i) record.floats.push_back(static_cast<float>(i + 1));
    return record;
}

inline mvFrequencyBuffer loaded(const BufferRecord& record) {
    std::istringstream in(record.bytes());
    mvArchive ar(in);
    mvFrequencyBuffer buffer;
    ar || buffer;
    return buffer;
}

}  // namespace support
