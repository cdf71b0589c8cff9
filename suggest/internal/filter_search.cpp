// The search for the filter that a defect stands out most behind.
#include "filter_search.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "../program_plane.h"
#include "filtered_pictures.h"

namespace {

constexpr long kTiles[] = {8, 16};
constexpr double kRatios[] = {1.12, 1.06};
// What leaves less of a defect is lost among the roundings.
constexpr double kLeastAnswer = 0.01;

constexpr std::size_t kStarts = 3, kRefined = 2, kTriesForARadius = 70;

// Fine filters are tried on small tiles, whose planes stay in a processor's cache. What is filtered
// with them and dropped is more than all but the narrowest of these filters reach. Their bins are
// too wide for a square around DC: it is cleared from whole pictures before.
constexpr long kSmallSide = 256, kSmallMargin = 32;

// The rest on planes as the program takes them, of which only the lowest frequencies are kept.
constexpr double kHighestKept = 0.48;
constexpr long kLeastSide = 64, kLeastPels = 16'000;

bool isBetter(const mvi::Scored& a, const mvi::Scored& b) {
    return a.contrast > b.contrast;
}

mvi::TileAxis smallAxis(long n) {
    const long side =
        static_cast<long>(std::bit_ceil(static_cast<unsigned long>(n + 2 * kSmallMargin)));
    return {std::min(side, kSmallSide), kSmallMargin, false};
}

// As the program lays an axis; the margin that it takes for tiles is about this one.
mvi::TileAxis programAxis(long n, long reach, long side) {
    const bool isWhole = mvPlaneAxis{.picture = n, .reach = reach}.planes(side) == 1;
    return {side, isWhole ? 0 : side / 4, isWhole};
}

// How many times smaller a filtered plane may be, of pictures with so many pels. Where few are left
// of these, the thousandth that counts is missed between them.
long scaleFor(const mvFilterStep& step, mvPair<long> plane, std::int64_t pels) {
    long scale = 1;
    while (2 * static_cast<double>(scale) * mvi::upperEdge(step) <= kHighestKept &&
           std::min(plane.x, plane.y) / (2 * scale) >= kLeastSide &&
           pels / (4 * scale * scale) >= kLeastPels) {
        scale *= 2;
    }
    return scale;
}

bool isLarge(mvPair<long> plane) {
    return std::min(plane.x, plane.y) > kSmallSide;
}

}  // namespace

mvi::FilterSearch::FilterSearch(std::vector<DoubleView> pictures, mvPair<long> picture,
                                SearchedFor wanted, std::function<void()> advance)
    : pictures_(std::move(pictures)),
      picture_(picture),
      wanted_(std::move(wanted)),
      reachBefore_(mfFiltersReach(wanted_.before)),
      advance_(std::move(advance)) {
    for (const DoubleView& each : pictures_) pels_ += std::int64_t{each.width()} * each.height();
    for (const mvFilterStep& step : coarseFilters(wanted_)) {
        const mvPair<long> plane = planeFor(step);
        for (const long radius : dcRadii(step, std::min(plane.x, plane.y))) {
            coarse_.push_back(step);
            coarse_.back().dcRadius = radius;
        }
    }
}

std::size_t mvi::FilterSearch::tries() const {
    return coarse_.size() + kTriesForARadius * wanted_.radii.size();
}

mvi::TileLayout mvi::FilterSearch::layoutFor(const mvFilterStep& step) const {
    const mvPair<long> reach = reachOf(step), plane = mfProgramPlane(picture_, reach);
    const long scale = scaleFor(step, plane, pels_);
    if (scale == 1 && (step.dcRadius <= 1 || isLarge(plane))) {
        return {smallAxis(picture_.x), smallAxis(picture_.y), 1};
    }
    return {programAxis(picture_.x, reach.x, plane.x), programAxis(picture_.y, reach.y, plane.y),
            scale};
}

mvi::FilterSearch::Square mvi::FilterSearch::squareOf(const mvFilterStep& step) const {
    const mvPair<long> plane = planeFor(step);
    const bool isCleared = step.dcRadius > 1 && isLarge(plane) && scaleFor(step, plane, pels_) == 1;
    return isCleared ? Square(step.dcRadius, plane.x, plane.y) : Square();
}

// The pictures, or what a filter that lets all but the square through leaves of them: not kept,
// since that takes as much memory for each square.
std::vector<mvi::DoubleView> mvi::FilterSearch::picturesFor(const mvFilterStep& step) const {
    if (squareOf(step) == Square()) return pictures_;
    const mvFilterStep others{.sigma = 1, .plateau = 1, .dcRadius = step.dcRadius};
    const mvPair<long> plane = planeFor(step), reach = reachOf(step);
    return filtered(pictures_, {others}, plane,
                    {std::min(reach.x, plane.x / 4), std::min(reach.y, plane.y / 4)});
}

mvi::SearchTiles& mvi::FilterSearch::tilesFor(const mvFilterStep& step, Fineness fineness) {
    const TileLayout layout = layoutFor(step);
    const std::tuple key(layout, squareOf(step), fineness);
    const auto at = tiles_.find(key);
    if (at != tiles_.end()) return at->second;
    // Large tiles make up for their number.
    const long pels = layout.x.side * layout.y.side / (layout.scale * layout.scale);
    const long most = std::max(kTiles[fineness] * kSmallSide * kSmallSide / pels, 2l);
    return tiles_.try_emplace(key, picturesFor(step), layout, most, answers()).first->second;
}

