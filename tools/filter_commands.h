// The commands that filter a picture.
#pragma once

#include <CLI/CLI.hpp>

#include "border.h"
#include "command_line.h"

inline constexpr char inputHelp[] = "PNG of 8 or 16 bits; colour becomes grey, alpha is ignored";

/// Adds the --border option.
void addBorder(CLI::App& command, Border& border);

/// Adds bandpass, bandreject, gabor, gaborreject, convolve and apply; the one that is chosen sets
/// `work`.
void addFilterCommands(CLI::App& app, Work& work);
