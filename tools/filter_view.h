// The response of a filter as a picture.
#pragma once

#include <string>

/// Writes the gains of the filter in the archive as an 8-bit picture of the size that it is built
/// for, the zero frequency at column width / 2 and row height / 2: black is 0, white the largest
/// gain. `axes` puts the axes around it.
void viewFilter(const std::string& archive, const std::string& output, bool axes);
