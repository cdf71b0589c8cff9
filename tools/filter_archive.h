// Filters in archive files.
#pragma once

#include <suggest/filter_chain.h>

#include <string>

class OutputFile;

/// Writes each filter by pointer, under its class name, so that reading needs no class.
void saveFilters(OutputFile& file, mvFilterList filters);

/// Reads all filters of an archive, of any class. Throws a Failure for a file that cannot be read,
/// holds none, or holds anything besides.
mvFilterChain loadFilters(const std::string& path);
