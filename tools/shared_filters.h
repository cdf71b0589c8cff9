// The filters of a run, one for each padded size.
#pragma once

#include <filt/freqfilt.h>

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

/// Builds the filter for planes of a padded size; `picture` is the one that asked for it.
using MakeFilter = std::function<std::unique_ptr<mvFrequencyFilter>(mvPair<long> size,
                                                                    const std::string& picture)>;

/// Filters that are built when the first picture of their size comes, and then used by all threads:
/// a filter that does not change may be applied from several threads at once.
class SharedFilters {
  public:
    explicit SharedFilters(MakeFilter make) : make_(std::move(make)) {}

    const mvFrequencyFilter& get(mvPair<long> size, const std::string& picture) {
        const std::lock_guard lock(mutex_);
        std::unique_ptr<const mvFrequencyFilter>& filter = filters_[{size.x, size.y}];
        if (!filter) filter = make_(size, picture);
        return *filter;
    }

  private:
    const MakeFilter make_;
    std::mutex mutex_;
    std::map<std::pair<long, long>, std::unique_ptr<const mvFrequencyFilter>> filters_;
};
