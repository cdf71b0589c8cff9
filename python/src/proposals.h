// Filters proposed from pictures, and the waves of a picture.
#pragma once

#include <pybind11/pybind11.h>

/// Adds what the module's suggest and peaks are made of.
void bindProposals(pybind11::module_& module);
