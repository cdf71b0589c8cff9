// A filter of which only the plane is missing.
#include "filter_recipe.h"

#include <algorithm>

#include "failure.h"
#include "size_text.h"

Channels channelsOf(const ChainRecipe& chain) {
    const auto isGrey = [](const FilterRecipe& filter) {
        return filter.channels == Channels::grey;
    };
    return std::any_of(chain.begin(), chain.end(), isGrey) ? Channels::grey : Channels::each;
}

PlaneNeeds needsOf(const FilterRecipe& recipe) {
    return {recipe.reach, recipe.leastPlane, recipe.plane};
}

PlaneNeeds needsOf(const ChainRecipe& chain) {
    PlaneNeeds all;
    for (const FilterRecipe& filter : chain) {
        const mvPair<long> reach = filter.reach, least = filter.leastPlane;
        all.reach = {all.reach.x + reach.x, all.reach.y + reach.y};
        all.leastPlane = {std::max(all.leastPlane.x, least.x), std::max(all.leastPlane.y, least.y)};
        if (!filter.plane) continue;
        if (all.plane && !(*all.plane == *filter.plane)) {
            throw BadArgument("the filters have planes of " + sizeText(*all.plane) + " and of " +
                              sizeText(*filter.plane) + ": only those of one size work together");
        }
        all.plane = filter.plane;
    }
    return all;
}
