// Records of buffers that no library wrote.
#pragma once

#include <string>

namespace model {

/// Any sides, image sizes, bands and places; arrays that are longer or shorter than the sides say;
/// counts and truth values that are none; both versions; now and then cut short.
std::string hostileBuffer(long seed);

}  // namespace model
