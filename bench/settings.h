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
    /// Works of pipelines such as "gabor"; all when empty.
    std::vector<std::string> works;
    /// Where lines are appended, and where plans are kept; nowhere when empty.
    std::string csv;
    std::string wisdom;
    double secondsPerContest = 2;
    /// How long FFTW_PATIENT may look for a plan; as long as it takes when 0.
    double planSeconds = 0;
    int core = -1;
    bool realTime = false;
};

/// Throws std::invalid_argument with a usage text.
Settings settingsOf(int count, const char* const* words);

}  // namespace bench
