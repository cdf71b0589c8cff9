// What the command line decides.
#pragma once

#include <string>
#include <vector>

namespace bench {

struct Settings {
    /// Groups of contests to hold; all when empty.
    std::vector<std::string> groups;
    /// Sizes such as "1024x1024" to hold them at; all when empty.
    std::vector<std::string> sizes;
    /// Where lines are appended, and where plans are kept; nowhere when empty.
    std::string csv;
    std::string wisdom;
    double secondsPerContest = 2;
    double planSeconds = 5;
    int core = -1;
    bool realTime = false;
};

/// Throws std::invalid_argument with a usage text.
Settings settingsOf(int count, const char* const* words);

}  // namespace bench
