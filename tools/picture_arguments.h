// The pictures on a command line.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "call_files.h"
#include "parser.h"
#include "picture_file.h"

/// One picture: where it comes from and where its result goes.
struct PictureFiles {
    std::string input;
    std::string output;
    long maxPixels = ReadOptions::kMaxPixels;  // that the input may have
};

/// `input output`, or any number of inputs with --out-dir, each result under its input's name, with
/// the ending .png in place of one that is read only.
struct PictureArguments {
    std::vector<std::string> names;
    std::optional<std::string> outDir;
    long jobs = 0;
    long maxPixels = ReadOptions::kMaxPixels;
    Existing existing;

    /// The pictures in the order of the command line. Throws BadArgument for names that are missing
    /// or too many, for two results of one name, and for results of standard input in a folder.
    std::vector<PictureFiles> files() const;
};

/// Adds the names, --out-dir, --jobs, --max-pixels, --force and --skip-existing. Returns --out-dir,
/// for what does not go with it.
CLI::Option* addPictures(CLI::App& command, PictureArguments& pictures, const char* outputHelp);
