// Help texts on narrow terminals.
#include "wrapped_text.h"

#include <sstream>

namespace {

constexpr std::size_t kDescriptions = 30;

// Where a line is broken: behind the indent, so that there is something before it.
std::size_t breakOf(const std::string& line, std::size_t indent, std::size_t columns) {
    const std::size_t space = line.rfind(' ', columns);
    return space == std::string::npos || space <= indent ? line.find(' ', columns) : space;
}

std::string wrappedLine(std::string line, std::size_t columns) {
    const std::size_t indent = line.starts_with("  ") ? kDescriptions : 0;
    std::string result;
    while (line.size() > columns) {
        const std::size_t end = breakOf(line, indent, columns);
        if (end == std::string::npos) break;
        result += line.substr(0, end) + '\n';
        line = std::string(indent, ' ') + line.substr(end + 1);
    }
    return result + line + '\n';
}

}  // namespace

std::string wrapped(const std::string& text, std::size_t columns) {
    std::istringstream lines(text);
    std::string result;
    for (std::string line; std::getline(lines, line);) result += wrappedLine(line, columns);
    return result;
}
