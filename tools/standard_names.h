// The name of standard input and standard output.
#pragma once

#include <string>

inline bool isStandard(const std::string& path) {
    return path == "-";
}

/// An input's name in messages.
inline std::string inputName(const std::string& path) {
    return isStandard(path) ? "standard input" : path;
}

/// An output's name in messages.
inline std::string outputName(const std::string& path) {
    return isStandard(path) ? "standard output" : path;
}
