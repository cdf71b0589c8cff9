// The spectrum of a picture as a picture.
#pragma once

#include "picture_arguments.h"

struct SpectrumOptions {
    bool axes = false;
    double maxFrequency = 0.5;
};

/// Writes the logarithm of the magnitudes as a square 8-bit picture, the zero frequency at column
/// width / 2 and row height / 2, with one scale for both axes.
///
/// The picture's own waves are shown: its mean is taken off and its edges fade out, since a picture
/// that is cut off, or goes on as its mirror image, has waves at its edges that are not in it. A
/// picture larger than a plane is looked at in pieces, of which the mean power is shown.
///
/// White is the strongest frequency, black the level below which the weakest tenth lies. Up to
/// `maxFrequency` cycles per pixel are shown, enlarged; `axes` puts the axes around it.
void writeSpectrum(const PictureFiles& files, const SpectrumOptions& options);
