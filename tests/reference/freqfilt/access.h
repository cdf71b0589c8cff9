// Element access, sizing and masking of a spectrum, as the filters use them.
#pragma once

#include "reference/fft/transforms.h"

namespace reference {

/// Element access outside of the plane.
struct OutOfBounds {};
/// Element access after an inverse in place.
struct AlreadyInverted {};

/// The element of signed frequency (u, v). Throws AlreadyInverted, then OutOfBounds.
Complex& centred(Spectrum& buf, long u, long v);
const Complex& centred(const Spectrum& buf, long u, long v);

/// Makes the plane `width` x `height` (powers of two) for an image of that size, in the state of
/// fresh frequency data. Floats stay where they are in storage; new ones are 0.
void setAndAllocate(Spectrum& buf, long width, long height);

void setMask(Spectrum& buf, bool masked, long miny, long maxy);

/// Clears the square of side 2 radius - 1 around DC, row by row. Throws on the way what `centred`
/// throws.
void clearSquare(Spectrum& buf, long radius);

/// The values of that square, row by row, and the way back.
std::vector<Complex> saveSquare(const Spectrum& buf, long radius);
void restoreSquare(Spectrum& buf, long radius, const std::vector<Complex>& saved);

}  // namespace reference
