// Files that are read.
#pragma once

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <string>

#include "failure.h"

/// Opens a file of bytes. Throws a Failure when there is none to be read.
inline std::ifstream openInput(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw Failure(path + ": " + systemText(errno));
    if (std::filesystem::is_directory(path)) throw Failure(path + ": " + systemText(EISDIR));
    return file;
}
