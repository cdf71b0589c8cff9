// What stands out in a picture, as text.
#include "spot_list.h"

#include <cstdio>

#include "printable.h"
#include "standard_names.h"

namespace {

// Snprintf, for numbers alone.
template <class... Numbers>
std::string formatted(const char* format, Numbers... numbers) {
    char text[320];
    std::snprintf(text, sizeof text, format, numbers...);
    return text;
}

std::string escaped(const std::string& text) {
    std::string result;
    for (const char character : text) {
        const auto code = static_cast<unsigned char>(character);
        if (code < 0x20) {
            result += formatted("\\u%04x", code);
            continue;
        }
        if (character == '"' || character == '\\') result += '\\';
        result += character;
    }
    return result;
}

std::string countText(std::size_t count) {
    if (count == 0) return "nothing stands out";
    return std::to_string(count) + (count == 1 ? " place stands out" : " places stand out");
}

}  // namespace

std::string spotTable(const Findings& findings) {
    std::string text =
        printable(inputName(findings.picture)) + ": " + countText(findings.spots.size()) + "\n";
    if (!findings.spots.empty()) text += "      x      y  width height    pels strength\n";
    for (const Spot& spot : findings.spots) {
        text += formatted("%7ld%7ld%7ld%7ld%8ld%9.1f\n", spot.x, spot.y, spot.width, spot.height,
                          spot.pels, spot.strength);
    }
    return text;
}

std::string spotJson(const Findings& findings) {
    std::string text = "{\"picture\":\"" + escaped(findings.picture) + "\"" +
                       formatted(",\"threshold\":%g,\"found\":[", findings.threshold);
    const char* separator = "";
    for (const Spot& spot : findings.spots) {
        text += separator;
        text += formatted(
            "{\"x\":%ld,\"y\":%ld,\"left\":%ld,\"top\":%ld,\"width\":%ld,\"height\":%ld,"
            "\"pels\":%ld,\"strength\":%.1f}",
            spot.x, spot.y, spot.left, spot.top, spot.width, spot.height, spot.pels, spot.strength);
        separator = ",";
    }
    return text + "]}\n";
}
