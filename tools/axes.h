// Axes around a picture of frequencies.
#pragma once

#include <base/pel_buffer.h>

/// The plane in a white margin with ticks and numbers, in cycles per pixel along both axes: the
/// zero frequency lies at column width / 2 and row height / 2, and the frequency f at
/// `pelsPerCycle` times f from there. Ticks and numbers are as dense as they can be read. A plane
/// of less than 256 pels a side is enlarged by a whole factor.
mvPelBuffer<unsigned char> withAxes(const mvPelBuffer_const<unsigned char>& plane,
                                    mvPair<double> pelsPerCycle);
