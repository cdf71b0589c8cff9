// Filters in archive files.
#pragma once

#include <filt/freqfilt.h>

#include <memory>
#include <string>

class OutputFile;

/// Writes the filter by pointer, under its class name, so that reading needs no class.
void saveFilter(OutputFile& file, const mvFrequencyFilter& filter);

/// Reads a filter of any class. Throws a Failure for a file that cannot be read or holds none.
std::unique_ptr<mvFrequencyFilter> loadFilter(const std::string& path);
