// Files that are read, and the library's errors about them as text.
#pragma once

#include <base/exception.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "failure.h"

/// Opens a file of bytes. Throws a Failure when there is none to be read.
inline std::ifstream openInput(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw Failure(path + ": " + std::strerror(errno));
    if (std::filesystem::is_directory(path)) throw Failure(path + ": " + std::strerror(EISDIR));
    return file;
}

/// What the library's exceptions write of themselves.
inline std::string textOf(const mvException& error) {
    std::ostringstream text;
    text << error;
    return text.str();
}
