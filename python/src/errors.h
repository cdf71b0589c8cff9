// The library's exceptions as Python's.
#pragma once

#include <filt/fft.h>

#include <pybind11/pybind11.h>

#include <memory>

/// The Python exception that stands for an error object.
pybind11::object pythonError(const mvException& error);

/// The error object that a Python exception stands for; null for any other Python object.
std::unique_ptr<mvFrequencyDefs::Errors> nativeError(const pybind11::object& error);

/// Has the library's exceptions raised as those of mvfreq.errors.
void translateErrors();
