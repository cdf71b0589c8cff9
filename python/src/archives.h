// Archives as Python bytes.
#pragma once

#include <pybind11/pybind11.h>

/// Adds dumps, loads and loads_buffer.
void bindArchives(pybind11::module_& module);
