// Filters proposed from pictures of a good surface.
#pragma once

#include <CLI/CLI.hpp>

#include "work.h"

/// Adds suggest, which sets `work` when it is chosen.
void addSuggest(CLI::App& app, Work& work);
