// Sizes a picture down to a quarter: downscaling picture.png small.png
//
// The result shows two small pictures: on the left every fourth pel of every fourth row, which
// invents patterns that are not there; on the right the lowest frequencies, which does not.
#include <filt/fft.h>

#include <algorithm>
#include <cmath>
#include <iostream>

#include "picture.h"
#include "program.h"

namespace {

constexpr long kFactor = 4;

Image everyFourth(const Image& picture) {
    Image small(picture.width() / kFactor, picture.height() / kFactor);
    for (long y = 0; y < small.height(); ++y) {
        for (long x = 0; x < small.width(); ++x) {
            small.pointToRow(y)[x] = picture.pel(kFactor * x, kFactor * y);
        }
    }
    return small;
}

Image lowestFrequencies(const Image& picture) {
    mvFrequencyBuffer spectrum;
    mfForwardFFT(picture, spectrum);
    const mvFrequencyBuffer crop(spectrum, spectrum.width() / kFactor, spectrum.height() / kFactor);

    // The crop keeps the values of the large spectrum, and the inverse divides by the small size:
    // everything is brighter by the ratio of the areas.
    mvPelBuffer<double> bright;
    mfInverseFFT(crop, bright, false);
    Image small(bright.width(), bright.height());
    for (long y = 0; y < small.height(); ++y) {
        for (long x = 0; x < small.width(); ++x) {
            const double value = bright.pel(x, y) / (kFactor * kFactor);
            small.pointToRow(y)[x] =
                static_cast<unsigned char>(std::clamp(value + 0.5, 0.0, 255.0));
        }
    }
    return small;
}

/// How far the right half of a picture, where the picture is finest, strays from its mean.
double contrast(const Image& image) {
    const Image half = image.window(image.width() / 2, 0, image.width() / 2, image.height());
    double sum = 0.0, squares = 0.0;
    for (long y = 0; y < half.height(); ++y) {
        for (long x = 0; x < half.width(); ++x) {
            sum += half.pel(x, y);
            squares += half.pel(x, y) * half.pel(x, y);
        }
    }
    const double count = static_cast<double>(half.width() * half.height()), mean = sum / count;
    return std::sqrt(squares / count - mean * mean);
}

void run(char** argv) {
    const Image picture = readPicture(argv[1]);
    const Image skipped = everyFourth(picture), cropped = lowestFrequencies(picture);

    Image both(2 * skipped.width() + 4, skipped.height());
    Image right = both.window(skipped.width() + 4, 0, skipped.width(), skipped.height());
    right.offset(0, 0);
    mfPelCopy(skipped, both);
    mfPelCopy(cropped, right);  // a window is a view: this fills the right part of `both`
    writePicture(argv[2], both);
    std::cout << "contrast where nothing should show: " << contrast(skipped) << " by skipping, "
              << contrast(cropped) << " by cropping\n";
}

}  // namespace

int main(int argc, char** argv) {
    return runExample(argc, argv, "picture.png small.png", run);
}
