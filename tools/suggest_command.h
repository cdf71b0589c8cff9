// Filters proposed from pictures of a good surface.
#pragma once

#include "parser.h"
#include "work.h"

/// Adds suggest, which sets `work` when it is chosen.
void addSuggest(CLI::App& app, Work& work);
