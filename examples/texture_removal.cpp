// Finds the defects of a woven cloth: texture_removal cloth.png defects.png
//
// The threads repeat every 7 pixels, the light changes over hundreds. Defects are in between.
#include <filt/freqfilt.h>

#include <iostream>

#include "picture.h"
#include "program.h"
#include "spots.h"

namespace {

/// What is neither weave nor light, spread over 0 .. 255.
Image defects(const Image& cloth) {
    const mvFrequencyFilterBandPass ring(
        {.sigma = 0.012, .frequency = 0.03, .size = {1024, 1024}, .dcRadius = 1});
    Image result;
    mfFilterImage(cloth, ring, result, {.rescale = true});
    return result;
}

void run(char** argv) {
    const Image image = defects(readPicture(argv[1]));
    writePicture(argv[2], image);
    for (const Spot& spot : findSpots(image, 160, 30)) {
        std::cout << "defect of " << spot.pels << " pels at " << spot.x << ' ' << spot.y << '\n';
    }
}

}  // namespace

int main(int argc, char** argv) {
    return runExample(argc, argv, "cloth.png defects.png", run);
}
