// The two-dimensional kernel as plain scalar code: it judges every faster one, bit by bit.
//
// It is written to be read beside the algorithm's description, not to be fast: one operation a
// line where the order of operations decides the bits, one-based positions where the algorithm
// counts from one. A poll stands exactly where the kernel polls.
#pragma once

#include "reference/fft/plane.h"

namespace reference {

/// Transforms the plane in place, forward (direction >= 0) or inverse, without scaling. Rows whose
/// shifted index lies outside rowLow .. rowHigh are not transformed in the pass over the rows;
/// (0, height) lets every row through.
void fft2D(Plane& plane, int direction, long rowLow, long rowHigh, const Poll& poll = noPoll);

/// Forward transform of a real plane: the first `width` floats of each row are its real samples,
/// the others are not read (a plane of width 1 holds (sample, 0)). Leaves the full complex plane.
void realFFT2D(Plane& plane, const Poll& poll = noPoll);

}  // namespace reference
