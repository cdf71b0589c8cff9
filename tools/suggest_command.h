// Filters proposed from pictures of a good surface.
#pragma once

#include "parser.h"
#include "work.h"

/// Adds the options of suggest, which sets `work` when it is chosen.
void describeSuggest(CLI::App& command, Work& work);
