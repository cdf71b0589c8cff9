// What stands out in a picture, as text.
#pragma once

#include <string>
#include <vector>

#include "spots.h"

/// What was found in one picture.
struct Findings {
    std::string picture;  // its name
    double threshold;
    std::vector<Spot> spots;
};

/// A line on the picture and a table of its spots.
std::string spotTable(const Findings& findings);

/// One line: an object of JSON.
std::string spotJson(const Findings& findings);
