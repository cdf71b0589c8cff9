// Sharpens a blurred picture: sharpening blurred.png sharp.png
//
// Any kernel can be a filter: its spectrum is the response of an image filter.
#include <filt/freqfilt.h>

#include <cmath>
#include <iostream>

#include "picture.h"
#include "program.h"

namespace {

/// A pel and `amount` times what it has more than its surroundings of radius `radius`. The kernel's
/// middle is pel (0, 0); what lies left of it or above comes in from the other side.
mvPelBuffer<double> unsharpMask(long width, long height, double radius, double amount) {
    mvPelBuffer<double> kernel(width, height);
    double sum = 0.0;
    const auto pel = [&](long dx, long dy) -> double& {
        return kernel.pointToRow((dy + height) % height)[(dx + width) % width];
    };
    const long reach = std::lround(4.0 * radius);
    for (long dy = -reach; dy <= reach; ++dy) {
        for (long dx = -reach; dx <= reach; ++dx) {
            pel(dx, dy) =
                std::exp(-static_cast<double>(dx * dx + dy * dy) / (2.0 * radius * radius));
            sum += pel(dx, dy);
        }
    }
    for (long dy = -reach; dy <= reach; ++dy) {
        for (long dx = -reach; dx <= reach; ++dx) pel(dx, dy) *= -amount / sum;
    }
    pel(0, 0) += 1.0 + amount;  // all pels together are 1: the mean stays
    return kernel;
}

/// The mean step from a pel to the next.
double steepness(const Image& image) {
    long sum = 0;
    for (long y = 0; y < image.height(); ++y) {
        for (long x = 1; x < image.width(); ++x) {
            sum += std::abs(image.pel(x, y) - image.pel(x - 1, y));
        }
    }
    return static_cast<double>(sum) / static_cast<double>(image.height() * (image.width() - 1));
}

void run(char** argv) {
    const Image blurred = readPicture(argv[1]);
    mvFrequencyBuffer spectrum, response;
    mfForwardFFT(blurred, spectrum);
    mfForwardFFT(unsharpMask(spectrum.width(), spectrum.height(), 2.0, 2.5), response);

    const mvFrequencyFilterImage filter(response);
    filter.apply(spectrum);

    Image sharp;
    mfInverseFFT(spectrum, sharp, false, true);
    writePicture(argv[2], sharp);
    std::cout << "mean step: " << steepness(blurred) << " before, " << steepness(sharp)
              << " after\n";
}

}  // namespace

int main(int argc, char** argv) {
    return runExample(argc, argv, "blurred.png sharp.png", run);
}
