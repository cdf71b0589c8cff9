// The options for what stands out in a result.
#pragma once

#include <optional>
#include <string>

#include "parser.h"

struct FindOptions {
    bool list = false;
    bool json = false;
    std::optional<double> threshold;
    std::optional<std::string> overlay;

    bool isListed() const { return list || json; }
    bool isAsked() const { return isListed() || overlay; }
};

/// Adds --list, --json, --threshold and --overlay, which is a single file.
void addFindOptions(CLI::App& command, FindOptions& options, CLI::Option* outDir);

/// Throws BadArgument for a threshold of nothing.
void requireSense(const FindOptions& options);
