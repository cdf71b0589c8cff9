// The quadrant code of a complex value.
#pragma once

/// Bit 0 for a negative real part, bit 1 for a negative imaginary part; zeros of both signs and
/// NaNs count as not negative.
inline unsigned char mf_Quadrant(float re, float im) {
    return static_cast<unsigned char>((re < 0.0f ? 1 : 0) | (im < 0.0f ? 2 : 0));
}

/// The codes of a run of elements.
inline void mf_WriteQuadrants(const float* elements, long count, unsigned char* codes) {
    for (long i = 0; i < count; ++i) {
        codes[i] = mf_Quadrant(elements[2 * i], elements[2 * i + 1]);
    }
}
