// The filters of a run, built once for each plane.
#pragma once

#include <suggest/filter_chain.h>

#include <map>
#include <mutex>
#include <utility>

#include "filter_recipe.h"

/// Filters that are built when the first picture of their plane comes, and then used by all
/// threads: a filter that does not change may be applied from several threads at once.
class SharedFilters {
  public:
    explicit SharedFilters(ChainRecipe recipe)
        : recipe_(std::move(recipe)), needs_(needsOf(recipe_)) {}

    const ChainRecipe& recipe() const { return recipe_; }
    const PlaneNeeds& needs() const { return needs_; }

    mvFilterList get(mvPair<long> plane) {
        const std::lock_guard lock(mutex_);
        const auto [chain, isNew] = chains_.try_emplace({plane.x, plane.y});
        if (isNew) chain->second = made(plane);
        return chain->second.list();
    }

  private:
    mvFilterChain made(mvPair<long> plane) const {
        mvFilterChain chain;
        for (const FilterRecipe& filter : recipe_) chain.add(filter.make(plane));
        return chain;
    }

    const ChainRecipe recipe_;
    const PlaneNeeds needs_;
    std::mutex mutex_;
    std::map<std::pair<long, long>, mvFilterChain> chains_;
};
