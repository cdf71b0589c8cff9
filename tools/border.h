// What stands around a picture in its padded plane.
#pragma once

#include <base/pel_buffer.h>

#include <bit>
#include <cmath>
#include <iterator>
#include <vector>

/// The picture is padded to powers of two before it is transformed. Zeros (what the library does)
/// are an edge as strong as the picture is bright, which filters answer with a frame of ripples.
/// The mirror continues the picture on either side and fades one into the other.
enum class Border { mirror, zero };

/// The smallest power of two not below `side`.
inline long paddedSide(long side) {
    return static_cast<long>(std::bit_ceil(static_cast<unsigned long>(side)));
}

inline mvPair<long> paddedSize(const mv_PelBuffer& picture) {
    return {paddedSide(picture.width()), paddedSide(picture.height())};
}

/// Where one column (or row) of the padded plane takes its pels from: a blend of two of the
/// picture, `weight` being the share of the second.
struct BorderTap {
    long first;
    long second;
    double weight;
};

/// Taps of a padded side. The plane repeats itself, so the padding lies between the picture's far
/// edge and its near edge: it mirrors the one, then the other.
inline std::vector<BorderTap> mirrorTaps(long side) {
    const long padded = paddedSide(side);
    std::vector<BorderTap> taps;
    for (long i = 0; i < side; ++i) taps.push_back({i, i, 0.0});
    for (long i = side; i < padded; ++i) {
        const double step = static_cast<double>(i - side) + 0.5;
        taps.push_back(
            {2 * side - 1 - i, padded - 1 - i, step / static_cast<double>(padded - side)});
    }
    return taps;
}

/// The picture continued over its whole padded plane.
template <class T>
mvPelBuffer<T> mirrored(const mvPelBuffer<T>& picture) {
    const std::vector<BorderTap> columns = mirrorTaps(picture.width());
    const std::vector<BorderTap> rows = mirrorTaps(picture.height());
    mvPelBuffer<T> plane(std::ssize(columns), std::ssize(rows));
    for (long y = 0; y < plane.height(); ++y) {
        const BorderTap& row = rows[static_cast<std::size_t>(y)];
        const T* upper = picture.pointToRow(row.first);
        const T* lower = picture.pointToRow(row.second);
        T* out = plane.pointToRow(y);
        for (const BorderTap& column : columns) {
            const auto across = [&](const T* pels) {
                return std::lerp(static_cast<double>(pels[column.first]),
                                 static_cast<double>(pels[column.second]), column.weight);
            };
            const double value = std::lerp(across(upper), across(lower), row.weight);
            *out++ = static_cast<T>(std::lround(value));
        }
    }
    return plane;
}

/// What is transformed in the picture's place.
template <class T>
mvPelBuffer<T> withBorder(const mvPelBuffer<T>& picture, Border border) {
    return border == Border::mirror ? mirrored(picture) : picture;
}
