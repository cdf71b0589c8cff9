// Discrete Fourier transforms in higher precision, from the definition and by a plain fast one.
#pragma once

#include <complex>
#include <vector>

#include "reference/fft/plane.h"

namespace reference {

/// A complex plane in double precision, laid out as Plane.
using DoublePlane = std::vector<std::complex<double>>;

/// X(u, v) = sum over x, y of z(x, y) e^(-+ 2 pi i (u x / W + v y / H)), term by term in long
/// double; direction 1 is forward (minus), -1 inverse (plus). Takes (W H)^2 steps; not scaled.
DoublePlane definitionDFT2D(const Plane& plane, int direction);

/// The same sum by radix-2 recursion over rows, then columns, in double or long double.
template <class Real = double>
std::vector<std::complex<Real>> fastDFT2D(const Plane& plane, int direction);

/// Root of the sum of |a - b|^2, divided by that of |b|^2 (or by 1 where b is zero).
double relativeError(const Plane& a, const DoublePlane& b);

}  // namespace reference
