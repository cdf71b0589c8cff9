// How far the transforms are from the same sums in long double.
#include "campaigns/accuracy/accuracy.h"

#include <filt/fft.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdio>

#include "reference/fft/dft.h"
#include "support/random_planes.h"

namespace accuracy {

namespace {

using reference::Complex;
using reference::Plane;
using Exact = std::vector<std::complex<long double>>;

Errors errorsOf(const Plane& found, const Exact& exact) {
    long double sum = 0, squares = 0, largest = 0;
    long double exactSum = 0, exactSquares = 0, exactLargest = 0;
    for (std::size_t i = 0; i < exact.size(); ++i) {
        const std::complex<long double> value(found.elements[i].re, found.elements[i].im);
        const long double error = std::abs(value - exact[i]), size = std::abs(exact[i]);
        sum += error, exactSum += size;
        squares += error * error, exactSquares += size * size;
        largest = std::max(largest, error), exactLargest = std::max(exactLargest, size);
    }
    return {static_cast<double>(sum / exactSum),
            static_cast<double>(std::sqrt(squares / exactSquares)),
            static_cast<double>(largest / exactLargest)};
}

mvPelBuffer<double> pelsOf(const Plane& plane, float Complex::*part) {
    mvPelBuffer<double> pels(plane.width, plane.height);
    for (int y = 0; y < plane.height; ++y) {
        for (int x = 0; x < plane.width; ++x) {
            pels.pointToRow(y)[x] = static_cast<double>(plane.at(x, y).*part);
        }
    }
    return pels;
}

Plane planeOf(const mvPelBuffer<double>& re, const mvPelBuffer<double>& im) {
    Plane plane(static_cast<int>(re.width()), static_cast<int>(re.height()));
    for (int y = 0; y < plane.height; ++y) {
        for (int x = 0; x < plane.width; ++x) {
            plane.at(x, y) = {static_cast<float>(re.pel(x, y)), static_cast<float>(im.pel(x, y))};
        }
    }
    return plane;
}

mvFrequencyBuffer complexSpectrum(const Plane& input) {
    mvFrequencyBuffer spectrum;
    mfForwardFFT<double>(pelsOf(input, &Complex::re), pelsOf(input, &Complex::im), spectrum);
    return spectrum;
}

Plane planeOf(const mvFrequencyBuffer& buffer) {
    return planeOf(buffer.getRealImage(false), buffer.getImaginaryImage(false));
}

Errors complexForward(const Plane& input) {
    return errorsOf(planeOf(complexSpectrum(input)), reference::fastDFT2D<long double>(input, 1));
}

Errors realForward(const Plane& input) {
    Plane real = input;
    for (Complex& z : real.elements) z.im = 0;
    mvFrequencyBuffer spectrum;
    mfForwardFFT<double>(pelsOf(real, &Complex::re), spectrum);
    return errorsOf(planeOf(spectrum), reference::fastDFT2D<long double>(real, 1));
}

Errors roundTrip(const Plane& input) {
    mvPelBuffer<double> re, im;
    mfInverseFFT(complexSpectrum(input), re, im);
    Exact exact;
    for (const Complex& z : input.elements) exact.emplace_back(z.re, z.im);
    return errorsOf(planeOf(re, im), exact);
}

Plane impulse(int width, int height) {
    return support::impulsePlane(width, height, width / 3, height / 5, {1.0F, -0.5F});
}

Plane random(int width, int height) {
    return support::randomPlane(width, height, 1);
}

Plane constant(int width, int height) {
    return support::constantPlane(width, height, {1.0F / 3, -1.0F / 7});
}

Plane ramp(int width, int height) {
    Plane plane(width, height);
    const auto w = static_cast<float>(width), h = static_cast<float>(height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            plane.at(x, y) = {static_cast<float>(x) / w, static_cast<float>(y) / h};
        }
    }
    return plane;
}

}  // namespace

const std::vector<Input>& inputs() {
    static const std::vector<Input> all = {
        {"impulse", impulse}, {"random", random}, {"constant", constant}, {"ramp", ramp}};
    return all;
}

const std::vector<Transform>& transforms() {
    static const std::vector<Transform> all = {{"Complex forward", complexForward},
                                               {"Real forward", realForward},
                                               {"Forward and inverse", roundTrip}};
    return all;
}

std::vector<Size> sizes() {
    std::vector<Size> all;
    for (int side = 2; side <= 2048; side *= 2) all.push_back({side, side});
    for (const Size& size : {Size{2048, 1}, {1, 2048}, {512, 64}, {64, 512}}) all.push_back(size);
    return all;
}

std::string row(const Size& size, const std::vector<Errors>& errors) {
    char text[64];
    std::snprintf(text, sizeof text, "| %d x %d", size.width, size.height);
    std::string all = text;
    for (const Errors& e : errors) {
        for (const double value : {e.l1, e.l2, e.lInf}) {
            std::snprintf(text, sizeof text, " | %.2e", value);
            all += value > 1e-12 ? text : " | 0";
        }
    }
    return all + " |";
}

}  // namespace accuracy
