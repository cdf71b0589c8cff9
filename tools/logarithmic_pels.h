// Magnitudes of a spectrum as grey levels.
#pragma once

#include <base/pel_buffer.h>

/// The logarithms, from the weakest tenth (black) to the strongest (white).
mvPelBuffer<unsigned char> logarithmicPels(const mvPelBuffer<double>& magnitudes);
