// The options that all filter commands have.
#pragma once

#include <vector>

#include "call_files.h"
#include "filter_picture.h"
#include "parser.h"

/// Adds what is written, how its grey levels are spread, and in which plane. What is written
/// besides the picture is a single file, so none goes with --out-dir; filters from archives have
/// their plane and are saved.
void addFilterOptions(CLI::App& command, FilterOptions& options, CLI::Option* outDir,
                      bool buildsFilter);

/// The files that these options name.
std::vector<Output> otherOutputs(const FilterOptions& options);
