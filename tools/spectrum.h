// The spectrum of a picture as a picture.
#pragma once

#include "border.h"
#include "picture_arguments.h"

/// Writes the logarithm of the magnitudes as an 8-bit picture of the padded size, the zero
/// frequency at column width / 2 and row height / 2.
///
/// White is the strongest frequency besides the zero one, which the mean grey level would otherwise
/// make outshine everything; black is the level below which the weakest tenth lies. `axes` puts the
/// axes around it.
void writeSpectrum(const PictureFiles& files, Border border, bool axes);
