// Loads the filter from the file that is named, without naming its class.
//
// Nothing here refers to a filter's code: the classes are found although a static link takes from
// the library only what it must.
#include <base/archive.h>
#include <base/registry.h>
#include <filt/freqfilt/filter.h>

#include <fstream>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace {

const std::vector<std::string> kClasses = {"mvFrequencyDefs::InvalidArgument",
                                           "mvFrequencyDefs::Uninitialized",
                                           "mvFrequencyDefs::InvalidSize",
                                           "mvFrequencyDefs::UnboundWindow",
                                           "mvFrequencyDefs::InvalidBuffer",
                                           "mvFrequencyDefs::BadCoord",
                                           "mvFrequencyFilterGabor",
                                           "mvFrequencyFilterGaborReject",
                                           "mvFrequencyFilterBandPass",
                                           "mvFrequencyFilterBandReject",
                                           "mvFrequencyFilterImage"};

}  // namespace

int main(int argc, char** argv) try {
    if (argc != 2) return 2;
    std::ifstream file(argv[1], std::ios::binary);
    mvArchive archive(file);
    const std::unique_ptr<mvFrequencyFilter> filter = mfLoad<mvFrequencyFilter>(archive);
    const bool good = filter && filter->isInitialized() && mfRegisteredClasses() == kClasses;
    std::cout << (good ? "restore: good\n" : "restore: WRONG\n");
    return good ? 0 : 1;
} catch (const mvException& error) {
    std::cout << "restore: " << error << '\n';
    return 1;
}
