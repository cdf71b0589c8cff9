// The five mappings of doubles to bytes.
#include "reference/fft/map_image.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "reference/fft/truncate.h"

namespace reference {
namespace {

struct Scale {
    double lo;
    double r;
};

Scale scaleOf(double lo, double hi) {
    double r = lo < 0.0 || lo != lo ? hi - lo : hi;
    if (!(r > 0.0)) r = 1.0;
    return {lo, r};
}

unsigned char clip(double v) {
    if (!(v > 0.0)) return 0;
    return v > 255.0 ? 255 : lowByte(v);
}

unsigned char autoScale(double v, const Scale& scale) {
    const double s = 255.0 / scale.r;
    return scale.lo >= 0.0 ? lowByte(s * v) : lowByte((v - scale.lo) * s);
}

unsigned char range(double v, const Scale& scale) {
    const double s = 255.0 / scale.r;
    const double t = (v - scale.lo) * s;
    if (t > 255.0) return 255;
    if (t >= 0.0) return lowByte(t);
    return 0;
}

unsigned char logarithm(double v, const Scale& scale) {
    const double s = 255.0 / std::log(std::max(scale.r, 2.0));
    return scale.lo >= 0.0 ? lowByte(std::log(v + 1.0) * s)
                           : lowByte(std::log(v - scale.lo + 1.0) * s);
}

unsigned char mapOne(double v, Mapping mapping, const Scale& scale) {
    switch (mapping) {
        case Mapping::clip:
            return clip(v);
        case Mapping::autoScale:
            return autoScale(v, scale);
        case Mapping::range:
            return range(v, scale);
        case Mapping::log:
            return logarithm(v, scale);
        case Mapping::angle:
            return lowByte(v * 40.58451);
    }
    return 0;
}

}  // namespace

std::vector<unsigned char> mapImage(const std::vector<double>& values, Mapping mapping, double low,
                                    double high) {
    if (mapping != Mapping::range) {
        low = std::numeric_limits<double>::infinity();
        high = -low;
        // NaNs have no part in either.
        for (const double v : values) {
            if (v < low) low = v;
            if (v > high) high = v;
        }
    }
    const Scale scale = scaleOf(low, high);
    std::vector<unsigned char> bytes;
    for (const double v : values) bytes.push_back(mapOne(v, mapping, scale));
    return bytes;
}

}  // namespace reference
