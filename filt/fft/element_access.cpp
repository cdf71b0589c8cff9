// Reading and writing single frequencies.
#include <filt/fft/frequency_buffer.h>

#include <cstdint>

namespace {

// The storage index of a coordinate on an axis of `size` elements.
std::int64_t storageIndex(std::int64_t coordinate, std::int64_t size, bool centred) {
    const std::int64_t low = centred ? -(size / 2) : 0;
    const std::int64_t end = centred ? (size + 1) / 2 : size;
    if (coordinate < low || coordinate >= end) {
        throw mvFrequencyDefs::BadCoord("Coordinates are out of bounds");
    }
    return coordinate < 0 ? coordinate + size : coordinate;
}

}  // namespace

// The pair of floats at (x, y), after the checks that every access makes.
float* mvFrequencyBuffer::element(long x, long y, bool centred) const {
    requireFrequencies();
    const std::int64_t column = storageIndex(x, width_, centred);
    const std::int64_t row = storageIndex(y, height_, centred);
    return data_ + 2 * (row * width_ + column);
}

mvPair<double> mvFrequencyBuffer::get(long x, long y, bool centred) const {
    const float* const value = element(x, y, centred);
    return {value[0], value[1]};
}

double mvFrequencyBuffer::getReal(long x, long y, bool centred) const {
    return element(x, y, centred)[0];
}

double mvFrequencyBuffer::getImaginary(long x, long y, bool centred) const {
    return element(x, y, centred)[1];
}

void mvFrequencyBuffer::put(long x, long y, mvPair<double> value, bool centred) {
    float* const target = element(x, y, centred);
    target[0] = static_cast<float>(value.x);
    target[1] = static_cast<float>(value.y);
}

void mvFrequencyBuffer::putReal(long x, long y, double value, bool centred) {
    element(x, y, centred)[0] = static_cast<float>(value);
}

void mvFrequencyBuffer::putImaginary(long x, long y, double value, bool centred) {
    element(x, y, centred)[1] = static_cast<float>(value);
}
