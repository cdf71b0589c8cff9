// Element-wise arithmetic of planes of one size.
#pragma once

#include "reference/fft/plane.h"

namespace reference {

Plane sum(const Plane& a, const Plane& b);
Plane difference(const Plane& a, const Plane& b);

/// The four real products in single precision; what comes of infinities and NaNs is kept. The
/// first operand is the one that accumulates: the order of the products follows it.
Plane product(const Plane& src, const Plane& dst);
Plane conjugate(const Plane& a);

}  // namespace reference
