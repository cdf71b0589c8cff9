// Tells bright defects from dark ones: signed_defects cloth.png both.png
//
// A magnitude is bright for either. The real part has a sign: above 0 the cloth is brighter than
// around it, below 0 it is darker.
#include <filt/freqfilt.h>

#include <algorithm>
#include <iostream>

#include "picture.h"
#include "program.h"
#include "spots.h"

namespace {

/// What is neither weave nor light, in grey levels with their sign.
mvPelBuffer<double> deviations(const Image& cloth) {
    const mvFrequencyFilterBandPass ring(
        {.sigma = 0.012, .frequency = 0.03, .size = {1024, 1024}, .dcRadius = 1});
    mvPelBuffer<double> result;
    mfFilterImage(cloth, ring, result, {.result = mvFilterResult::real});
    return result;
}

/// The part of one sign; 12 grey levels of it are white.
Image part(const mvPelBuffer<double>& values, double sign) {
    Image image(values.width(), values.height());
    for (long y = 0; y < values.height(); ++y) {
        std::transform(values.pointToRow(y), values.pointToRow(y) + values.width(),
                       image.pointToRow(y), [=](double value) {
                           const double grey = sign * value * 255.0 / 12.0;
                           return static_cast<unsigned char>(std::clamp(grey, 0.0, 255.0));
                       });
    }
    return image;
}

/// Both magnitudes, grey, and beside them the bright ones red and the dark ones blue.
mvPelBuffer<Colour> sideBySide(const Image& bright, const Image& dark) {
    const long width = bright.width();
    mvPelBuffer<Colour> both(2 * width, bright.height());
    for (long y = 0; y < bright.height(); ++y) {
        for (long x = 0; x < width; ++x) {
            const unsigned char up = bright.pel(x, y), down = dark.pel(x, y);
            const unsigned char either = std::max(up, down);
            both.pointToRow(y)[x] = {either, either, either};
            both.pointToRow(y)[width + x] = {up, static_cast<unsigned char>(either / 3), down};
        }
    }
    return both;
}

void list(const char* kind, const Image& image) {
    for (const Spot& spot : findSpots(image, 128, 30)) {
        std::cout << kind << " defect at " << spot.x << ' ' << spot.y << '\n';
    }
}

void run(char** argv) {
    const mvPelBuffer<double> values = deviations(readPicture(argv[1]));
    const Image bright = part(values, 1.0), dark = part(values, -1.0);
    writePicture(argv[2], sideBySide(bright, dark));
    list("bright", bright);
    list("dark", dark);
}

}  // namespace

int main(int argc, char** argv) {
    return runExample(argc, argv, "cloth.png both.png", run);
}
