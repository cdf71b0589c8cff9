// The strongest waves of a picture.
#pragma once

#include "parser.h"
#include "work.h"

/// Adds peaks, which sets `work` when it is chosen.
void addPeaks(CLI::App& app, Work& work);
