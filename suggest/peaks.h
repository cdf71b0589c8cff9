// The strongest waves of a picture.
#pragma once

#include <string>
#include <vector>

#include "filter_step.h"

/// A wave that stands out of its surroundings in the spectrum. A real picture has it twice, in
/// opposite directions; the one to the right, or straight down, is listed.
struct mvPeak {
    double frequency = 0;  ///< cycles per pixel
    double degrees = 0;    ///< direction across its stripes: above -90, at most 90; y goes down
    double amplitude = 0;  ///< in grey levels, as it is where the window lets it through
    double decibels = 0;   ///< how far it stands above the spectrum around it

    /// Waves of one group are overtones of its first, strongest or lowest, wave: `order` times its
    /// frequency in its direction. Groups count from 0 in the order of their strongest wave.
    long group = 0;
    long order = 1;

    /// Removes the wave.
    std::vector<mvFilterStep> steps;
    std::vector<std::string> arguments;

    double period() const { return 1 / frequency; }  ///< pels from crest to crest
};

/// The strongest waves, `most` of them at most, those of a group together.
///
/// Throws mvFrequencyDefs::UnboundWindow for a picture that is not bound, and what a failing
/// attention poll throws.
std::vector<mvPeak> mfPeaks(const mvPelBuffer_const<double>& picture, long most = 12);
