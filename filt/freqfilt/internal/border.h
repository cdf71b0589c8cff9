// What stands around an image: the rows of a tile's image.
#pragma once

#include <filt/freqfilt/internal/tiling.h>
#include <internal/product.h>

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <vector>

namespace mvi {

/// The pel of an axis of `size` pels that a position stands for, where the axis goes on beyond its
/// ends as its own mirror image, each edge pel twice.
long mirrored(std::int64_t position, long size);

/// std::lerp for 0 <= t < 1, step by step, so that all libraries give the same bits.
inline double blended(double a, double b, double t) {
    if ((a <= 0.0 && b >= 0.0) || (a >= 0.0 && b <= 0.0)) {
        return product(t, b) + product(1.0 - t, a);
    }
    const double x = a + product(t, b - a);
    if (b > a) return b > x ? x : b;
    return b < x ? x : b;
}

/// std::lround for integer pels, which are never below 0; doubles stay as they are.
template <class T>
T roundedPel(double value) {
    if constexpr (std::is_floating_point_v<T>) {
        return value;
    } else {
        const int whole = static_cast<int>(value);
        return static_cast<T>(whole + (value - whole >= 0.5 ? 1 : 0));
    }
}

/// The image that fills a tile's plane, row by row: pels of the picture, and its border.
///
/// The image is never in memory as a whole: a row is made from at most two rows of the picture when
/// it is asked for. Each thread has an object of its own.
template <class T>
class TileImage {
  public:
    /// `image` and `plan` outlive the object.
    TileImage(const mvPelBuffer_const<T>& image, const TilePlan& plan);

    /// Turns to a tile.
    void select(mvPair<long> tile);

    /// The rows that may hold anything but zeros; the others follow them.
    long rows() const;

    /// Row y < rows() of the tile's image: the picture's own pels where these fill the row, else
    /// `to`, which has room for a row.
    const T* row(long y, T* to);

  private:
    // A row of the picture, spread over the plane but not blended yet: pels, and then pairs of pels
    // between which the row fades.
    struct Spread {
        const T* pels;
        const T* from;
        const T* into;
    };

    Spread spread(const T* pels, long slot);
    const T* zeroPaddedRow(long y, T* to) const;
    const T* unfadedRow(const T* pels, T* to) const;
    const T* fadingRow(const T* pels, T* to);
    const T* fadingRows(const T* above, const T* below, double weight, T* to);
    const T* imageRow(std::int64_t y) const;

    const mvPelBuffer_const<T>& image_;
    const TilePlan& plan_;
    mvPair<long> first_;  // the pel of the picture at the tile's corner
    long pels_, faded_;   // of a row: taken as they are; blended
    std::vector<double> weights_;
    std::vector<T> slots_;
};

extern template class TileImage<unsigned char>;
extern template class TileImage<unsigned short>;
extern template class TileImage<double>;

}  // namespace mvi
