// Words as a shell reads them.
#include "shell_words.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr char kPlain[] =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_./+,:=@%";

std::string quoted(const std::string& word) {
    if (!word.empty() && word.find_first_not_of(kPlain) == std::string::npos) return word;
    std::string text = "'";
    for (const char letter : word) {
        if (letter == '\'') text += "'\\'";  // ends the quotation for a moment
        text += letter;
    }
    return text + "'";
}

std::string jsonText(const std::string& word) {
    std::string text = "\"";
    for (const char letter : word) {
        if (letter == '"' || letter == '\\') text += '\\';
        text += letter;
    }
    return text + "\"";
}

template <class Each>
std::string joined(const std::vector<std::string>& words, const char* between, Each each) {
    std::string line;
    for (const std::string& word : words) {
        if (!line.empty()) line += between;
        line += each(word);
    }
    return line;
}

}  // namespace

std::string shellLine(const std::vector<std::string>& words) {
    return joined(words, " ", quoted);
}

std::string jsonList(const std::vector<std::string>& words) {
    std::string text = "[";
    text += joined(words, ", ", jsonText);
    return text += ']';
}
