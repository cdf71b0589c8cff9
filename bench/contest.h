// Peers side by side on the same work.
#pragma once

#include <functional>
#include <string>

#include "peer.h"
#include "settings.h"

namespace bench {

/// How far an answer is from the expected one, and how far it may be.
struct Judge {
    std::function<double(const Values& answer, const Values& expected)> error;
    double limit;
};

/// Root of the sum of squared differences, divided by that of the squares expected.
Judge relativeError(double limit);

/// The largest difference of two values.
Judge largestDifference(double limit);

struct Contest {
    std::string group;
    std::string work;
    Size size;
    Values input;
    Values expected;
    Judge judge;
    Peers peers;
};

/// Compares every answer, then times the peers in rounds, each in a random order, and appends one
/// line for each peer to the CSV file; ratios to the first peer go to the terminal. Throws when an
/// answer is wrong.
void hold(Contest& contest, const Settings& settings);

/// One line of the CSV file for figures that were taken in another way.
void record(const Settings& settings, const std::string& group, const std::string& work, Size size,
            const std::string& peer, std::vector<double> nanoseconds, double error = 0);

}  // namespace bench
