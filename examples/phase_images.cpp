// Measures a surface by projected fringes: phase_images fringes.png phase.png quadrants.png
//
// One lobe keeps the fringes as e^(i phase). The angle image is the phase itself; the quadrant
// image is its two leading bits, made only of signs and thus the same on every machine.
#include <filt/freqfilt.h>

#include <cmath>
#include <iostream>
#include <numbers>

#include "picture.h"
#include "program.h"

namespace {

constexpr double kTurn = 2.0 * std::numbers::pi;
constexpr double kFringes = 0.125;  // cycles per pixel on the level ground

/// How far the fringes of row `y` are ahead of level ground, in fringes, at each pel from the left.
std::vector<double> heights(const mvPelBuffer<double>& angle, long y) {
    std::vector<double> row;
    double last = 0.0, turns = 0.0;
    for (long x = 0; x < angle.width(); ++x) {
        const double phase = angle.pel(x, y) / kTurn - kFringes * static_cast<double>(x);
        if (x > 0) turns -= std::round(phase + turns - last);  // unwrap
        row.push_back(last = phase + turns);
    }
    for (double& height : row) height -= last;  // the right edge is level ground
    return row;
}

void run(char** argv) {
    mvFrequencyBuffer spectrum;
    mfForwardFFT(readPicture(argv[1]), spectrum);

    const mvPair<double> sigma(0.03, 0.03), plateau(0.02, 0.01);
    const mvPair<long> size(spectrum.width(), spectrum.height());
    const mvFrequencyFilterGabor filter(sigma, plateau, mvRadian(0), kFringes, size, 1);
    filter.apply(spectrum);

    Image magnitude;
    mvPelBuffer<double> angle;
    mfInverseFFTAngle(spectrum, magnitude, angle, false, true);
    Image quadrant;
    mf_ComputeQuadrantImage(spectrum, quadrant);  // of the spatial plane that is now in there

    writePicture(argv[2], mfFrequencyMapImage(angle, mvFrequencyDefs::eMapAngle, 0, 0));
    for (long y = 0; y < quadrant.height(); ++y) {
        for (long x = 0; x < quadrant.width(); ++x) quadrant.pointToRow(y)[x] *= 85;  // to be seen
    }
    writePicture(argv[3], quadrant);

    const std::vector<double> profile = heights(angle, angle.height() / 2);
    for (long x = 16; x < angle.width(); x += 32) {
        std::cout << "height at " << x << ": "
                  << std::round(100.0 * profile[static_cast<std::size_t>(x)]) / 100.0
                  << " fringes\n";
    }
}

}  // namespace

int main(int argc, char** argv) {
    return runExample(argc, argv, "fringes.png phase.png quadrants.png", run);
}
