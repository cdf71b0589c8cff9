// The words of a command line, before anything is known of options.
#include "command_words.h"

#include <algorithm>

#include "failure.h"
#include "numbers.h"

namespace {

using Words = std::vector<std::string>;

// --rescale may have a number behind it, or none: it gets one.
std::string withPercentage(const std::string& next, bool& hasNumber) {
    hasNumber = numberIn(next).has_value();
    return "--rescale=" + (hasNumber ? next : "100");
}

void requireWords(const std::vector<Words>& commands) {
    if (commands.size() == 1) return;
    for (const Words& command : commands) {
        if (command.empty()) throw BadArgument("then: stands between two filters");
    }
}

}  // namespace

std::vector<Words> commandsOf(const Words& words) {
    std::vector<Words> commands(1);
    bool areNames = false;  // what follows "--" is neither option nor command
    for (std::size_t at = 1; at < words.size(); ++at) {
        const std::string& word = words[at];
        areNames = areNames || word == "--";
        bool hasNumber = false;
        if (!areNames && word == "then") {
            commands.emplace_back();
        } else if (!areNames && word == "--rescale") {
            commands.back().push_back(
                withPercentage(at + 1 < words.size() ? words[at + 1] : "", hasNumber));
        } else {
            commands.back().push_back(word);
        }
        at += hasNumber ? 1 : 0;
    }
    requireWords(commands);
    return commands;
}

bool isNamed(const std::string& command, const Words& words) {
    return std::find(words.begin(), words.end(), command) != words.end();
}
