// The grey levels of a result, and how they are spread.
#include "grey_levels.h"

#include <suggest/rounding.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace {

constexpr long kFewLevels = 10;

// An image of the size of another one, each pel made of its own.
template <class U, class Make>
mvPelBuffer<U> mapped(const mvPelBuffer_const<double>& image, Make make) {
    mvPelBuffer<U> pels(image.width(), image.height());
    for (long y = 0; y < pels.height(); ++y) {
        const double* row = image.pointToRow(y);
        std::transform(row, row + pels.width(), pels.pointToRow(y),
                       [&](double value) { return static_cast<U>(make(value)); });
    }
    return pels;
}

template <class Size>
std::vector<double> valuesOf(const mvPelBuffer_const<double>& image, Size size) {
    std::vector<double> values;
    for (long y = 0; y < image.height(); ++y) {
        const double* row = image.pointToRow(y);
        std::transform(row, row + image.width(), std::back_inserter(values), size);
    }
    return values;
}

double quantile(std::vector<double> values, double percent) {
    const auto count = static_cast<double>(values.size());
    const auto rank = static_cast<std::ptrdiff_t>(std::ceil(count * percent / 100));
    const auto at = values.begin() + std::clamp<std::ptrdiff_t>(rank, 1, std::ssize(values)) - 1;
    std::nth_element(values.begin(), at, values.end());
    return *at;
}

// What spreads 0 .. `size` over 0 .. `range`; a size of 0 stays what it is.
double spread(double size, double range) {
    return size > 0 ? range / size : 0;
}

unsigned short signedPel(double value) {
    return static_cast<unsigned short>(mfNearestLong(std::clamp(value, -32768.0, 32767.0)) + 32768);
}

}  // namespace

template <class T>
bool hasFewLevels(const mvPelBuffer_const<T>& picture) {
    std::vector<T> levels;
    for (long y = 0; y < picture.height(); ++y) {
        for (long x = 0; x < picture.width(); ++x) {
            const T pel = picture.pel(x, y);
            if (std::find(levels.begin(), levels.end(), pel) != levels.end()) continue;
            levels.push_back(pel);
            if (std::ssize(levels) == kFewLevels) return false;
        }
    }
    return true;
}

template bool hasFewLevels(const mvPelBuffer_const<unsigned char>&);
template bool hasFewLevels(const mvPelBuffer_const<unsigned short>&);

LevelRange magnitudeRange(const mvPelBuffer_const<double>& magnitudes, double percent) {
    const std::vector<double> values = valuesOf(magnitudes, [](double value) { return value; });
    return {*std::min_element(values.begin(), values.end()), quantile(values, percent)};
}

LevelRange signedRange(const mvPelBuffer_const<double>& real, double percent) {
    const auto swing = [](double value) { return std::abs(value); };
    return {0, quantile(valuesOf(real, swing), percent)};
}

template <class T>
mvPelBuffer<T> spreadMagnitudes(const mvPelBuffer_const<double>& magnitudes,
                                const LevelRange& range) {
    constexpr double kMost = std::numeric_limits<T>::max();
    const double factor = spread(range.high - range.low, kMost);
    return mapped<T>(magnitudes, [=](double value) {
        return mfNearestLong(std::min((value - range.low) * factor, kMost));
    });
}

template mvPelBuffer<unsigned char> spreadMagnitudes(const mvPelBuffer_const<double>&,
                                                     const LevelRange&);
template mvPelBuffer<unsigned short> spreadMagnitudes(const mvPelBuffer_const<double>&,
                                                      const LevelRange&);

mvPelBuffer<unsigned short> signedPels(const mvPelBuffer_const<double>& real) {
    return mapped<unsigned short>(real, signedPel);
}

mvPelBuffer<unsigned short> spreadSigned(const mvPelBuffer_const<double>& real,
                                         const LevelRange& range) {
    const double factor = spread(range.high, 32767);
    return mapped<unsigned short>(real, [=](double value) {
        return signedPel(std::clamp(value * factor, -32767.0, 32767.0));
    });
}
