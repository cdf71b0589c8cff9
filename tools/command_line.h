// The command line of the program.
#pragma once

#include <string>
#include <vector>

#include "work.h"

/// Reads the command line and returns its work, not yet begun. Help and version are printed at once
/// and leave nothing to do. Throws BadArgument.
Work readCommandLine(const std::vector<std::string>& words);
