// Mapping of a double image to a byte image.
#include <filt/fft/internal/integers.h>
#include <filt/fft/map_image.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

struct Range {
    double low, high;
};

// The plain minimum and maximum; NaNs have no part in them.
Range rangeOf(const mvPelBuffer_const<double>& image) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    Range range{kInfinity, -kInfinity};
    for (long y = 0; y < image.height(); ++y) {
        const double* const row = image.pointToRow(y);
        for (long x = 0; x < image.width(); ++x) {
            if (row[x] < range.low) range.low = row[x];
            if (row[x] > range.high) range.high = row[x];
        }
    }
    return range;
}

// The range that the scale divides by. It starts at 0 unless the low end is negative or a NaN.
double scaleRange(Range range) {
    const double r = range.low >= 0.0 ? range.high : range.high - range.low;
    return r > 0.0 ? r : 1.0;
}

template <class Mapping>
void mapPels(const mvPelBuffer_const<double>& src, mvPelBuffer<unsigned char>& dst,
             Mapping mapping) {
    for (long y = 0; y < src.height(); ++y) {
        const double* const row = src.pointToRow(y);
        std::transform(row, row + src.width(), dst.pointToRow(y), mapping);
    }
}

unsigned char clip(double value) {
    if (!(value >= 0.0)) return 0;
    return static_cast<unsigned char>(std::min(value, 255.0));
}

void mapAutoScale(const mvPelBuffer_const<double>& src, mvPelBuffer<unsigned char>& dst) {
    const Range range = rangeOf(src);
    const double scale = 255.0 / scaleRange(range);
    if (range.low >= 0.0) {
        mapPels(src, dst, [=](double v) { return mvi::lowByte(scale * v); });
    } else {
        mapPels(src, dst, [=](double v) { return mvi::lowByte((v - range.low) * scale); });
    }
}

void mapRange(const mvPelBuffer_const<double>& src, mvPelBuffer<unsigned char>& dst, Range range) {
    const double scale = 255.0 / scaleRange(range);
    mapPels(src, dst, [=](double v) { return clip((v - range.low) * scale); });
}

void mapLog(const mvPelBuffer_const<double>& src, mvPelBuffer<unsigned char>& dst) {
    const Range range = rangeOf(src);
    const double scale = 255.0 / std::log(std::max(scaleRange(range), 2.0));
    if (range.low >= 0.0) {
        mapPels(src, dst, [=](double v) { return mvi::lowByte(std::log(v + 1.0) * scale); });
    } else {
        mapPels(src, dst,
                [=](double v) { return mvi::lowByte(std::log(v - range.low + 1.0) * scale); });
    }
}

void mapAngle(const mvPelBuffer_const<double>& src, mvPelBuffer<unsigned char>& dst) {
    constexpr double kBytesPerRadian = 40.58451;
    mapPels(src, dst, [](double v) { return mvi::lowByte(v * kBytesPerRadian); });
}

}  // namespace

mvPelBuffer<unsigned char> mfFrequencyMapImage(const mvPelBuffer_const<double>& src,
                                               mvFrequencyDefs::FrequencyMapping mapping,
                                               double low, double high) {
    if (!src.isBound()) throw mvFrequencyDefs::UnboundWindow(nullptr);
    mvPelBuffer<unsigned char> result(src.width(), src.height(), 32);
    result.copyXforms(src);
    switch (mapping) {
        case mvFrequencyDefs::eMapClip:
            mapPels(src, result, clip);
            break;
        case mvFrequencyDefs::eMapAutoScale:
            mapAutoScale(src, result);
            break;
        case mvFrequencyDefs::eMapRange:
            mapRange(src, result, {low, high});
            break;
        case mvFrequencyDefs::eMapLog:
            mapLog(src, result);
            break;
        case mvFrequencyDefs::eMapAngle:
            mapAngle(src, result);
            break;
    }
    return result;
}
