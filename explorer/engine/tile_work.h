// A picture filtered tile by tile, in any order, with the bits of the one call.
#pragma once

#include <suggest/filter_chain.h>

#include <vector>

#include "tools/filter_recipe.h"
#include "tools/plane_choice.h"

/// One axis of a picture as the picture call cuts it.
struct TileAxis {
    /// For `pels` of the picture and the plane that the filters were built for.
    TileAxis(long pels, long plane, long reach, mvBorder border);

    /// The pels of the picture that tile number `at` is laid from; some may lie outside of it.
    long from(long at) const { return isWhole ? 0 : at * core - margin; }

    /// The pels of the result that it gives.
    long begin(long at) const { return at * core; }
    long length(long at) const;

    long pels, plane, margin;
    bool isWhole;  // in one plane, with its border
    long core;     // result pels of a tile
    long tiles;
};

/// What is seen of a result: grey levels, or with a percentage so many of the pels spread over the
/// range; magnitudes, or real parts around 32768.
struct ResultWish {
    mvBorder border = mvBorder::mirror;
    std::optional<double> percent{};
    bool withSign = false;
};

/// A rectangle in pels.
struct PelArea {
    long x, y, width, height;
};

/// The work of filters on one picture, in tiles that can be taken in any order.
template <class T>
class TileWork {
  public:
    /// The picture and the filters must outlive the work.
    TileWork(const mvPelBuffer_const<T>& picture, mvFilterList filters, const ResultWish& wish);

    /// How many pieces there are: the tiles, or the picture where these are few. The one call does
    /// less work for all of them, since it knows what of them is not asked for.
    long tiles() const { return isTogether() ? 1 : x_.tiles * y_.tiles; }

    /// The part of the result that tile number `at` gives; tiles are counted row by row.
    PelArea area(long at) const;

    void work(long at);

    /// The result as pels of 8 or 16 bits. Before the last tile is done the range is that of the
    /// tiles that are, and all other pels are black.
    bool isWide() const { return sizeof(T) == 2 || wish_.withSign; }
    mvPelBuffer<unsigned char> bytes() const;
    mvPelBuffer<unsigned short> words() const;

  private:
    static constexpr long kFewTiles = 9;

    bool isPlain() const { return !wish_.percent && !wish_.withSign; }
    bool isTogether() const { return x_.tiles * y_.tiles <= kFewTiles; }

    mvPelBuffer_const<T> laid(const PelArea& from) const;
    mvFilterImageOptions options() const;

    void workTogether();

    template <class U>
    void takeTile(long at, mvPelBuffer<U>& result);
    template <class U>
    mvPelBuffer<U> pels() const;
    mvPelBuffer<T> spread() const;

    const mvPelBuffer_const<T> picture_;
    const mvFilterList filters_;
    const ResultWish wish_;
    const TileAxis x_, y_;
    mvPelBuffer<T> plain_;        // what needs no range
    mvPelBuffer<double> values_;  // what does: magnitudes or real parts
    std::vector<bool> done_;
};
