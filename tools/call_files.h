// The files of one call, and what it may replace.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "parser.h"

/// What is written to a file.
enum class Role { picture, archive };

struct Output {
    std::string path;
    Role role;
    bool isGiven = true;  // by the caller, and not taken from an input's name
};

/// What becomes of outputs that exist already.
struct Existing {
    bool force = false;
    bool skip = false;
};

/// Adds --force.
CLI::Option* addForce(CLI::App& command, Existing& existing);

/// Adds an option that names an output. An empty name, as of a variable that is not set, is
/// refused.
CLI::Option* addOutput(CLI::App& command, const char* name, std::optional<std::string>& path,
                       const char* help);

/// Throws BadArgument for an output without a name, one that is a folder, a picture whose name says
/// that it is no PNG, and an archive whose name says that it is a picture. Without `force` also for
/// one of the inputs, and for a file that exists and is not what this program writes there: a
/// picture that bears its name, an archive of a filter. Empty files may go.
void requireFreeOutputs(const std::vector<std::string>& inputs, const std::vector<Output>& outputs,
                        const Existing& existing);

/// Throws BadArgument for an input without a name, and when two of them are standard input.
void requireInputs(const std::vector<std::string>& inputs);
