// What stands around an image: the rows of a tile's image.
#include <filt/freqfilt/internal/border.h>

#include <algorithm>

namespace mvi {

namespace {

// Whether the image fades from one end of the axis into the other.
bool fades(const AxisPlan& axis, mvBorder border) {
    return border == mvBorder::mirror && !axis.isCut && axis.image < axis.plane;
}

// The weight of the far end at a position beyond the image.
double fadingWeight(const AxisPlan& axis, long position) {
    return (static_cast<double>(position - axis.image) + 0.5) /
           static_cast<double>(axis.plane - axis.image);
}

std::vector<double> fadingWeights(const AxisPlan& axis, long count) {
    std::vector<double> weights;
    weights.reserve(static_cast<std::size_t>(count));
    for (long i = 0; i < count; ++i) weights.push_back(fadingWeight(axis, axis.image + i));
    return weights;
}

// Where a position lies in a row and its mirror image, one behind the other.
std::int64_t inPeriod(std::int64_t position, std::int64_t size) {
    const std::int64_t rest = position % (2 * size);
    return rest < 0 ? rest + 2 * size : rest;
}

// The pels at `first` and the following positions of a row that goes on as its own mirror image.
template <class T>
void copyMirrored(const T* row, std::int64_t size, std::int64_t first, std::int64_t count, T* to) {
    std::int64_t at = inPeriod(first, size);
    while (count > 0) {
        const std::int64_t run = std::min(count, (at < size ? size : 2 * size) - at);
        if (at < size) {
            std::copy_n(row + at, run, to);
        } else {
            std::reverse_copy(row + 2 * size - at - run, row + 2 * size - at, to);
        }
        to += run;
        count -= run;
        at = (at + run) % (2 * size);
    }
}

}  // namespace

long mirrored(std::int64_t position, long size) {
    const std::int64_t at = inPeriod(position, size);
    return static_cast<long>(at < size ? at : 2 * std::int64_t{size} - 1 - at);
}

template <class T>
TileImage<T>::TileImage(const mvPelBuffer_const<T>& image, const TilePlan& plan)
    : image_(image),
      plan_(plan),
      pels_(fades(plan.x, plan.border) ? plan.x.image : plan.x.plane),
      faded_(plan.x.plane - pels_),
      weights_(fadingWeights(plan.x, faded_)) {
    if (plan.border == mvBorder::mirror) {
        slots_.resize(2 * static_cast<std::size_t>(faded_ > 0 ? 2 * faded_ : pels_));
    }
}

template <class T>
void TileImage<T>::select(mvPair<long> tile) {
    first_ = {plan_.x.begin(tile.x) - plan_.x.margin, plan_.y.begin(tile.y) - plan_.y.margin};
}

template <class T>
long TileImage<T>::rows() const {
    const long height = plan_.y.plane;
    return plan_.border == mvBorder::mirror ? height : std::min(height, plan_.y.image - first_.y);
}

template <class T>
const T* TileImage<T>::imageRow(std::int64_t y) const {
    return image_.pointToRow(mirrored(y, plan_.y.image));
}

template <class T>
const T* TileImage<T>::row(long y, T* to) {
    if (plan_.border == mvBorder::zero) return zeroPaddedRow(first_.y + y, to);
    if (y < plan_.y.image || !fades(plan_.y, plan_.border)) {
        return fadingRow(imageRow(std::int64_t{first_.y} + y), to);
    }
    return fadingRows(imageRow(y), imageRow(y - plan_.y.plane), fadingWeight(plan_.y, y), to);
}

// The rows of a tile end with the picture.
template <class T>
const T* TileImage<T>::zeroPaddedRow(long y, T* to) const {
    const long width = plan_.x.plane;
    if (y < 0) return std::fill_n(to, width, T{}) - width;
    const long begin = std::max(-first_.x, 0L);
    const long end = std::min(plan_.x.image - first_.x, width);
    const T* const pels = image_.pointToRow(y) + first_.x + begin;
    if (end - begin == width) return pels;
    std::fill_n(to, begin, T{});
    std::copy_n(pels, end - begin, to + begin);
    std::fill(to + end, to + width, T{});
    return to;
}

// Beyond its last pel the image goes on as its mirror image; the plane's end is what would stand
// before its first pel.
template <class T>
typename TileImage<T>::Spread TileImage<T>::spread(const T* pels, long slot) {
    const long size = plan_.x.image;
    T* const room = slots_.data() + slot * static_cast<long>(slots_.size()) / 2;
    if (faded_ > 0) {
        copyMirrored(pels, size, size, faded_, room);
        copyMirrored(pels, size, -faded_, faded_, room + faded_);
        return {pels, room, room + faded_};
    }
    return {unfadedRow(pels, room), nullptr, nullptr};
}

template <class T>
const T* TileImage<T>::unfadedRow(const T* pels, T* to) const {
    const long size = plan_.x.image;
    if (first_.x >= 0 && first_.x <= size - pels_) return pels + first_.x;
    copyMirrored(pels, size, first_.x, pels_, to);
    return to;
}

template <class T>
const T* TileImage<T>::fadingRow(const T* pels, T* to) {
    if (faded_ == 0) return unfadedRow(pels, to);
    const Spread wide = spread(pels, 0);
    T* const tail = std::copy_n(wide.pels, pels_, to);
    for (long i = 0; i < faded_; ++i) {
        const double weight = weights_[static_cast<std::size_t>(i)];
        tail[i] = roundedPel<T>(blended(wide.from[i], wide.into[i], weight));
    }
    return to;
}

template <class T>
const T* TileImage<T>::fadingRows(const T* above, const T* below, double weight, T* to) {
    const Spread a = spread(above, 0), b = spread(below, 1);
    for (long i = 0; i < pels_; ++i) {
        to[i] = roundedPel<T>(blended(a.pels[i], b.pels[i], weight));
    }
    T* const tail = to + pels_;
    for (long i = 0; i < faded_; ++i) {
        const double along = weights_[static_cast<std::size_t>(i)];
        tail[i] = roundedPel<T>(blended(blended(a.from[i], a.into[i], along),
                                        blended(b.from[i], b.into[i], along), weight));
    }
    return to;
}

template class TileImage<unsigned char>;
template class TileImage<unsigned short>;
template class TileImage<double>;

}  // namespace mvi
