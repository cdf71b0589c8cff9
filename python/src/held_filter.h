// A filter with what Python needs beside it.
#pragma once

#include <filt/freqfilt.h>

#include <pybind11/pybind11.h>

#include <memory>
#include <utility>

#include "usage.h"

/// What Python knows as a FrequencyFilter.
class AnyFilter {
  public:
    AnyFilter() = default;
    AnyFilter(const AnyFilter&) = delete;
    AnyFilter& operator=(const AnyFilter&) = delete;
    virtual ~AnyFilter() = default;

    virtual mvFrequencyFilter& base() = 0;

    mutable Usage usage;
};

/// A filter of one class.
template <class Filter>
class Held : public AnyFilter {
  public:
    template <class... Arguments>
    explicit Held(Arguments&&... arguments) : filter(std::forward<Arguments>(arguments)...) {}

    mvFrequencyFilter& base() override { return filter; }

    /// For short calls, which keep the interpreter lock.
    Filter& read() {
        usage.requireUnchanging();
        return filter;
    }
    Filter& change() {
        usage.requireUnused();
        return filter;
    }

    Filter filter;
};
