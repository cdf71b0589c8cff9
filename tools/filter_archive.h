// Filters in archive files.
#pragma once

#include <filt/freqfilt.h>

#include <string>

#include "filter_chain.h"

class OutputFile;

/// Writes each filter by pointer, under its class name, so that reading needs no class.
void saveFilters(OutputFile& file, FilterList filters);

/// Reads all filters of an archive, of any class. Throws a Failure for a file that cannot be read,
/// holds none, or holds anything besides.
FilterChain loadFilters(const std::string& path);
