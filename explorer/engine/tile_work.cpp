// A picture filtered tile by tile, in any order, with the bits of the one call.
#include "tile_work.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>

#include "tools/grey_levels.h"
#include "tools/result_pels.h"

namespace {

// Position of a mirrored picture, each edge pel taking part twice.
long reflected(long position, long pels) {
    const long period = 2 * pels;
    const long within = ((position % period) + period) % period;
    return within < pels ? within : period - 1 - within;
}

// The range of magnitudes as the picture call finds it: the least one begins at 1e10, unscaled.
struct Range {
    explicit Range(mvPair<long> plane)
        : low(std::sqrt(1e20f) / static_cast<float>(plane.x * plane.y)) {}

    void take(float value) {
        low = std::min(low, value);
        high = std::max(high, value);
    }

    float low, high = 0;
};

// Half up, clamped.
template <class T>
T pelOf(float value) {
    constexpr float kFull = std::numeric_limits<T>::max();
    const float clamped = std::min(std::max(value, 0.0f), kFull);
    return static_cast<T>((static_cast<int>(clamped + clamped) + 1) >> 1);
}

}  // namespace

TileAxis::TileAxis(long count, long side, long reach, mvBorder border)
    : pels(count),
      plane(side),
      margin(std::min(reach, side / 4)),
      isWhole(count + (border == mvBorder::mirror ? 2 * margin : 0) <= side),
      core(isWhole ? count : side - 2 * margin),
      tiles((count + core - 1) / core) {}

long TileAxis::length(long at) const {
    return std::min(core, pels - begin(at));
}

template <class T>
TileWork<T>::TileWork(const mvPelBuffer_const<T>& picture, mvFilterList filters,
                      const ResultWish& wish)
    : picture_(picture),
      filters_(filters),
      wish_(wish),
      x_(picture.width(), mfFilterPlane(filters).x, mfFilterReach(filters).x, wish.border),
      y_(picture.height(), mfFilterPlane(filters).y, mfFilterReach(filters).y, wish.border),
      done_(static_cast<std::size_t>(tiles())) {
    if (isTogether()) return;
    if (isPlain()) {
        plain_ = mvPelBuffer<T>(picture.width(), picture.height());
    } else {
        values_ = mvPelBuffer<double>(picture.width(), picture.height());
    }
}

template <class T>
PelArea TileWork<T>::area(long at) const {
    if (isTogether()) return {0, 0, picture_.width(), picture_.height()};
    const long column = at % x_.tiles, row = at / x_.tiles;
    return {x_.begin(column), y_.begin(row), x_.length(column), y_.length(row)};
}

// A tile takes all of its plane, so that nothing is laid around it; an axis in one plane is left to
// the picture call.
template <class T>
mvFilterImageOptions TileWork<T>::options() const {
    return {.border = wish_.border,
            .result = wish_.withSign ? mvFilterResult::real : mvFilterResult::magnitude,
            .margin = {x_.isWhole ? x_.margin : 0, y_.isWhole ? y_.margin : 0}};
}

// The pels of an area, some of which may lie beside the picture.
template <class T>
mvPelBuffer_const<T> TileWork<T>::laid(const PelArea& from) const {
    const bool isInside = from.x >= 0 && from.y >= 0 && from.x + from.width <= picture_.width() &&
                          from.y + from.height <= picture_.height();
    if (isInside) return picture_.window(from.x, from.y, from.width, from.height);
    mvPelBuffer<T> tile(from.width, from.height);
    const bool isMirrored = wish_.border == mvBorder::mirror;
    for (long y = 0; y < from.height; ++y) {
        const long row = isMirrored ? reflected(from.y + y, picture_.height()) : from.y + y;
        if (row < 0 || row >= picture_.height()) continue;
        const T* source = picture_.pointToRow(row);
        T* to = tile.pointToRow(y);
        for (long x = 0; x < from.width; ++x) {
            const long column = isMirrored ? reflected(from.x + x, picture_.width()) : from.x + x;
            if (column >= 0 && column < picture_.width()) to[x] = source[column];
        }
    }
    return tile;
}

template <class T>
template <class U>
void TileWork<T>::takeTile(long at, mvPelBuffer<U>& result) {
    const long column = at % x_.tiles, row = at / x_.tiles;
    const PelArea to = area(at);
    const PelArea from{x_.from(column), y_.from(row), x_.isWhole ? x_.pels : x_.plane,
                       y_.isWhole ? y_.pels : y_.plane};
    mvPelBuffer<U> filtered;
    mfFilterImage(laid(from), filters_, filtered, options());
    const mvPelBuffer<U> part = filtered.window(to.x - from.x, to.y - from.y, to.width, to.height);
    for (long y = 0; y < to.height; ++y) {
        std::copy_n(part.pointToRow(y), to.width, result.pointToRow(to.y + y) + to.x);
    }
}

template <class T>
void TileWork<T>::workTogether() {
    mvFilterImageOptions all = options();
    all.margin = {-1, -1};
    if (wish_.withSign) {
        mfFilterImage(picture_, filters_, values_, all);
    } else {
        plain_ = magnitudePels(picture_, filters_, all, wish_.percent);
    }
}

template <class T>
void TileWork<T>::work(long at) {
    if (isTogether()) {
        workTogether();
    } else if (isPlain()) {
        takeTile(at, plain_);
    } else {
        takeTile(at, values_);
    }
    done_[static_cast<std::size_t>(at)] = true;
}

// The whole range, as the picture call spreads it: magnitudes are floats.
template <class T>
mvPelBuffer<T> TileWork<T>::spread() const {
    Range range(mfFilterPlane(filters_));
    mvPelBuffer<T> result(picture_.width(), picture_.height());
    const auto visit = [&](auto each) {
        for (long at = 0; at < tiles(); ++at) {
            if (!done_[static_cast<std::size_t>(at)]) continue;
            const PelArea part = area(at);
            for (long y = part.y; y < part.y + part.height; ++y) {
                const double* row = values_.pointToRow(y);
                T* to = result.pointToRow(y);
                for (long x = part.x; x < part.x + part.width; ++x) each(row[x], to[x]);
            }
        }
    };
    visit([&](double value, T&) { range.take(static_cast<float>(value)); });
    constexpr float kFull = std::numeric_limits<T>::max();
    const float factor = range.high == range.low ? kFull : kFull / (range.high - range.low);
    visit([&](double value, T& pel) {
        pel = pelOf<T>((static_cast<float>(value) - range.low) * factor);
    });
    return result;
}

template <class T>
template <class U>
mvPelBuffer<U> TileWork<T>::pels() const {
    if constexpr (std::is_same_v<T, U>) {
        if (plain_.isBound()) return plain_;
        if (!wish_.withSign) {
            const bool isAll = *wish_.percent >= 100;
            if (isAll) return spread();
            return spreadMagnitudes<T>(values_, magnitudeRange(values_, *wish_.percent));
        }
    }
    if constexpr (std::is_same_v<U, unsigned short>) return realPels(values_, wish_.percent);
    return {};
}

template <class T>
mvPelBuffer<unsigned char> TileWork<T>::bytes() const {
    return pels<unsigned char>();
}

template <class T>
mvPelBuffer<unsigned short> TileWork<T>::words() const {
    return pels<unsigned short>();
}

template class TileWork<unsigned char>;
template class TileWork<unsigned short>;
