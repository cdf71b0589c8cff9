// The transposes between the two passes of the kernel, and the Hermitian fill after them.
#pragma once

#include "reference/fft/plane.h"

namespace reference {

/// Rectangular: `src` has h rows of w elements, `dst` becomes w rows of h.
/// Polls once when both sides are at least 4.
void transpose(const Complex* src, Complex* dst, int w, int h, const Poll& poll);

/// In place, n by n, in tiles of 4 x 4 (n < 4: element by element and without a poll). With a band
/// of rows in force, tile pairs that lie outside it with rows and columns stay as they are.
void transposeSquare(Complex* z, int n, long rowLow, long rowHigh, const Poll& poll);

/// In place, n by n, as far as the real transform needs it (n < 8: all of it and without a poll).
/// After the rows the first n / 2 + 4 rows of the result are right, else its first n / 2 + 4
/// columns.
void transposeSquareHalf(Complex* z, int n, bool afterRows, const Poll& poll);

/// Fills columns W / 2 + 1 to W - 1 with F(-u, -v) = conj F(u, v), after one poll.
void hermitianFill(Plane& plane, const Poll& poll);

/// The row's index after the DC row has moved to the middle.
long shiftedRow(long row, long height);

}  // namespace reference
