// The filters as Python classes.
#pragma once

#include <filt/freqfilt/filter.h>

#include <pybind11/pybind11.h>

/// A Python filter of the same class as `filter`, whose response it takes; None for a class that
/// is not the library's.
pybind11::object pythonFilter(mvFrequencyFilter& filter);

/// Adds the picture call and its questions to filters.
void bindPictures(pybind11::module_& module);

/// Adds the filter classes; bindFilters adds them all.
void bindFilters(pybind11::module_& module);
void bindRingFilters(pybind11::module_& module);
void bindLobeFilters(pybind11::module_& module);
