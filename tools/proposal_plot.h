// Proposed filters as a picture.
#pragma once

#include <suggest/suggest.h>

/// Above, the grey levels over the radius, both logarithmic; below, the spectrum of the picture
/// with axes, and on it a circle, or a cross for a lobe, at the frequency of each filter.
mvPelBuffer<unsigned char> proposalPlot(const mvPelBuffer<double>& picture,
                                        const std::vector<mvSuggestion>& filters);
