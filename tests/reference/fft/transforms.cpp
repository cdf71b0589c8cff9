// The transforms between images and spectra, step by step as they are defined.
#include "reference/fft/transforms.h"

#include <cmath>
#include <limits>

#include "reference/fft/kernel.h"

namespace reference {
namespace {

Spectrum emptySpectrum(long w, long h, long x, long y) {
    Spectrum result;
    result.plane = Plane(paddedSize(w), paddedSize(h));
    result.imageWidth = w;
    result.imageHeight = h;
    result.x = x;
    result.y = y;
    return result;
}

// What a forward transform reads: the image itself, or the padded temporary that it is wrapped
// into.
template <class T>
Image<T> readable(const Image<T>& image, const Plane& plane, const Poll& poll) {
    if (!image.hasOffset()) return image;
    Image<T> temporary(plane.width, plane.height);
    temporary.x = image.x;
    temporary.y = image.y;
    wrapCopy(image, temporary, false, poll);
    return temporary;
}

// An image of the spectrum's image area, placed where the image was, from a function of elements.
template <class T, class Function>
Image<T> imageOf(const Spectrum& space, Function value) {
    Image<T> result(space.imageWidth, space.imageHeight);
    result.x = space.x;
    result.y = space.y;
    for (long y = 0; y < result.height; ++y) {
        for (long x = 0; x < result.width; ++x) result.at(x, y) = value(space.plane.at(x, y));
    }
    return result;
}

// Brings a finished target to the caller.
template <class T>
void deliver(Image<T> target, Output<T>& out, const Poll& poll) {
    if (target.hasOffset()) {
        Image<T> wrapped(target.width, target.height);
        wrapCopy(target, wrapped, true, poll);
        wrapped.x = target.x;
        wrapped.y = target.y;
        target = wrapped;
    }
    if (out) {
        pelCopy(target, *out);
    } else {
        out = target;
    }
}

float scaleOf(const Plane& plane) {
    return static_cast<float>(1.0 / static_cast<double>(plane.elements.size()));
}

float squaredMagnitude(Complex z) {
    return z.re * z.re + z.im * z.im;
}

// The integer part of value + 0.5, clamped to 0 and full; the sum is not rounded to float.
template <class T>
T roundedPel(float value) {
    const double full = std::numeric_limits<T>::max();
    const double sum = static_cast<double>(value) + 0.5;
    if (std::isnan(sum)) return 0;
    return static_cast<T>(std::clamp(sum, 0.0, full));
}

// What maps magnitudes, after their scaling, onto the full pel range.
struct Rescaling {
    float lo;
    float factor;
};

Rescaling rescalingOf(const Spectrum& space, float s, float full) {
    float least = 1e20F;
    float greatest = -1e20F;
    for (long y = 0; y < space.imageHeight; ++y) {
        for (long x = 0; x < space.imageWidth; ++x) {
            const float square = squaredMagnitude(space.plane.at(x, y));
            if (square < least) least = square;
            if (square > greatest) greatest = square;
        }
    }
    const float lo = std::sqrt(least) * s;
    const float hi = std::sqrt(greatest) * s;
    return {lo, hi == lo ? full : full / (hi - lo)};
}

template <class T>
Image<T> magnitudePels(const Spectrum& space, bool rescale) {
    const float s = scaleOf(space.plane);
    if (!rescale) {
        return imageOf<T>(space, [&](Complex z) {
            const float m = std::sqrt(squaredMagnitude(z));
            return roundedPel<T>(m * s);
        });
    }
    const auto [lo, factor] = rescalingOf(space, s, std::numeric_limits<T>::max());
    return imageOf<T>(space, [s, lo = lo, factor = factor](Complex z) {
        const float m = std::sqrt(squaredMagnitude(z));
        return roundedPel<T>((m * s - lo) * factor);
    });
}

template <>
Image<double> magnitudePels(const Spectrum& space, bool) {
    const float s = scaleOf(space.plane);
    return imageOf<double>(space, [&](Complex z) {
        const float m = std::sqrt(squaredMagnitude(z));
        return static_cast<double>(m * s);
    });
}

}  // namespace

int paddedSize(long size) {
    int padded = 1;
    while (padded < size) padded *= 2;
    return padded;
}

template <class T>
Spectrum forward(const Image<T>& image, const Poll& poll) {
    Spectrum result = emptySpectrum(image.width, image.height, image.x, image.y);
    const Image<T> source = readable(image, result.plane, poll);
    for (long y = 0; y < source.height; ++y) {
        float* row = &result.plane.row(y)->re;
        for (long x = 0; x < source.width; ++x) row[x] = static_cast<float>(source.at(x, y));
    }
    realFFT2D(result.plane, poll);
    return result;
}

template <class T>
Spectrum forward(const Image<T>& real, const Image<T>& imaginary, const Poll& poll) {
    Spectrum result = emptySpectrum(real.width, real.height, real.x, real.y);
    const Image<T> re = readable(real, result.plane, poll);
    const Image<T> im = readable(imaginary, result.plane, poll);
    for (long y = 0; y < re.height; ++y) {
        for (long x = 0; x < re.width; ++x) {
            result.plane.at(x, y) = {static_cast<float>(re.at(x, y)),
                                     static_cast<float>(im.at(x, y))};
        }
    }
    poll();  // the padding is cleared here; this plane was new
    fft2D(result.plane, 1, 0, result.plane.height, poll);
    return result;
}

Spectrum forward(const Spectrum& src, const Poll& poll) {
    Spectrum result = src;
    result.inverseComputed = false;
    result.masked = false;
    fft2D(result.plane, 1, 0, result.plane.height, poll);
    return result;
}

Spectrum spatial(const Spectrum& src, const Poll& poll) {
    Spectrum result = src;
    if (src.inverseComputed) return result;
    const long rowLow = src.masked ? src.maskedMiny : 0;
    const long rowHigh = src.masked ? src.maskedMaxy : src.plane.height;
    fft2D(result.plane, -1, rowLow, rowHigh, poll);
    result.inverseComputed = true;
    return result;
}

Spectrum inverse(const Spectrum& src, const Poll& poll) {
    Spectrum result = spatial(src, poll);
    result.inverseComputed = false;
    result.masked = false;
    return result;
}

template <class T>
void magnitudeImage(const Spectrum& space, Output<T>& out, bool rescale, const Poll& poll) {
    poll();
    deliver(magnitudePels<T>(space, rescale), out, poll);
}

void realAndImaginaryImages(const Spectrum& space, Output<double>& real, Output<double>& imaginary,
                            const Poll& poll) {
    poll();
    const float s = scaleOf(space.plane);
    deliver(imageOf<double>(space, [&](Complex z) { return static_cast<double>(s * z.re); }), real,
            poll);
    deliver(imageOf<double>(space, [&](Complex z) { return static_cast<double>(s * z.im); }),
            imaginary, poll);
}

void angleImage(const Spectrum& space, Output<double>& angle, const Poll& poll) {
    poll();
    deliver(imageOf<double>(space, [](Complex z) { return double{std::atan2(z.im, z.re)}; }), angle,
            poll);
}

void quadrantImage(const Spectrum& space, Output<unsigned char>& quadrant, const Poll& poll) {
    poll();
    const auto code = [](Complex z) {
        return static_cast<unsigned char>((z.re < 0 ? 1 : 0) + (z.im < 0 ? 2 : 0));
    };
    deliver(imageOf<unsigned char>(space, code), quadrant, poll);
}

#define INSTANTIATE(T)                                                        \
    template Spectrum forward(const Image<T>&, const Poll&);                  \
    template Spectrum forward(const Image<T>&, const Image<T>&, const Poll&); \
    template void magnitudeImage(const Spectrum&, Output<T>&, bool, const Poll&);
INSTANTIATE(unsigned char)
INSTANTIATE(unsigned short)
INSTANTIATE(double)
#undef INSTANTIATE

}  // namespace reference
