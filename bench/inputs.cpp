// The answers that are expected, by plain transforms in double precision.
#include "inputs.h"

#include <algorithm>
#include <cmath>

#include "reference/fft/dft.h"
#include "tiles.h"

namespace bench {
namespace {

reference::Plane planeOf(Size size) {
    return {static_cast<int>(size.width), static_cast<int>(size.height)};
}

reference::Plane realPlane(const Values& image, Size size, Size padded) {
    reference::Plane plane = planeOf(padded);
    for (long y = 0; y < size.height; ++y) {
        for (long x = 0; x < size.width; ++x) {
            plane.at(x, y).re = image[static_cast<std::size_t>(y * size.width + x)];
        }
    }
    return plane;
}

Values columnsOf(const reference::DoublePlane& plane, Size size, long columns) {
    Values values;
    for (long y = 0; y < size.height; ++y) {
        for (long x = 0; x < columns; ++x) {
            const auto& z = plane[static_cast<std::size_t>(y * size.width + x)];
            values.push_back(static_cast<float>(z.real()));
            values.push_back(static_cast<float>(z.imag()));
        }
    }
    return values;
}

}  // namespace

Values expectedComplex(const Values& values, Size size, int direction) {
    reference::Plane plane = planeOf(size);
    std::copy(values.begin(), values.end(), plane.floats());
    return columnsOf(reference::fastDFT2D(plane, direction), size, size.width);
}

Values expectedReal(const Values& image, Size size) {
    return columnsOf(reference::fastDFT2D(realPlane(image, size, size), 1), size,
                     size.width / 2 + 1);
}

Values expectedPels(const Values& image, const Pipeline& work, float top) {
    const auto spectrum = reference::fastDFT2D(realPlane(image, work.image, work.padded), 1);
    reference::Plane filtered = planeOf(work.padded);
    for (std::size_t i = 0; i < spectrum.size(); ++i) {
        const auto product = spectrum[i] * std::complex<double>(work.response[i]);
        filtered.elements[i] = {static_cast<float>(product.real()),
                                static_cast<float>(product.imag())};
    }
    const auto space = reference::fastDFT2D(filtered, -1);
    Values pels;
    for (long y = 0; y < work.image.height; ++y) {
        for (long x = 0; x < work.image.width; ++x) {
            const auto& z = space[static_cast<std::size_t>(y * work.padded.width + x)];
            const double pel =
                std::floor(std::abs(z) / static_cast<double>(work.padded.count()) + 0.5);
            pels.push_back(std::min(static_cast<float>(pel), top));
        }
    }
    return pels;
}

Values expectedOfTiles(const Values& image, Size size, const Pipeline& tile, long margin,
                       float top) {
    Values pels(image.size());
    for (const Tile& t : tilesOf(size, tile.padded, margin)) {
        Values part(static_cast<std::size_t>(tile.padded.count()));
        t.forEachRow(t.source, size.width, [&](long picture, long plane, long count) {
            std::copy_n(image.begin() + picture, count, part.begin() + plane);
        });
        const Values filtered = expectedPels(part, tile, top);
        t.forEachRow(t.target, size.width, [&](long picture, long plane, long count) {
            std::copy_n(filtered.begin() + plane, count, pels.begin() + picture);
        });
    }
    return pels;
}

}  // namespace bench
