// Takes the dot screen out of a print: screen_removal print.png tone.png
//
// The dots stand 5 pixels apart, at 45 degrees: 0.2 cycles per pixel, and 0.28 across the corner.
#include <filt/freqfilt.h>

#include <iostream>
#include <numeric>

#include "picture.h"
#include "program.h"

namespace {

// The ring of the dots, in cycles per pixel: what is to go.
const mvRingParameters kDots{
    .sigma = 0.02, .plateau = 0.05, .frequency = 0.24, .size = {1024, 1024}, .dcRadius = 1};

/// How strong the dots are, in grey levels: the mean over the picture.
double strengthOfDots(const Image& picture) {
    mvPelBuffer<double> dots;
    mfFilterImage(picture, mvFrequencyFilterBandPass(kDots), dots);
    double sum = 0.0;
    for (long y = 0; y < dots.height(); ++y) {
        sum = std::accumulate(dots.pointToRow(y), dots.pointToRow(y) + dots.width(), sum);
    }
    return sum / static_cast<double>(dots.width() * dots.height());
}

void run(char** argv) {
    const Image print = readPicture(argv[1]);
    Image tone;
    mfFilterImage(print, mvFrequencyFilterBandReject(kDots), tone);  // grey levels as they were
    writePicture(argv[2], tone);
    std::cout << "dots: " << strengthOfDots(print) << " grey levels before, "
              << strengthOfDots(tone) << " after\n";
}

}  // namespace

int main(int argc, char** argv) {
    return runExample(argc, argv, "print.png tone.png", run);
}
