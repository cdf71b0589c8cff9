// Filters in archive files.
#include "filter_archive.h"

#include <base/archive.h>

#include <sstream>

#include "failure.h"
#include "input_file.h"
#include "output_file.h"

void saveFilter(OutputFile& file, const mvFrequencyFilter& filter) {
    // An archive takes what it could also load: a copy that may change.
    const std::unique_ptr<mvFrequencyFilter> copy(filter.clone());
    std::ostringstream bytes;
    mvArchive archive(bytes);
    mvPersistent* object = copy.get();
    archive || object;
    file.write(bytes.str());
}

std::unique_ptr<mvFrequencyFilter> loadFilter(const std::string& path) {
    std::ifstream file = openInput(path);
    std::unique_ptr<mvFrequencyFilter> filter;
    try {
        mvArchive archive(file);
        filter = mfLoad<mvFrequencyFilter>(archive);
    } catch (const mvException& error) {
        throw Failure(inputName(path) + ": holds no filter: " + textOf(error));
    }
    if (!filter) throw Failure(inputName(path) + ": holds no filter");
    return filter;
}
