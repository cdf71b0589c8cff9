// The quadrant code of a complex value.
#pragma once

namespace mvi {

/// Bit 0 for a negative real part, bit 1 for a negative imaginary part; zeros of both signs and
/// NaNs count as not negative.
inline unsigned char quadrant(float re, float im) {
    return static_cast<unsigned char>((re < 0.0f ? 1 : 0) | (im < 0.0f ? 2 : 0));
}

/// The codes of a run of elements.
inline void writeQuadrants(const float* elements, long count, unsigned char* codes) {
    for (long i = 0; i < count; ++i) {
        codes[i] = quadrant(elements[2 * i], elements[2 * i + 1]);
    }
}

}  // namespace mvi
