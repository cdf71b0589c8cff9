// The picture call as it is defined: whole tiles, laid out pel by pel, each through the three
// calls.
#pragma once

#include <cmath>
#include <cstddef>
#include <functional>
#include <type_traits>
#include <vector>

#include "reference/fft/image.h"

namespace reference {

/// One axis: an image of n pels, planes of N, tiles that give c pels from behind a margin of m. In
/// one plane c is 0.
struct PictureAxis {
    PictureAxis(long image, long plane, long margin, bool mirror);

    long tiles() const { return c == 0 ? 1 : (n + c - 1) / c; }

    /// The tile that gives a pel of the result, and where in the tile's plane that pel is.
    long tileOf(long pel) const { return c == 0 ? 0 : pel / c; }
    long placeOf(long pel) const { return c == 0 ? pel : pel % c + m; }

    long n, N, m = 0, c = 0;
    bool mirror;
};

/// The margin of an axis that was given `given`, for a filter with that reach.
long pictureMargin(long given, long reach, long plane);

/// The plane of an axis for a filter that was built for none.
long planeWithoutFilter(long image, bool mirror);

/// What stands at a position of a tile: nothing, the pel a, or, for t above 0, a blend of a and b.
struct PicturePosition {
    bool isZero = false;
    long a = 0;
    long b = 0;
    double t = 0;
};
PicturePosition positionOf(const PictureAxis& axis, long tile, long i);

/// What stands at a place that is not a pel of the image as it is.
template <class T>
T blendedPel(const Image<T>& image, const PicturePosition& x, const PicturePosition& y) {
    const auto along = [&](long row) {
        const auto a = static_cast<double>(image.at(x.a, row));
        return x.t > 0 ? std::lerp(a, static_cast<double>(image.at(x.b, row)), x.t) : a;
    };
    const double value = y.t > 0 ? std::lerp(along(y.a), along(y.b), y.t) : along(y.a);
    if constexpr (std::is_integral_v<T>) {
        return static_cast<T>(std::lround(value));
    } else {
        return value;
    }
}

/// The whole image of the tile in that column and row of tiles.
template <class T>
Image<T> laidTile(const Image<T>& image, const PictureAxis& x, const PictureAxis& y, long column,
                  long row) {
    Image<T> laid(x.N, y.N);
    for (long j = 0; j < y.N; ++j) {
        const PicturePosition py = positionOf(y, row, j);
        for (long i = 0; i < x.N; ++i) {
            const PicturePosition px = positionOf(x, column, i);
            if (px.isZero || py.isZero) continue;
            laid.at(i, j) = px.t > 0 || py.t > 0 ? blendedPel(image, px, py) : image.at(px.a, py.a);
        }
    }
    return laid;
}

/// Takes the image of a tile through the three calls.
template <class T, class U>
using ThreeCalls = std::function<Image<U>(const Image<T>& tile)>;

/// Every pel of the result from its tile.
template <class T, class U>
Image<U> filteredByTiles(const Image<T>& image, const PictureAxis& x, const PictureAxis& y,
                         const ThreeCalls<T, U>& threeCalls) {
    std::vector<Image<U>> tiles;
    for (long row = 0; row < y.tiles(); ++row) {
        for (long column = 0; column < x.tiles(); ++column) {
            tiles.push_back(threeCalls(laidTile(image, x, y, column, row)));
        }
    }
    Image<U> out(image.width, image.height);
    for (long j = 0; j < out.height; ++j) {
        for (long i = 0; i < out.width; ++i) {
            const long tile = y.tileOf(j) * x.tiles() + x.tileOf(i);
            out.at(i, j) = tiles[static_cast<std::size_t>(tile)].at(x.placeOf(i), y.placeOf(j));
        }
    }
    return out;
}

/// The scaled magnitudes of a whole result over the whole range of U; `scale` is 1 / (W H).
template <class U>
Image<U> rescaledPicture(const Image<double>& magnitudes, float scale) {
    float low = std::sqrt(1e20f) * scale;
    float high = std::sqrt(-1e20f);
    for (const double magnitude : magnitudes.pels) {
        const auto m = static_cast<float>(magnitude);
        if (m < low) low = m;
        if (m == m && !(m <= high)) high = m;
    }
    const float full = static_cast<U>(-1);
    const float factor = high == low ? full : full / (high - low);
    Image<U> out(magnitudes.width, magnitudes.height);
    for (std::size_t i = 0; i < out.pels.size(); ++i) {
        const float spread = (static_cast<float>(magnitudes.pels[i]) - low) * factor;
        const double rounded = std::floor(static_cast<double>(spread) + 0.5);
        if (rounded > 0) {
            out.pels[i] = rounded < full ? static_cast<U>(rounded) : static_cast<U>(-1);
        }
    }
    return out;
}

}  // namespace reference
