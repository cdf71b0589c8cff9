// Which way up a camera was held.
#pragma once

#include <string_view>

/// The orientation, 1 to 8, that the content of an Exif marker holds; 1 where it holds none.
int exifOrientation(std::string_view marker);
