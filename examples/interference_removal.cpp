// Takes a wave of interference out of a picture: interference_removal picture.png clean.png
//
// A wave is two points of the spectrum, one on either side of DC. The strongest is looked for and
// both of its points are cut out; what else the picture shows stays sharp.
#include <filt/freqfilt.h>

#include <cmath>
#include <iostream>
#include <numbers>

#include "picture.h"
#include "program.h"

namespace {

struct Wave {
    double frequency = 0.0;  // cycles per pixel
    double angle = 0.0;      // radians, from x to the right towards y downwards
};

/// The strongest wave that repeats within 20 pixels. A real picture has each twice: one half of
/// the plane shows all.
Wave strongestWave(const mvFrequencyBuffer& spectrum) {
    const mvPelBuffer<double> magnitudes = spectrum.getMagnitudeImage(true);  // DC in the middle
    Wave wave;
    double strongest = 0.0;
    for (long y = magnitudes.height() / 2; y < magnitudes.height(); ++y) {
        for (long x = 0; x < magnitudes.width(); ++x) {
            const double fx = static_cast<double>(x) / static_cast<double>(spectrum.width()) - 0.5;
            const double fy = static_cast<double>(y) / static_cast<double>(spectrum.height()) - 0.5;
            const double frequency = std::hypot(fx, fy);
            if (frequency < 0.05 || frequency > 0.5 || magnitudes.pel(x, y) <= strongest) continue;
            strongest = magnitudes.pel(x, y);
            wave = {frequency, std::atan2(fy, fx)};
        }
    }
    return wave;
}

void cutOut(const Wave& wave, mvFrequencyBuffer& spectrum) {
    const mvPair<double> sigma(0.012, 0.012), plateau(0.01, 0.01);  // along and across
    const mvPair<long> size(spectrum.width(), spectrum.height());
    mvFrequencyFilterGaborReject filter(sigma, plateau, mvRadian(wave.angle), wave.frequency, size,
                                        1);
    filter.apply(spectrum);
    filter.angle(mvRadian(wave.angle + std::numbers::pi));  // the same lobe, turned half round
    filter.apply(spectrum);
}

void run(char** argv) {
    mvFrequencyBuffer spectrum;
    mfForwardFFT(readPicture(argv[1]), spectrum);

    const Wave wave = strongestWave(spectrum);
    cutOut(wave, spectrum);

    Image clean;
    mfInverseFFT(spectrum, clean, false, true);
    writePicture(argv[2], clean);
    std::cout << "wave of " << wave.frequency << " cycles per pixel at "
              << wave.angle * 180.0 / std::numbers::pi << " degrees\n";
}

}  // namespace

int main(int argc, char** argv) {
    return runExample(argc, argv, "picture.png clean.png", run);
}
