// The commands that filter a picture.
#pragma once

#include <CLI/CLI.hpp>

#include "work.h"

/// Adds bandpass, bandreject, gabor, gaborreject, convolve and apply; the one that is chosen sets
/// `work`.
void addFilterCommands(CLI::App& app, Work& work);
