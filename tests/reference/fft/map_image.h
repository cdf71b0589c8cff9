// The five mappings of doubles to bytes.
#pragma once

#include <vector>

namespace reference {

enum class Mapping { clip = 0, autoScale = 1, range = 2, log = 3, angle = 4 };

/// One byte for each value. Only Mapping::range reads `low` and `high`.
std::vector<unsigned char> mapImage(const std::vector<double>& values, Mapping mapping, double low,
                                    double high);

}  // namespace reference
