// Takes the dot screen out of a print: screen_removal print.png tone.png
//
// The dots stand 5 pixels apart, at 45 degrees: 0.2 cycles per pixel, and 0.28 across the corner.
#include <filt/freqfilt.h>

#include <algorithm>
#include <cmath>
#include <iostream>

#include "picture.h"
#include "tools/border.h"

namespace {

/// The strongest wave from 0.15 cycles per pixel on, as its amplitude in grey levels.
double strongestFineWave(const mvFrequencyBuffer& spectrum) {
    const long width = spectrum.width(), height = spectrum.height();
    double strongest = 0.0;
    for (long v = -height / 2; v < height / 2; ++v) {
        for (long u = -width / 2; u < width / 2; ++u) {
            const double frequency =
                std::hypot(static_cast<double>(u) / static_cast<double>(width),
                           static_cast<double>(v) / static_cast<double>(height));
            if (frequency < 0.15) continue;
            const mvPair<double> value = spectrum.get(u, v, true);  // centred: u and v have signs
            strongest = std::max(strongest, std::hypot(value.x, value.y));
        }
    }
    return 2.0 * strongest / static_cast<double>(width * height);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    const Image print = readPicture(argv[1]);
    mvFrequencyBuffer spectrum;
    mfForwardFFT(mirrored(print), spectrum);
    const double before = strongestFineWave(spectrum);

    const double sigma = 0.02, plateau = 0.05, frequency = 0.24;  // cycles per pixel
    const mvPair<long> size(spectrum.width(), spectrum.height());
    const mvFrequencyFilterBandReject filter(sigma, plateau, frequency, size, 1);
    filter.apply(spectrum);
    const double after = strongestFineWave(spectrum);

    Image tone;
    mfInverseFFT(spectrum, tone, false, true);  // grey levels as they were, in place
    writePicture(argv[2], tone.window(0, 0, print.width(), print.height()));
    std::cout << "strongest fine wave: " << before << " grey levels before, " << after
              << " after\n";
}
