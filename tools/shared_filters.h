// The filters of a run, one for each plane.
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <utility>

#include "filter_recipe.h"

/// Filters that are built when the first picture of their plane comes, and then used by all
/// threads: a filter that does not change may be applied from several threads at once.
class SharedFilters {
  public:
    explicit SharedFilters(FilterRecipe recipe) : recipe_(std::move(recipe)) {}

    const FilterRecipe& recipe() const { return recipe_; }

    const mvFrequencyFilter& get(mvPair<long> plane) {
        const std::lock_guard lock(mutex_);
        std::unique_ptr<const mvFrequencyFilter>& filter = filters_[{plane.x, plane.y}];
        if (!filter) filter = recipe_.make(plane);
        return *filter;
    }

  private:
    const FilterRecipe recipe_;
    std::mutex mutex_;
    std::map<std::pair<long, long>, std::unique_ptr<const mvFrequencyFilter>> filters_;
};
