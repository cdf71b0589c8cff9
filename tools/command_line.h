// The command line of the program.
#pragma once

#include <functional>

#include "failure.h"

/// The work that a command line asks for; it returns or throws.
using Work = std::function<ExitCode()>;

/// Reads the command line and returns its work, not yet begun. Help and version are printed at once
/// and leave nothing to do. Throws BadArgument.
Work readCommandLine(int argc, char** argv);
