// Transforms of the plane.
#pragma once

#include <pybind11/pybind11.h>

/// Adds the class Xform.
void bindXform(pybind11::module_& module);
