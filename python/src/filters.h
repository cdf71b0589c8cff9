// The filters with what Python needs beside them.
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

/// A Python filter of the same class as `filter`, whose response it takes; None for a class that
/// is not the library's.
pybind11::object pythonFilter(mvFrequencyFilter& filter);

/// Adds the filter classes; bindFilters adds them all.
void bindFilters(pybind11::module_& module);
void bindRingFilters(pybind11::module_& module);
void bindLobeFilters(pybind11::module_& module);
