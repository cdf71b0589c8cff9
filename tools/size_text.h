// Sizes in messages.
#pragma once

#include <base/pair.h>

#include <string>

inline std::string sizeText(mvPair<long> size) {
    return std::to_string(size.x) + " x " + std::to_string(size.y);
}
