// The work that a command line asks for.
#pragma once

#include <functional>

#include "failure.h"

/// Does the work; it returns or throws.
using Work = std::function<ExitCode()>;
