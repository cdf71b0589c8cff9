// The words of a command line, before anything is known of options.
#include "command_words.h"

#include "failure.h"
#include "numbers.h"

namespace {

using Words = std::vector<std::string>;

// --rescale may have a number behind it, or none: it gets one.
std::string withPercentage(const char* next, bool& hasNumber) {
    hasNumber = next != nullptr && numberIn(next).has_value();
    return std::string("--rescale=") + (hasNumber ? next : "100");
}

void requireWords(const std::vector<Words>& commands) {
    if (commands.size() == 1) return;
    for (const Words& command : commands) {
        if (command.empty()) throw BadArgument("then: stands between two filters");
    }
}

}  // namespace

std::vector<Words> commandsOf(int argc, char** argv) {
    std::vector<Words> commands(1);
    bool areNames = false;  // what follows "--" is neither option nor command
    for (int at = 1; at < argc; ++at) {
        const std::string word = argv[at];
        areNames = areNames || word == "--";
        bool hasNumber = false;
        if (!areNames && word == "then") {
            commands.emplace_back();
        } else if (!areNames && word == "--rescale") {
            commands.back().push_back(
                withPercentage(at + 1 < argc ? argv[at + 1] : nullptr, hasNumber));
        } else {
            commands.back().push_back(word);
        }
        at += hasNumber ? 1 : 0;
    }
    requireWords(commands);
    return commands;
}
