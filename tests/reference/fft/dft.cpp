// Discrete Fourier transforms in higher precision.
#include "reference/fft/dft.h"

#include <cmath>
#include <cstddef>

namespace reference {
namespace {

template <class Real>
std::vector<std::complex<Real>> rootsOfUnity(int n, int direction) {
    std::vector<std::complex<Real>> roots;
    for (int k = 0; k < n; ++k) {
        const long double angle = -direction * 2 * 3.14159265358979323846264338327950288L * k / n;
        roots.emplace_back(static_cast<Real>(std::cos(angle)), static_cast<Real>(std::sin(angle)));
    }
    return roots;
}

template <class Real>
std::complex<Real> product(std::complex<Real> a, std::complex<Real> b) {
    return {a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real()};
}

// Transforms n elements of `in`, `step` apart, to n consecutive ones of `out`.
template <class Real>
void fastTransform(const std::complex<Real>* in, std::size_t step, std::complex<Real>* out,
                   std::size_t n, const std::vector<std::complex<Real>>& roots) {
    if (n == 1) {
        out[0] = in[0];
        return;
    }
    const std::size_t half = n / 2;
    fastTransform(in, 2 * step, out, half, roots);
    fastTransform(in + step, 2 * step, out + half, half, roots);
    for (std::size_t k = 0; k < half; ++k) {
        const auto even = out[k];
        const auto odd = product(roots[k * (roots.size() / n)], out[half + k]);
        out[k] = even + odd;
        out[half + k] = even - odd;
    }
}

// Transforms the rows of `in` (h rows of w) and returns them as columns (w rows of h).
template <class Real>
std::vector<std::complex<Real>> transformRowsAndTranspose(const std::vector<std::complex<Real>>& in,
                                                          int w, int h, int direction) {
    const auto width = static_cast<std::size_t>(w);
    const auto height = static_cast<std::size_t>(h);
    const auto roots = rootsOfUnity<Real>(w, direction);
    std::vector<std::complex<Real>> out(in.size());
    std::vector<std::complex<Real>> row(width);
    for (std::size_t y = 0; y < height; ++y) {
        fastTransform(in.data() + y * width, 1, row.data(), width, roots);
        for (std::size_t x = 0; x < width; ++x) out[x * height + y] = row[x];
    }
    return out;
}

}  // namespace

DoublePlane definitionDFT2D(const Plane& plane, int direction) {
    const auto columnRoots = rootsOfUnity<long double>(plane.width, direction);
    const auto rowRoots = rootsOfUnity<long double>(plane.height, direction);
    DoublePlane result;
    for (int v = 0; v < plane.height; ++v) {
        for (int u = 0; u < plane.width; ++u) {
            std::complex<long double> sum = 0;
            for (int y = 0; y < plane.height; ++y) {
                for (int x = 0; x < plane.width; ++x) {
                    const std::complex<long double> z(plane.at(x, y).re, plane.at(x, y).im);
                    sum += z * columnRoots[static_cast<std::size_t>(u * x % plane.width)] *
                           rowRoots[static_cast<std::size_t>(v * y % plane.height)];
                }
            }
            result.emplace_back(static_cast<double>(sum.real()), static_cast<double>(sum.imag()));
        }
    }
    return result;
}

template <class Real>
std::vector<std::complex<Real>> fastDFT2D(const Plane& plane, int direction) {
    std::vector<std::complex<Real>> wide;
    for (const Complex& z : plane.elements) wide.emplace_back(z.re, z.im);
    wide = transformRowsAndTranspose(wide, plane.width, plane.height, direction);
    return transformRowsAndTranspose(wide, plane.height, plane.width, direction);
}

template std::vector<std::complex<double>> fastDFT2D(const Plane& plane, int direction);
template std::vector<std::complex<long double>> fastDFT2D(const Plane& plane, int direction);

double relativeError(const Plane& a, const DoublePlane& b) {
    double difference = 0;
    double size = 0;
    for (std::size_t i = 0; i < b.size(); ++i) {
        const std::complex<double> z(a.elements[i].re, a.elements[i].im);
        difference += std::norm(z - b[i]);
        size += std::norm(b[i]);
    }
    return std::sqrt(size > 0 ? difference / size : difference);
}

}  // namespace reference
