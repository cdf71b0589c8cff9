// Files that are read.
#pragma once

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include "failure.h"
#include "standard_names.h"
#include "system.h"

/// A file of bytes, or standard input.
class InputFile : public std::istream {
  public:
    /// Throws a Failure when there is none to be read.
    explicit InputFile(const std::string& name) : std::istream(nullptr) {
        if (isStandard(name) && !kStandardInput) {
            rdbuf(std::cin.rdbuf());
            return;
        }
        const std::filesystem::path path = pathOf(isStandard(name) ? kStandardInput : name);
        errno = 0;
        if (!file_.open(path, std::ios::in | std::ios::binary)) fail(name, errno);
        if (std::filesystem::is_directory(path)) fail(name, EISDIR);
        rdbuf(&file_);
    }

  private:
    [[noreturn]] static void fail(const std::string& name, int error) {
        throw Failure(inputName(name) + ": " + systemText(error));
    }

    std::filebuf file_;
};
