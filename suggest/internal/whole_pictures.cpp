// What filters make of whole pictures.
#include "whole_pictures.h"

#include <algorithm>
#include <utility>

#include "../program_plane.h"
#include "magnitude_quantile.h"

namespace {

constexpr std::size_t kPels = 2048 * 2048, kLeast = 1, kMost = 8;

// The pels of an axis that come from one plane.
long inOnePlane(long n, long reach, long side) {
    const bool isWhole = mvPlaneAxis{.picture = n, .reach = reach}.planes(side) == 1;
    return isWhole ? n : side - 2 * std::min(reach, side / 4);
}

}  // namespace

mvi::WholePictures::WholePictures(std::vector<DoubleView> pictures, mvPair<long> first)
    : pictures_(std::move(pictures)), first_(first) {
    for (const DoubleView& picture : pictures_) {
        pels_ +=
            static_cast<std::size_t>(picture.width()) * static_cast<std::size_t>(picture.height());
    }
}

std::size_t mvi::WholePictures::finalists() const {
    return std::clamp(kPels / pels_, kLeast, kMost);
}

double mvi::WholePictures::background(const std::vector<mvFilterStep>& steps) {
    const auto at = std::find_if(known_.begin(), known_.end(),
                                 [&](const auto& known) { return known.first == steps; });
    if (at != known_.end()) return at->second;
    known_.emplace_back(steps, measured(steps));
    return known_.back().second;
}

double mvi::WholePictures::answer(const std::vector<mvFilterStep>& steps, const Bump& bump,
                                  double degrees) const {
    const mvPair<long> reach = mfFiltersReach(steps), plane = mfProgramPlane(first_, reach);
    const mvPair<long> size(inOnePlane(first_.x, reach.x, plane.x),
                            inOnePlane(first_.y, reach.y, plane.y));
    DoubleImage result;
    mfFilterImage(laidBump(bump, degrees, size), mfBuildFilters(steps, plane).list(), result);
    return largestSize(result);
}

double mvi::WholePictures::measured(const std::vector<mvFilterStep>& steps) const {
    const mvPair<long> plane = mfProgramPlane(first_, mfFiltersReach(steps));
    const mvFilterChain filters = mfBuildFilters(steps, plane);
    std::vector<float> magnitudes;
    magnitudes.reserve(pels_);
    for (const DoubleView& picture : pictures_) {
        DoubleImage result;
        mfFilterImage(picture, filters.list(), result);
        for (long y = 0; y < result.height(); ++y) {
            const double* row = result.pointToRow(y);
            std::transform(row, row + result.width(), std::back_inserter(magnitudes),
                           [](double pel) { return static_cast<float>(pel); });
        }
    }
    return quantileOf(magnitudes);
}
