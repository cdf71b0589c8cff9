// The lobe filters as defined: a turned Gaussian patch, one element of the plane a time.
#include "reference/freqfilt/lobe.h"

#include <algorithm>
#include <cmath>

#include "reference/fft/truncate.h"
#include "reference/freqfilt/access.h"

namespace reference {
namespace {

Lobe build(const LobeParameters& given, bool reject) {
    const double w = static_cast<double>(given.width);
    const double h = static_cast<double>(given.height);
    const double a = h / w;
    const double sx = w * given.sigmaX;
    const double sy = w * given.sigmaY;
    const double px = w * given.plateauX;
    const double py = w * given.plateauY;
    const double cosine = std::cos(given.angle);
    const double sine = std::sin(given.angle);
    const double c = std::abs(cosine);
    const double s = std::abs(sine);

    Lobe lobe;
    lobe.given = given;
    lobe.supportWidth =
        oddSide(8.0 * std::max(c * sx, s * sy) + 2.0 * std::max(c * px, s * py) + 0.05 * w);
    lobe.supportHeight =
        oddSide(2.0 * std::max(c * py, s * px) * a + 8.0 * std::max(c * sy, s * sx) * a + 0.05 * h);

    const double cx = cosine * (w * given.frequency) + static_cast<double>(given.width / 2);
    const double cy = sine * (w * given.frequency) * a + static_cast<double>(given.height / 2);
    const double fx = cx - std::trunc(cx);
    const double fy = cy - std::trunc(cy);
    const double kx = 1.0 / (-2.0 * sx * sx);
    const double ky = 1.0 / (-2.0 * sy * sy);
    const std::int32_t hw = lobe.supportWidth / 2;
    const std::int32_t hh = lobe.supportHeight / 2;
    for (std::int32_t j = -hh; j <= hh; ++j) {
        for (std::int32_t i = -hw; i <= hw; ++i) {
            const double x = i - fx;
            const double y = (j - fy) / a;
            const double u = x * cosine + y * sine;
            const double v = -x * sine + y * cosine;
            const double du = std::max(std::abs(u) - px, 0.0);
            const double dv = std::max(std::abs(v) - py, 0.0);
            const double value = std::exp(dv * dv * ky + du * du * kx);
            lobe.response.push_back(static_cast<float>(reject ? 1.0 - value : value));
        }
    }
    return lobe;
}

// Elements outside of the patch become what `outside` makes of them.
template <class Outside>
void walk(const Lobe& lobe, const Plane& src, Plane& dst, Outside outside) {
    const Placement patch = placement(lobe);
    for (long r = 0; r < src.height; ++r) {
        for (long c = 0; c < src.width; ++c) {
            const long xs = (c + src.width / 2) % src.width;
            const long ys = (r + src.height / 2) % src.height;
            const Complex z = src.at(c, r);
            const bool inside =
                patch.rowMin <= ys && ys <= patch.rowMax && patch.colMin <= xs && xs < patch.colMax;
            if (inside) {
                const long cell = (ys - patch.rowMin) * lobe.supportWidth + (xs - patch.colMin);
                const float factor = lobe.response.at(static_cast<std::size_t>(cell));
                dst.at(c, r) = {factor * z.re, factor * z.im};
            } else {
                dst.at(c, r) = outside(z);
            }
        }
    }
}

void walkGabor(const Lobe& lobe, const Spectrum& src, Spectrum& dst) {
    const Placement patch = placement(lobe);
    setMask(dst, true, patch.rowMin, patch.rowMax);
    walk(lobe, src.plane, dst.plane, [](const Complex&) { return Complex{}; });
    clearSquare(dst, lobe.given.radius);
}

void walkGaborReject(const Lobe& lobe, const Spectrum& src, Spectrum& dst,
                     const std::vector<Complex>& saved) {
    setMask(dst, false, 0, 0);
    walk(lobe, src.plane, dst.plane, [](const Complex& z) { return z; });
    restoreSquare(dst, lobe.given.radius, saved);
}

}  // namespace

Lobe gabor(const LobeParameters& given) {
    return build(given, false);
}

Lobe gaborReject(const LobeParameters& given) {
    return build(given, true);
}

Placement placement(const Lobe& lobe) {
    const double w = static_cast<double>(lobe.given.width);
    const double h = static_cast<double>(lobe.given.height);
    const double bins = w * lobe.given.frequency;
    const long xc = truncate32(std::cos(lobe.given.angle) * bins) + lobe.given.width / 2;
    const long yc =
        truncate32(std::sin(lobe.given.angle) * bins * (h * (1.0 / w))) + lobe.given.height / 2;
    const long hw = lobe.supportWidth >> 1;
    const long hh = lobe.supportHeight >> 1;
    return {xc - hw, xc + hw, yc - hh, yc + hh};
}

void applyGabor(const Lobe& lobe, Spectrum& buf) {
    walkGabor(lobe, buf, buf);
}

void applyGabor(const Lobe& lobe, const Spectrum& src, Spectrum& dst) {
    setAndAllocate(dst, src.plane.width, src.plane.height);
    walkGabor(lobe, src, dst);
}

void applyGaborReject(const Lobe& lobe, Spectrum& buf) {
    walkGaborReject(lobe, buf, buf, saveSquare(buf, lobe.given.radius));
}

void applyGaborReject(const Lobe& lobe, const Spectrum& src, Spectrum& dst) {
    const std::vector<Complex> saved = saveSquare(src, lobe.given.radius);
    setAndAllocate(dst, src.plane.width, src.plane.height);
    walkGaborReject(lobe, src, dst, saved);
}

}  // namespace reference