// A bump in a black picture of which one tile is all.
mvi::SearchTiles& mvi::FilterSearch::bumpFor(const TileLayout& layout, const Bump& bump) {
    const auto at = bumps_.find({layout, bump.across});
    if (at != bumps_.end()) return at->second;
    const auto length = [](long n, const TileAxis& axis) {
        return axis.isWhole ? n : std::min(n, axis.side - 2 * axis.margin);
    };
    const DoubleView image = laidBump(bump, wanted_.direction.value_or(0),
                                      {length(picture_.x, layout.x), length(picture_.y, layout.y)});
    return bumps_
        .try_emplace({layout, bump.across}, std::vector<DoubleView>{image}, layout, 1, answers())
        .first->second;
}

// Where a whole picture lies in one plane, the mirror images of a bump play a part.
double mvi::FilterSearch::answerOf(const mvFilterStep& step, const Bump& bump, Fineness fineness) {
    const TileLayout layout = layoutFor(step);
    const bool isWhole = layout.x.isWhole && layout.y.isWhole;
    if (fineness == fine && isWhole) return bumpFor(layout, bump).peak(step);
    return spotAnswer(step, bump, planeFor(step));
}

mvPair<long> mvi::FilterSearch::reachOf(const mvFilterStep& step) const {
    const mvPair<long> own = mfFiltersReach({step});
    return {reachBefore_.x + own.x, reachBefore_.y + own.y};
}

mvPair<long> mvi::FilterSearch::planeFor(const mvFilterStep& step) const {
    return mfProgramPlane(picture_, reachOf(step));
}

double mvi::FilterSearch::background(const mvFilterStep& step, Fineness fineness) {
    const Key key(step.frequency, step.sigma, step.plateau, step.sigmaAcross, step.dcRadius);
    const auto [at, isNew] = known_[fineness].try_emplace(key);
    if (isNew) {
        advance_();
        mvFilterStep left = step;
        if (squareOf(step) != Square()) left.dcRadius = 0;
        at->second = tilesFor(step, fineness).background(left);
    }
    return at->second;
}

mvi::Scored mvi::FilterSearch::score(const mvFilterStep& step, const Bump& bump,
                                     Fineness fineness) {
    const double behind = background(step, fineness);
    const double answer = answerOf(step, bump, fineness);
    return {step, behind > 0 && answer > kLeastAnswer ? answer / behind : 0};
}

void mvi::FilterSearch::tryAll() {
    for (const mvFilterStep& step : coarse_) background(step, coarse);
}

// The most promising filters of each DC radius, tried again on more tiles: mirror images, which
// play a part there, may turn the order of the radii round.
std::vector<mvi::Scored> mvi::FilterSearch::coarseBest(const Bump& bump) {
    std::map<long, std::vector<Scored>> found;
    for (const mvFilterStep& step : coarse_) {
        if (!isWithinReach(step, bump.across)) continue;
        found[step.dcRadius].push_back(score(step, bump, coarse));
    }
    std::vector<Scored> starts;
    for (auto& [radius, scored] : found) {
        std::stable_sort(scored.begin(), scored.end(), isBetter);
        for (std::size_t at = 0; at < std::min(scored.size(), kStarts); ++at) {
            starts.push_back(score(scored[at].step, bump, fine));
        }
    }
    std::stable_sort(starts.begin(), starts.end(), isBetter);
    return starts;
}

// One step to the best neighbour, when that is better.
bool mvi::FilterSearch::improve(Scored& best, const Bump& bump, double ratio,
                                std::vector<Scored>& seen) {
    std::vector<mvFilterStep> steps = neighbours(best.step, ratio);
    const mvPair<long> plane = planeFor(best.step);
    for (const long radius : dcRadii(best.step, std::min(plane.x, plane.y))) {
        steps.push_back(best.step);
        steps.back().dcRadius = radius;
    }
    const Scored former = best;
    for (const mvFilterStep& step : steps) {
        seen.push_back(score(step, bump, fine));
        best = std::min(best, seen.back(), isBetter);
    }
    return isBetter(best, former);
}

void mvi::FilterSearch::refine(Scored best, const Bump& bump, std::vector<Scored>& seen) {
    for (const double ratio : kRatios) {
        for (int round = 0; round < 4 && improve(best, bump, ratio, seen); ++round) {
        }
    }
}

std::vector<mvi::Scored> mvi::FilterSearch::best(const Bump& bump, std::size_t most) {
    const std::vector<Scored> starts = coarseBest(bump);
    std::vector<Scored> seen = starts;
    for (std::size_t at = 0; at < std::min(starts.size(), kRefined); ++at) {
        refine(starts[at], bump, seen);
    }
    std::stable_sort(seen.begin(), seen.end(), isBetter);
    const auto isSame = [](const Scored& a, const Scored& b) { return a.step == b.step; };
    seen.erase(std::unique(seen.begin(), seen.end(), isSame), seen.end());
    seen.resize(std::min(seen.size(), most));
    return seen;
}
