// Files that are read.
#pragma once

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <string>

#include "failure.h"
#include "standard_names.h"

/// Opens a file of bytes, or standard input. Throws a Failure when there is none to be read.
inline std::ifstream openInput(const std::string& name) {
    const std::string path = isStandard(name) ? "/dev/stdin" : name;
    std::ifstream file(path, std::ios::binary);
    if (!file) throw Failure(inputName(name) + ": " + systemText(errno));
    if (std::filesystem::is_directory(path)) {
        throw Failure(inputName(name) + ": " + systemText(EISDIR));
    }
    return file;
}
