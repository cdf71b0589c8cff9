// The median of a picture's values.
#pragma once

#include <base/pel_buffer.h>

#include <vector>

/// Of n values in their order the one at n / 2, found without a copy of them.
double median(const mvPelBuffer<double>& values);

/// The median of the distances of all values from one.
double medianDistance(const mvPelBuffer<double>& values, double from);

/// The median of a few values, which are put in another order.
double median(std::vector<double>& values);
