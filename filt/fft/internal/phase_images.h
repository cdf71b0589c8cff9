// Angles and quadrants of a complex plane, into outputs that have their memory.
#pragma once

#include <filt/fft/internal/output_image.h>

namespace mvi {

/// Make the images that mf_ComputeAngleImage and mf_ComputeQuadrantImage make, of a buffer of the
/// size that the output was constructed for. What goes before, the checks and a poll, is the
/// caller's.
void makeAngleImage(const mvFrequencyBuffer& buf, OutputImage<double>& output);
void makeQuadrantImage(const mvFrequencyBuffer& buf, OutputImage<unsigned char>& output);

}  // namespace mvi
