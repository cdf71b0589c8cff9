// The command line of the benchmarks.
#include "settings.h"

#include <stdexcept>

namespace bench {
namespace {

const char* const kUsage =
    "usage: mvfreq_bench [--group G]... [--size WxH]... [--work W]... [--csv FILE]\n"
    "                    [--wisdom FOLDER] [--seconds S] [--plan-seconds S] [--core N] "
    "[--real-time]\n"
    "groups: c2c copy real path band pipeline8 everywhere\n"
    "        pipeline16 tiles threads operation first memory machine";

}  // namespace

Settings settingsOf(int count, const char* const* words) {
    Settings settings;
    for (int i = 1; i < count; ++i) {
        const std::string option = words[i];
        if (option == "--real-time") {
            settings.realTime = true;
            continue;
        }
        if (++i == count) throw std::invalid_argument(kUsage);
        const std::string value = words[i];
        if (option == "--group") {
            settings.groups.push_back(value);
        } else if (option == "--size") {
            settings.sizes.push_back(value);
        } else if (option == "--work") {
            settings.works.push_back(value);
        } else if (option == "--csv") {
            settings.csv = value;
        } else if (option == "--wisdom") {
            settings.wisdom = value;
        } else if (option == "--seconds") {
            settings.secondsPerContest = std::stod(value);
        } else if (option == "--plan-seconds") {
            settings.planSeconds = std::stod(value);
        } else if (option == "--core") {
            settings.core = std::stoi(value);
        } else {
            throw std::invalid_argument(kUsage);
        }
    }
    return settings;
}

}  // namespace bench
