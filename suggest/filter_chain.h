// Filters that are applied one after the other.
#pragma once

#include <filt/freqfilt.h>

#include <memory>
#include <span>
#include <utility>
#include <vector>

/// Filters in their order, as the library takes them.
using mvFilterList = std::span<const mvFrequencyFilter* const>;

/// A list that owns its filters.
class mvFilterChain {
  public:
    void add(std::unique_ptr<const mvFrequencyFilter> filter) {
        filters_.push_back(std::move(filter));
        list_.push_back(filters_.back().get());
    }

    mvFilterList list() const { return list_; }

  private:
    std::vector<std::unique_ptr<const mvFrequencyFilter>> filters_;
    std::vector<const mvFrequencyFilter*> list_;
};
