// Element access, sizing and masking of a spectrum, as the filters use them.
#include "reference/freqfilt/access.h"

#include <algorithm>

namespace reference {
namespace {

std::size_t centredIndex(const Spectrum& buf, long u, long v) {
    const long w = buf.plane.width;
    const long h = buf.plane.height;
    if (buf.inverseComputed) throw AlreadyInverted();
    if (u < -(w / 2) || u >= (w + 1) / 2) throw OutOfBounds();
    if (v < -(h / 2) || v >= (h + 1) / 2) throw OutOfBounds();
    return buf.plane.index(u < 0 ? u + w : u, v < 0 ? v + h : v);
}

}  // namespace

Complex& centred(Spectrum& buf, long u, long v) {
    return buf.plane.elements[centredIndex(buf, u, v)];
}

const Complex& centred(const Spectrum& buf, long u, long v) {
    return buf.plane.elements[centredIndex(buf, u, v)];
}

void setAndAllocate(Spectrum& buf, long width, long height) {
    buf.imageWidth = width;
    buf.imageHeight = height;
    if (buf.plane.width != width || buf.plane.height != height) {
        buf.plane.width = static_cast<int>(width);
        buf.plane.height = static_cast<int>(height);
        buf.plane.elements.resize(static_cast<std::size_t>(width * height));
    }
    buf.masked = false;
    buf.inverseComputed = false;
}

void setMask(Spectrum& buf, bool masked, long miny, long maxy) {
    buf.masked = masked;
    buf.maskedMiny = miny;
    buf.maskedMaxy = maxy;
}

void clearSquare(Spectrum& buf, long radius) {
    for (long v = 1 - radius; v <= radius - 1; ++v) {
        for (long u = 1 - radius; u <= radius - 1; ++u) centred(buf, u, v) = Complex{0.0F, 0.0F};
    }
}

std::vector<Complex> saveSquare(const Spectrum& buf, long radius) {
    std::vector<Complex> saved;
    for (long v = 1 - radius; v <= radius - 1; ++v) {
        for (long u = 1 - radius; u <= radius - 1; ++u) saved.push_back(centred(buf, u, v));
    }
    return saved;
}

void restoreSquare(Spectrum& buf, long radius, const std::vector<Complex>& saved) {
    std::size_t next = 0;
    for (long v = 1 - radius; v <= radius - 1; ++v) {
        for (long u = 1 - radius; u <= radius - 1; ++u) centred(buf, u, v) = saved[next++];
    }
}

}  // namespace reference
