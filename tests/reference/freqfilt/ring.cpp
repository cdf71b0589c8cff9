// The ring filters as defined: a profile over the distance from the ring, one coefficient a time.
#include "reference/freqfilt/ring.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "reference/fft/truncate.h"
#include "reference/freqfilt/access.h"

namespace reference {
namespace {

double bandPassResponse(double d, double c) {
    return std::exp(d * d * c);
}

Ring build(const RingParameters& given, bool reject) {
    const double w = static_cast<double>(given.width);
    const double sigmaBins = w * given.sigma;
    const double plateauBins = w * given.plateau;

    Ring ring;
    ring.given = given;
    ring.supportWidth = oddSide(sigmaBins * 4.0 + plateauBins + w * 0.05);
    ring.profile.assign(static_cast<std::size_t>(ring.entries()) + 3, 0.0F);

    const double denominator = -2.0 * (sigmaBins * sigmaBins);
    const double c = denominator == 0.0 ? 0.0 : 1.0 / denominator;
    for (std::int32_t i = 0; i < ring.entries(); ++i) {
        const double d = std::max(static_cast<double>(i) * 0.03125 - plateauBins, 0.0);
        const double pass = bandPassResponse(d, c);
        ring.profile[static_cast<std::size_t>(i)] = static_cast<float>(reject ? 1.0 - pass : pass);
    }
    return ring;
}

// The geometry of a walk, each constant in its own precision.
struct Walk {
    std::int32_t w, h, halfW, halfH;
    float f0, k, t;
    double rowScale;
    std::int32_t rowLimit, outer2, inner2;

    Walk(const Ring& ring, const Plane& plane)
        : w(plane.width), h(plane.height), halfW(plane.width / 2), halfH(plane.height / 2) {
        f0 = static_cast<float>(static_cast<double>(w) * ring.given.frequency);
        k = static_cast<float>(ring.supportHeight);
        t = static_cast<float>(ring.supportWidth);
        const double a = static_cast<double>(h) * (1.0 / static_cast<double>(w));
        rowScale = 1.0 / (a * a);
        rowLimit = truncate32(static_cast<double>(f0) * a + static_cast<double>(ring.supportWidth));
        const float outer = (t + f0) * (t + f0);
        outer2 = truncate32(static_cast<double>(outer));
        const float inner = (f0 - t) * (f0 - t);
        inner2 = f0 - t >= 0.0F ? truncate32(static_cast<double>(inner)) : -1;
    }

    bool rowIsBeyond(std::int32_t y) const { return y < halfH ? y > rowLimit : h - y > rowLimit; }

    std::int32_t r2(std::int32_t x, std::int32_t y) const {
        const std::int32_t dy = y < halfH ? y : y - h;
        const std::int32_t dx = x < halfW ? x : x - w;
        return dx * dx + truncate32(static_cast<double>(dy * dy) * rowScale);
    }

    bool isOutside(std::int32_t distance2) const {
        return distance2 <= inner2 || distance2 >= outer2;
    }

    std::int32_t index(std::int32_t distance2) const {
        const double distance = std::sqrt(static_cast<double>(distance2)) - static_cast<double>(f0);
        return std::abs(truncate32(distance * static_cast<double>(k)));
    }
};

Complex scaled(float factor, const Complex& z) {
    return {factor * z.re, factor * z.im};
}

// Coefficients outside of the band become what `outside` makes of them.
template <class Outside>
void walkByDistance(const Ring& ring, const Plane& src, Plane& dst, Outside outside) {
    const Walk walk(ring, src);
    for (std::int32_t y = 0; y < walk.h; ++y) {
        for (std::int32_t x = 0; x < walk.w; ++x) {
            const Complex z = src.at(x, y);
            const std::int32_t r2 = walk.r2(x, y);
            if (walk.rowIsBeyond(y) || walk.isOutside(r2)) {
                dst.at(x, y) = outside(z);
            } else {
                dst.at(x, y) = scaled(ring.profile.at(static_cast<std::size_t>(walk.index(r2))), z);
            }
        }
    }
}

}  // namespace

Ring bandPass(const RingParameters& given) {
    return build(given, false);
}

Ring bandReject(const RingParameters& given) {
    return build(given, true);
}

void applyBandPass(const Ring& ring, Spectrum& buf) {
    setMask(buf, false, 0, 0);
    walkByDistance(ring, buf.plane, buf.plane, [](const Complex&) { return Complex{}; });
    clearSquare(buf, ring.given.radius);
}

void applyBandPass(const Ring& ring, const Spectrum& src, Spectrum& dst) {
    setAndAllocate(dst, src.plane.width, src.plane.height);
    setMask(dst, false, 0, 0);
    walkByDistance(ring, src.plane, dst.plane, [](const Complex&) { return Complex{}; });
    clearSquare(dst, ring.given.radius);
}

void applyBandReject(const Ring& ring, Spectrum& buf) {
    const std::vector<Complex> saved = saveSquare(buf, ring.given.radius);
    setMask(buf, false, 0, 0);
    walkByDistance(ring, buf.plane, buf.plane, [](const Complex& z) { return z; });
    restoreSquare(buf, ring.given.radius, saved);
}

void applyBandReject(const Ring& ring, const Spectrum& src, Spectrum& dst) {
    setAndAllocate(dst, src.plane.width, src.plane.height);
    setMask(dst, false, 0, 0);
    const std::vector<Complex> saved = saveSquare(src, ring.given.radius);
    const Walk walk(ring, src.plane);
    for (std::int32_t y = 0; y < walk.h; ++y) {
        for (std::int32_t x = 0; x < walk.w; ++x) {
            const Complex z = src.plane.at(x, y);
            const std::int32_t i = walk.index(walk.r2(x, y));
            const bool inside = !walk.rowIsBeyond(y) && i < ring.entries();
            dst.plane.at(x, y) = inside ? scaled(ring.profile[static_cast<std::size_t>(i)], z) : z;
        }
    }
    restoreSquare(dst, ring.given.radius, saved);
}

}  // namespace reference
