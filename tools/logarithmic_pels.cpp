// Magnitudes of a spectrum as grey levels.
#include "logarithmic_pels.h"

#include <suggest/rounding.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

using Magnitudes = mvPelBuffer<double>;

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

}  // namespace

mvPelBuffer<unsigned char> logarithmicPels(const mvPelBuffer<double>& magnitudes) {
    const Magnitudes image = logarithms(magnitudes);
    const double low = weakestTenth(image);
    const double range = std::max(strongest(image) - low, kLeastRange);
    mvPelBuffer<unsigned char> shown(image.width(), image.height());
    for (long y = 0; y < image.height(); ++y) {
        const double* row = image.pointToRow(y);
        std::transform(row, row + image.width(), shown.pointToRow(y), [=](double value) {
            return static_cast<unsigned char>(
                mfNearestLong(255 * std::max(value - low, 0.0) / range));
        });
    }
    return shown;
}
