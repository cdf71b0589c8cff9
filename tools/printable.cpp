// Texts on a terminal.
#include "printable.h"

#include <cerrno>
#include <cstdio>

#include "failure.h"

namespace {

// What begins at `at`: a control character of ASCII, one of the second set in UTF-8, or neither.
std::size_t controlLength(const std::string& text, std::size_t at) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    if (byte(at) < 0x20 || byte(at) == 0x7f) return 1;
    const bool isSecondSet =
        byte(at) == 0xc2 && at + 1 < text.size() && byte(at + 1) >= 0x80 && byte(at + 1) < 0xa0;
    return isSecondSet ? 2 : 0;
}

}  // namespace

std::string printable(const std::string& text) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = at + controlLength(text, at);
        if (at == end) result += text[at++];
        for (; at < end; ++at) {
            char code[5];
            std::snprintf(code, sizeof code, "\\x%02x", static_cast<unsigned char>(text[at]));
            result += code;
        }
    }
    return result;
}

void printOut(const std::string& text) {
    errno = 0;
    const bool stored = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    if (stored && std::fflush(stdout) == 0) return;
    throw Failure("standard output: " + systemText(errno));
}
