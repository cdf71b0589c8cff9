// The life of a buffer in the model.
#include "campaigns/model/buffers.h"

#include <algorithm>

#include "campaigns/model/images.h"
#include "support/thrown.h"

namespace model {
namespace {

constexpr std::size_t kSlack = 7;

std::size_t floatsOf(long width, long height) {
    return 2 * static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
}

void allocate(Buffer& b, long width, long height) {
    if (!b.hasData || b.width != width || b.height != height) {
        const bool grows = !b.hasData || floatsOf(width, height) > floatsOf(b.width, b.height);
        b.anyElements = b.anyRest && grows;
        b.storage.resize(floatsOf(width, height) + kSlack);
    }
    b.hasData = true;
    b.width = width;
    b.height = height;
    b.masked = false;
    b.inverseComputed = false;
}

void requireReducible(const Buffer& src, long w, long h) {
    if (w < 2) throw Thrown{"InvalidSize: Copied width must be > 1"};
    if (h < 2) throw Thrown{"InvalidSize: Copied height must be > 1"};
    requireData(src);
    if (w > src.width)
        throw Thrown{"InvalidSize: Copied width cannot be greater than source width"};
    if (h > src.height) {
        throw Thrown{"InvalidSize: Copied height cannot be greater than source height"};
    }
    if (reference::paddedSize(w) != w) throw Thrown{"InvalidSize: Unsupported width"};
    if (reference::paddedSize(h) != h) throw Thrown{"InvalidSize: Unsupported height"};
}

// The product with a scale: the columns of the matrix take the factors, the translation stays.
Xform scaled(const Xform& xform, double sx, double sy) {
    Xform result = xform;
    if (!xform.isSet) return result;
    for (const std::size_t i : {0U, 2U}) result.values[i] *= sx;
    for (const std::size_t i : {1U, 3U}) result.values[i] *= sy;
    return result;
}

bool differ(float a, float b) {
    return a < b || a > b;
}

}  // namespace

void requireData(const Buffer& b) {
    if (!b.hasData) throw Thrown{support::kNoData};
}

void requireFrequencies(const Buffer& b) {
    requireData(b);
    if (b.inverseComputed) throw Thrown{support::kSpent};
}

void requireTransformable(const Buffer& b) {
    requireData(b);
    for (const long side : {b.width, b.height}) {
        if (side > 2048 || reference::paddedSize(side) != side) {
            throw Thrown{support::kNotPowerOfTwo};
        }
    }
}

void setAndAllocate(Buffer& b, long width, long height) {
    if (width > 2048 || height > 2048) throw Thrown{support::kTooLarge};
    b.imageWidth = width;
    b.imageHeight = height;
    allocate(b, reference::paddedSize(width), reference::paddedSize(height));
}

void assign(Buffer& b, const Buffer& src) {
    if (&b == &src) return;
    if (!src.hasData) {
        b.masked = false;
        b.hasData = false;
        return;
    }
    allocate(b, src.width, src.height);
    b.imageWidth = src.imageWidth;
    b.imageHeight = src.imageHeight;
    b.xform = src.xform;
    b.x = src.x;
    b.y = src.y;
    b.inverseComputed = src.inverseComputed;
    b.masked = src.masked;
    b.maskedMiny = src.maskedMiny;
    b.maskedMaxy = src.maskedMaxy;
    b.anyElements = false;
    std::copy_n(src.storage.begin(), floatsOf(b.width, b.height), b.storage.begin());
}

// What either buffer keeps of its memory is not said.
void move(Buffer& b, Buffer& src) {
    if (&b == &src) return;
    const bool hadData = src.hasData;
    assign(b, src);
    b.anyRest = src.anyRest = true;
    if (hadData) src.masked = src.hasData = false;
}

Buffer reduced(const Buffer& src, long w, long h) {
    requireReducible(src, w, h);
    Buffer result;
    setAndAllocate(result, w, h);
    result.inverseComputed = src.inverseComputed;
    const double sx = static_cast<double>(w) / static_cast<double>(src.width);
    const double sy = static_cast<double>(h) / static_cast<double>(src.height);
    result.imageWidth = static_cast<long>(static_cast<double>(src.imageWidth) * sx);
    result.imageHeight = static_cast<long>(static_cast<double>(src.imageHeight) * sy);
    result.xform = scaled(src.xform, sx, sy);
    result.x = src.x;
    result.y = src.y;
    const reference::Plane from = planeOf(src);
    reference::Plane to(static_cast<int>(w), static_cast<int>(h));
    for (long y = 0; y < h; ++y) {
        for (long x = 0; x < w; ++x) {
            to.at(x, y) =
                from.at(x < w / 2 ? x : x + src.width - w, y < h / 2 ? y : y + src.height - h);
        }
    }
    setPlane(result, to);
    return result;
}

Buffer complexPlane(const Image<double>& real, const Image<double>& imaginary, const Poll& poll) {
    if (!real.isBound() || !imaginary.isBound()) throw Thrown{support::kUnbound};
    if (!hasSamePlace(real, imaginary)) {
        throw Thrown{
            "InvalidSize: Real and Imaginary PelBuffers must have the same dimensions and offset."};
    }
    Buffer result;
    setAndAllocate(result, real.width, real.height);
    result.xform = real.xform;
    result.x = real.x;
    result.y = real.y;
    reference::Plane plane = planeOf(result);
    for (long y = 0; y < real.height; ++y) {
        for (long x = 0; x < real.width; ++x) {
            plane.at(x, y) = {static_cast<float>(real.at(x, y)),
                              static_cast<float>(imaginary.at(x, y))};
        }
    }
    poll();
    setPlane(result, plane);
    return result;
}

bool isEqual(const Buffer& a, const Buffer& b) {
    if (!a.hasData || !b.hasData) return a.hasData == b.hasData;
    if (a.width != b.width || a.height != b.height) return false;
    if (a.imageWidth != b.imageWidth || a.imageHeight != b.imageHeight) return false;
    if (a.inverseComputed != b.inverseComputed || a.masked != b.masked) return false;
    if (a.masked && (a.maskedMiny != b.maskedMiny || a.maskedMaxy != b.maskedMaxy)) return false;
    if (a.x != b.x || a.y != b.y) return false;
    for (std::size_t i = 0; i < floatsOf(a.width, a.height); ++i) {
        if (differ(a.storage[i], b.storage[i])) return false;
    }
    return true;
}

float* element(Buffer& b, long x, long y, bool centred) {
    requireFrequencies(b);
    const long left = centred ? -(b.width / 2) : 0;
    const long top = centred ? -(b.height / 2) : 0;
    const long right = centred ? (b.width + 1) / 2 : b.width;
    const long bottom = centred ? (b.height + 1) / 2 : b.height;
    if (x < left || x >= right || y < top || y >= bottom) throw Thrown{support::kOutOfBounds};
    const long column = x < 0 ? x + b.width : x;
    const long row = y < 0 ? y + b.height : y;
    return &b.storage[floatsOf(b.width, row) + 2 * static_cast<std::size_t>(column)];
}

reference::Plane planeOf(const Buffer& b) {
    reference::Plane plane(static_cast<int>(b.width), static_cast<int>(b.height));
    if (plane.floatCount() == 0) return plane;
    std::copy_n(b.storage.begin(), plane.floatCount(), plane.floats());
    return plane;
}

void setPlane(Buffer& b, const reference::Plane& plane) {
    b.anyElements = false;
    if (plane.floatCount() == 0) return;
    std::copy_n(plane.floats(), plane.floatCount(), b.storage.begin());
}

reference::Spectrum spectrumOf(const Buffer& b) {
    return {.plane = planeOf(b),
            .imageWidth = b.imageWidth,
            .imageHeight = b.imageHeight,
            .x = b.x,
            .y = b.y,
            .masked = b.masked,
            .maskedMiny = b.maskedMiny,
            .maskedMaxy = b.maskedMaxy,
            .inverseComputed = b.inverseComputed};
}

}  // namespace model
