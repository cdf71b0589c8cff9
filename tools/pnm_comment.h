// By what the program knows its own PNM files.
#pragma once

#include <string_view>

inline constexpr std::string_view kPnmComment = "# mvfreq";
