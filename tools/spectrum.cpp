// The spectrum of a picture as a picture.
#include "spectrum.h"

#include <filt/fft.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "axes.h"
#include "output_file.h"
#include "png_picture.h"

namespace {

mvPelBuffer<double> logMagnitudes(const mvFrequencyBuffer& spectrum) {
    mvPelBuffer<double> image = spectrum.getMagnitudeImage(true);
    for (long y = 0; y < image.height(); ++y) {
        double* row = image.pointToRow(y);
        std::transform(row, row + image.width(), row, [](double m) { return std::log1p(m); });
    }
    return image;
}

std::vector<double> valuesBesidesDC(const mvPelBuffer<double>& image) {
    std::vector<double> values;
    for (long y = 0; y < image.height(); ++y) {
        for (long x = 0; x < image.width(); ++x) {
            if (x != image.width() / 2 || y != image.height() / 2) {
                values.push_back(image.pel(x, y));
            }
        }
    }
    return values;
}

double weakestTenth(std::vector<double>& values) {
    const auto tenth = values.begin() + std::ssize(values) / 10;
    std::nth_element(values.begin(), tenth, values.end());
    return *tenth;
}

// Shifts the pels of `image` so that they start at 0: eMapRange then maps exactly 0 .. `high` and
// clips what is beyond.
mvPelBuffer<unsigned char> forDisplay(const mvPelBuffer<double>& image) {
    std::vector<double> values = valuesBesidesDC(image);
    if (values.empty()) values.push_back(0);
    const double low = weakestTenth(values);
    const double high = *std::max_element(values.begin(), values.end());
    for (long y = 0; y < image.height(); ++y) {
        for (long x = 0; x < image.width(); ++x) image.pointToRow(y)[x] -= low;
    }
    return mfFrequencyMapImage(image, mvFrequencyDefs::eMapRange, 0, high - low);
}

}  // namespace

void writeSpectrum(const PictureFiles& files, Border border, bool axes) {
    mvFrequencyBuffer spectrum;
    std::visit([&](const auto& picture) { mfForwardFFT(withBorder(picture, border), spectrum); },
               readPicture(files.input));
    const mvPelBuffer<unsigned char> plane = forDisplay(logMagnitudes(spectrum));
    OutputFiles outputs;
    writePicture(outputs.add(files.output), axes ? withAxes(plane) : plane);
    outputs.publish();
}
