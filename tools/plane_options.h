// The options that say in which plane a picture is filtered.
#pragma once

#include "parser.h"
#include "plane_choice.h"

/// Adds --border and --margin, and --tile where the filter is still to be built.
void addPlaneOptions(CLI::App& command, PlaneOptions& options, bool canChoose);
