// What a filter lets through, as an image.
#pragma once

#include <suggest/filter_chain.h>

/// The gains of filters that are applied in turn, with all else that they do, in the size that they
/// were built for: the zero frequency at column width / 2 and row height / 2.
mvPelBuffer<double> gainsOf(mvFilterList filters);

/// Gains as pels: black is 0, white the largest of them.
mvPelBuffer<unsigned char> gainPels(const mvPelBuffer_const<double>& gains);
