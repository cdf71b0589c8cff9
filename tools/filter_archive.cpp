// Filters in archive files.
#include "filter_archive.h"

#include <base/archive.h>

#include <sstream>

#include "failure.h"
#include "input_file.h"
#include "output_file.h"

void saveFilters(OutputFile& file, mvFilterList filters) {
    std::ostringstream bytes;
    mvArchive archive(bytes);
    for (const mvFrequencyFilter* filter : filters) archive.storePointer(filter);
    file.write(bytes.str());
}

mvFilterChain loadFilters(const std::string& path) {
    InputFile file(path);
    mvFilterChain chain;
    try {
        mvArchive archive(file);
        do {
            std::unique_ptr<const mvFrequencyFilter> filter = mfLoad<mvFrequencyFilter>(archive);
            if (!filter) throw Failure(inputName(path) + ": holds no filter");
            chain.add(std::move(filter));
        } while (file.peek() != std::istream::traits_type::eof());
    } catch (const mvException& error) {
        throw Failure(inputName(path) + ": holds no filter: " + textOf(error));
    }
    return chain;
}
