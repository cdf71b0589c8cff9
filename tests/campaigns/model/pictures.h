// The picture call in the model: its checks, its tiles, filters by themselves and in lists.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "campaigns/model/state.h"

namespace model {

/// What the picture call knows of a filter, and what it asks of it.
struct PictureFilter {
    /// What it is refused for; empty for one that has a response.
    std::string refused{};
    /// None for a class of the caller's own.
    std::optional<Sides> plane{};
    /// An image filter's polls.
    std::function<Sides(const Poll&)> reach{};
    std::function<void(reference::Spectrum&)> apply{};
};
using PictureFilters = std::vector<PictureFilter>;

/// A class of the caller's own: each frequency has a gain of its own, and some are turned.
PictureFilter ownFilter();
PictureFilter pictureFilterOf(const ImageFilter& filter);

/// A filter of the list that is not there.
PictureFilter missingFilter();

struct PictureOptions {
    bool mirror = true;
    bool real = false;
    bool rescale = false;
    Sides margin = {-1, -1};
    int threads = 1;
};

/// None when no filter of the list knows it.
std::optional<Sides> planeOf(const PictureFilters& filters);
Sides reachOf(const PictureFilters& filters, const Poll& poll);

/// The polls are those that the three calls make; `morePolls` comes behind them.
template <class T, class U>
void filterImage(const Image<T>& image, const PictureFilters& filters, Image<U>& out,
                 const PictureOptions& options, const Poll& poll, const Poll& morePolls);

}  // namespace model
