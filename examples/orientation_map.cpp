// Colours a picture by the direction of its lines: orientation_map lines.png map.png
//
// A bank of Gabor filters, one for each direction; each pel takes the colour of the filter that
// answers most. The magnitude of a lobe's answer does not swing with the lines: no smoothing.
#include <filt/freqfilt.h>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <numbers>
#include <vector>

#include "picture.h"
#include "program.h"

namespace {

constexpr int kDirections = 12;  // over half a turn

Colour hue(double turn, double brightness) {
    const auto channel = [&](double phase) {
        const double wave = 0.5 + 0.5 * std::cos(2.0 * std::numbers::pi * (turn - phase));
        return static_cast<unsigned char>(255.0 * brightness * wave);
    };
    return {channel(0.0), channel(1.0 / 3.0), channel(2.0 / 3.0)};
}

/// The answer of each direction's filter at each pel.
std::vector<mvPelBuffer<double>> answers(const Image& picture) {
    mvFrequencyBuffer spectrum, filtered;
    mfForwardFFT(picture, spectrum);
    const mvPair<double> sigma(0.03, 0.02), plateau(0.0, 0.0);  // along and across the lobe
    const mvPair<long> size(spectrum.width(), spectrum.height());
    mvFrequencyFilterGabor filter(sigma, plateau, mvRadian(0), 0.12, size, 1);

    std::vector<mvPelBuffer<double>> all(kDirections);
    for (int i = 0; i < kDirections; ++i) {
        filter.angle(mvRadian(std::numbers::pi * i / kDirections));
        filter.apply(spectrum, filtered);
        mfInverseFFT(filtered, all[static_cast<std::size_t>(i)], false, true);
    }
    return all;
}

void run(char** argv) {
    const Image picture = readPicture(argv[1]);
    const std::vector<mvPelBuffer<double>> bank = answers(picture);

    mvPelBuffer<Colour> map(picture.width(), picture.height());
    std::vector<long> pels(kDirections);
    for (long y = 0; y < map.height(); ++y) {
        for (long x = 0; x < map.width(); ++x) {
            const auto best = std::max_element(bank.begin(), bank.end(), [=](auto& a, auto& b) {
                return a.pel(x, y) < b.pel(x, y);
            });
            const auto direction = best - bank.begin();
            map.pointToRow(y)[x] = hue(static_cast<double>(direction) / kDirections,
                                       std::min(best->pel(x, y) / 20.0, 1.0));
            ++pels[static_cast<std::size_t>(direction)];
        }
    }
    writePicture(argv[2], map);
    for (int i = 0; i < kDirections; ++i) {
        std::cout << "across the lines " << 180 * i / kDirections
                  << " degrees: " << pels[static_cast<std::size_t>(i)] << " pels\n";
    }
}

}  // namespace

int main(int argc, char** argv) {
    return runExample(argc, argv, "lines.png map.png", run);
}
