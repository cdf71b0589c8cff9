// What ring and lobe filters are built from.
#pragma once

#include <pybind11/pybind11.h>

/// Adds the classes RingParameters and LobeParameters.
void bindParameters(pybind11::module_& module);
