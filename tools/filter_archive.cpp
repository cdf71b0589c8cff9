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
        throw Failure(path + ": holds no filter: " + textOf(error));
    }
    if (!filter) throw Failure(path + ": holds no filter");
    return filter;
}

namespace {

template <class Filter>
bool takeSize(mvFrequencyFilter& filter, mvPair<long>& size) {
    auto* typed = dynamic_cast<Filter*>(&filter);
    if (typed) size = typed->size();
    return typed;
}

}  // namespace

mvPair<long> filterSize(mvFrequencyFilter& filter) {
    mvPair<long> size;
    if (auto* image = dynamic_cast<mvFrequencyFilterImage*>(&filter)) {
        return {image->supportWidth(), image->supportHeight()};
    }
    if (takeSize<mvFrequencyFilterBandPass>(filter, size) ||
        takeSize<mvFrequencyFilterBandReject>(filter, size) ||
        takeSize<mvFrequencyFilterGabor>(filter, size) ||
        takeSize<mvFrequencyFilterGaborReject>(filter, size)) {
        return size;
    }
    throw Failure("a filter of an unknown class");
}
