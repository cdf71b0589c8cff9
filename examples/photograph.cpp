// Finds the defects in a photograph of 12 megapixels: photograph photo.png defects.png
//
// The call cuts the picture into tiles of the filter's plane. How many threads work on them changes
// nothing in what comes out.
#include <filt/freqfilt.h>

#include <algorithm>
#include <iostream>
#include <thread>

#include "picture.h"
#include "program.h"
#include "spots.h"

namespace {

void run(char** argv) {
    const Image photo = readPicture(argv[1]);
    // The threads lie 9 pixels apart, the folds and the light are wider than a hundred.
    const mvFrequencyFilterBandPass ring(
        {.sigma = 0.007, .frequency = 0.02, .size = {1024, 1024}, .dcRadius = 1});
    const int threads = static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));

    Image defects;
    mfFilterImage(photo, ring, defects, {.rescale = true, .threads = threads});
    writePicture(argv[2], defects);
    for (const Spot& spot : findSpots(defects, 128, 60)) {
        std::cout << "defect of " << spot.pels << " pels at " << spot.x << ' ' << spot.y << '\n';
    }
}

}  // namespace

int main(int argc, char** argv) {
    return runExample(argc, argv, "photo.png defects.png", run);
}
