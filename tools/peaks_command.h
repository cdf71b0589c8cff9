// The strongest waves of a picture.
#pragma once

#include "parser.h"
#include "work.h"

/// Adds the options of peaks, which sets `work` when it is chosen.
void describePeaks(CLI::App& command, Work& work);
