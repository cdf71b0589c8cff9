// The recipes of filters that are given by numbers, or by a picture of weights.
#include "step_recipe.h"

#include <algorithm>

#include "failure.h"
#include "size_text.h"

namespace {

// The square around DC reaches radius - 1 bins to either side.
void requireRoom(long radius, mvPair<long> plane, const std::string& name) {
    const long largest = std::max(std::min(plane.x, plane.y) / 2, 1l);
    if (radius <= largest) return;
    throw BadArgument(name + ": at most " + std::to_string(largest) + " fits a plane of " +
                      sizeText(plane));
}

FilterRecipe singleRecipe(const mvFilterStep& step, const std::string& radiusName) {
    const auto make = [step, radiusName](mvPair<long> plane) {
        requireRoom(step.dcRadius, plane, radiusName);
        return mfBuildFilter(step, plane);
    };
    const bool passes = step.kind == mvFilterKind::bandPass || step.kind == mvFilterKind::gabor;
    return {.make = make,
            .reach = mfFiltersReach({step}),
            .channels = passes ? Channels::grey : Channels::each};
}

}  // namespace

Channels channelsOf(const mvFrequencyFilter& filter) {
    const bool passes = dynamic_cast<const mvFrequencyFilterBandPass*>(&filter) ||
                        dynamic_cast<const mvFrequencyFilterGabor*>(&filter);
    return passes ? Channels::grey : Channels::each;
}

ChainRecipe recipeOf(const mvFilterStep& step, const std::string& radiusName) {
    ChainRecipe chain;
    for (const mvFilterStep& single : mfSingleSteps({step})) {
        chain.push_back(singleRecipe(single, radiusName));
    }
    return chain;
}

FilterRecipe recipeOf(const Kernel& kernel) {
    const mvPair<long> least = kernel.leastPlane();
    return {.make = [kernel](mvPair<long> plane) { return kernel.filter(plane); },
            .reach = mfFilterReach(*kernel.filter(least)),
            .leastPlane = least,
            .channels = Channels::each};
}
