// The one-dimensional split-radix transform: tables, butterflies, bit reversal.
#pragma once

#include <array>
#include <vector>

#include "reference/fft/plane.h"

namespace reference {

/// Cosine and sine of e and of 3 e, where e = 2 pi / 2^k for entry k of a table.
struct Twiddle {
    float ce;
    float se;
    float c3e;
    float s3e;
};
using TwiddleTable = std::array<Twiddle, 16>;

/// The table, computed in double and rounded to float.
TwiddleTable makeTwiddles();

/// Entry i, from 1 to n - 1, is 2 j when position i is swapped with position j > i, else -1.
std::vector<int> makeBitReversal(int n);

/// Transforms n consecutive elements in place, n a power of two; direction < 0 is the inverse.
/// Neither direction scales.
void transform1D(Complex* z, int n, int direction, const TwiddleTable& twiddles,
                 const std::vector<int>& bitReversal);

}  // namespace reference
