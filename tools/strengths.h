// How far the pels of a result stand out.
#pragma once

#include <base/pel_buffer.h>

/// How far each value is from the median of all, in spreads. The spread is 1.4826 times the median
/// of the distances, the standard deviation where values are spread normally: what stands out
/// hardly changes it. A spread below 0.001 grey levels counts as that, so that the rounding of an
/// even picture does not stand out.
///
/// Within the filter's reach of an edge, and at most in the outer quarters, what lies beyond the
/// edge plays a part, which leaves something all along it of a wave that it cuts: there the spread
/// is that of the pels as far from this edge, where that is larger.
void toStrengths(mvPelBuffer<double>& values, mvPair<long> reach);
