// Finds the defects of a woven cloth: texture_removal cloth.png defects.png
//
// The threads repeat every 7 pixels, the light changes over hundreds. Defects are in between.
#include <filt/freqfilt.h>

#include <iostream>
#include <vector>

#include "picture.h"
#include "tools/border.h"

namespace {

/// What is neither weave nor light, spread over 0 .. 255.
Image defects(const Image& cloth) {
    mvFrequencyBuffer spectrum;
    mfForwardFFT(mirrored(cloth), spectrum);  // mirrored: no edge between picture and padding

    const double sigma = 0.012, plateau = 0.0, frequency = 0.03;  // cycles per pixel
    const mvPair<long> size(spectrum.width(), spectrum.height());
    const mvFrequencyFilterBandPass filter(sigma, plateau, frequency, size, 1);
    filter.apply(spectrum);

    Image result;
    mfInverseFFT(spectrum, result, true, true);  // rescaled, in place
    return result.window(0, 0, cloth.width(), cloth.height());
}

/// The bright pels that are connected with (x, y); they are made black in `image`.
std::vector<mvPair<long>> takeSpot(Image& image, long x, long y, int threshold) {
    std::vector<mvPair<long>> open{{x, y}}, spot;
    while (!open.empty()) {
        const mvPair<long> at = open.back();
        open.pop_back();
        if (at.x < 0 || at.x >= image.width() || at.y < 0 || at.y >= image.height()) continue;
        unsigned char& pel = image.pointToRow(at.y)[at.x];
        if (pel < threshold) continue;
        pel = 0;
        spot.push_back(at);
        for (const long step : {-1L, 1L}) {
            open.emplace_back(at.x + step, at.y);
            open.emplace_back(at.x, at.y + step);
        }
    }
    return spot;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    Image image = defects(readPicture(argv[1]));
    writePicture(argv[2], image);

    const int threshold = 160;
    for (long y = 0; y < image.height(); ++y) {
        for (long x = 0; x < image.width(); ++x) {
            const std::vector<mvPair<long>> spot = takeSpot(image, x, y, threshold);
            if (spot.size() < 30) continue;
            long sumX = 0, sumY = 0;
            for (const mvPair<long>& pel : spot) sumX += pel.x, sumY += pel.y;
            const long count = std::ssize(spot);
            std::cout << "defect of " << count << " pels at " << sumX / count << ' ' << sumY / count
                      << '\n';
        }
    }
}
