// How far the transforms are from the same sums in long double.
#pragma once

#include <string>
#include <vector>

#include "reference/fft/plane.h"

namespace accuracy {

/// Sums of absolute differences, roots of sums of their squares, and largest ones, each divided by
/// that of the exact values.
struct Errors {
    double l1, l2, lInf;
};

/// What is transformed: name and plane.
struct Input {
    std::string name;
    reference::Plane (*make)(int width, int height);
};

/// An impulse away from the origin, random numbers in -1 .. 1, a constant that is no power of two,
/// and a ramp.
const std::vector<Input>& inputs();

/// What is measured: name and measurement.
struct Transform {
    std::string name;
    Errors (*errors)(const reference::Plane& input);
};

/// The complex forward transform, the forward transform of only the real parts, and the complex
/// one followed by its inverse. The inverse by itself is the forward transform of conjugates, to
/// the bit.
const std::vector<Transform>& transforms();

struct Size {
    int width, height;
};

/// Squares from 2 x 2 to 2048 x 2048, single rows and columns, and oblongs.
std::vector<Size> sizes();

/// A row of the table, as Markdown: the size and three errors for each input.
std::string row(const Size& size, const std::vector<Errors>& errors);

}  // namespace accuracy
