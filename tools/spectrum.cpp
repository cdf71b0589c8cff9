// The spectrum of a picture as a picture.
#include "spectrum.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "axes.h"
#include "output_file.h"
#include "picture_output.h"
#include "png_picture.h"
#include "windowed_spectrum.h"

namespace {

using Magnitudes = mvPelBuffer<double>;

// The frequencies up to `most` on both axes, the zero one still in the middle.
Magnitudes middle(const Magnitudes& plane, double most) {
    const long side = plane.width();
    const long bins = std::max(std::lround(most * static_cast<double>(side)), 1l);
    if (bins >= side / 2) return plane;
    return plane.window(side / 2 - bins, side / 2 - bins, 2 * bins + 1, 2 * bins + 1);
}

Magnitudes logarithms(const Magnitudes& plane) {
    Magnitudes image(plane.width(), plane.height());
    for (long y = 0; y < plane.height(); ++y) {
        const double* row = plane.pointToRow(y);
        std::transform(row, row + plane.width(), image.pointToRow(y),
                       [](double magnitude) { return std::log1p(magnitude); });
    }
    return image;
}

double weakestTenth(const Magnitudes& image) {
    std::vector<double> values(static_cast<std::size_t>(image.width() * image.height()));
    for (long y = 0; y < image.height(); ++y) {
        std::copy_n(image.pointToRow(y), image.width(), values.begin() + y * image.width());
    }
    const auto tenth = values.begin() + std::ssize(values) / 10;
    std::nth_element(values.begin(), tenth, values.end());
    return *tenth;
}

double strongest(const Magnitudes& image) {
    double most = 0;
    for (long y = 0; y < image.height(); ++y) {
        const double* row = image.pointToRow(y);
        most = std::max(most, *std::max_element(row, row + image.width()));
    }
    return most;
}

// Less than a factor of e is no structure but the noise of an even picture.
constexpr double kLeastRange = 1;

mvPelBuffer<unsigned char> forDisplay(const Magnitudes& image) {
    const double low = weakestTenth(image);
    const double range = std::max(strongest(image) - low, kLeastRange);
    mvPelBuffer<unsigned char> shown(image.width(), image.height());
    for (long y = 0; y < image.height(); ++y) {
        const double* row = image.pointToRow(y);
        std::transform(row, row + image.width(), shown.pointToRow(y), [=](double value) {
            return static_cast<unsigned char>(
                std::lround(255 * std::max(value - low, 0.0) / range));
        });
    }
    return shown;
}

mvPelBuffer<unsigned char> enlarged(const mvPelBuffer<unsigned char>& image, long factor) {
    if (factor <= 1) return image;
    mvPelBuffer<unsigned char> large(image.width() * factor, image.height() * factor);
    for (long y = 0; y < large.height(); ++y) {
        const unsigned char* from = image.pointToRow(y / factor);
        unsigned char* to = large.pointToRow(y);
        for (long x = 0; x < large.width(); ++x) to[x] = from[x / factor];
    }
    return large;
}

}  // namespace

void writeSpectrum(const PictureFiles& files, const SpectrumOptions& options) {
    const Magnitudes plane = std::visit(
        [](const auto& picture) { return windowedSpectrum(picture); }, readPicture(files.input));
    const Magnitudes part = middle(plane, options.maxFrequency);
    const long factor = plane.width() / part.width();
    const mvPelBuffer<unsigned char> shown = enlarged(forDisplay(logarithms(part)), factor);
    const auto pelsPerCycle = static_cast<double>(factor * plane.width());
    OutputFiles outputs;
    writePicture(outputs.add(files.output),
                 options.axes ? withAxes(shown, {pelsPerCycle, pelsPerCycle}) : shown);
    outputs.publish();
}
