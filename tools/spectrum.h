// The spectrum of a picture as a picture.
#pragma once

#include <string>

#include "border.h"

/// Writes the logarithm of the magnitudes as an 8-bit picture of the padded size, the zero
/// frequency at column width / 2 and row height / 2.
///
/// White is the strongest frequency besides the zero one, which the mean grey level would otherwise
/// make outshine everything; black is the level below which the weakest tenth lies.
void writeSpectrum(const std::string& input, const std::string& output, Border border);
