// The search for the filter that a defect stands out most behind.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <tuple>
#include <vector>

#include "candidates.h"
#include "search_tiles.h"
#include "spot_answer.h"

namespace mvi {

/// A filter and how far a defect of contrast 1 stands out behind it.
struct Scored {
    mvFilterStep step;
    double contrast;
};

/// Tries filters on tiles of the pictures: all of them on few tiles, and those around the best on
/// more.
class FilterSearch {
  public:
    /// `picture` is the size of the first picture; `advance` is called at each filter that is
    /// tried.
    FilterSearch(std::vector<DoubleView> pictures, mvPair<long> picture, SearchedFor wanted,
                 std::function<void()> advance);

    /// About how many filters are tried.
    std::size_t tries() const;

    /// Tries the coarse filters.
    void tryAll();

    /// The best filters for a defect, the best first, `most` of them at most.
    std::vector<Scored> best(const Bump& bump, std::size_t most);

  private:
    enum Fineness { coarse, fine };
    using Key = std::tuple<double, double, double, double, long>;
    using Square = std::tuple<long, long, long>;  // a DC radius in a plane; 0 for none

    Square squareOf(const mvFilterStep& step) const;

    TileLayout layoutFor(const mvFilterStep& step) const;
    Answers answers() const { return wanted_.direction ? Answers::complex : Answers::real; }
    std::vector<DoubleView> picturesFor(const mvFilterStep& step) const;
    SearchTiles& tilesFor(const mvFilterStep& step, Fineness fineness);
    SearchTiles& bumpFor(const TileLayout& layout, const Bump& bump);
    double answerOf(const mvFilterStep& step, const Bump& bump, Fineness fineness);
    mvPair<long> reachOf(const mvFilterStep& step) const;
    mvPair<long> planeFor(const mvFilterStep& step) const;
    double background(const mvFilterStep& step, Fineness fineness);
    Scored score(const mvFilterStep& step, const Bump& bump, Fineness fineness);
    std::vector<Scored> coarseBest(const Bump& bump);
    void refine(Scored best, const Bump& bump, std::vector<Scored>& seen);
    bool improve(Scored& best, const Bump& bump, double ratio, std::vector<Scored>& seen);

    std::vector<DoubleView> pictures_;
    std::int64_t pels_ = 0;
    mvPair<long> picture_;
    SearchedFor wanted_;
    mvPair<long> reachBefore_;
    std::function<void()> advance_;
    std::map<std::tuple<TileLayout, Square, Fineness>, SearchTiles> tiles_;
    std::map<std::pair<TileLayout, double>, SearchTiles> bumps_;
    std::vector<mvFilterStep> coarse_;
    std::map<Key, double> known_[2];
};

}  // namespace mvi
