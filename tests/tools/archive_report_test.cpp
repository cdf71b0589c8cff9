// What `info` says of archives.
#include <filt/freqfilt.h>

#include "support/archive_bytes.h"
#include "support/program.h"

namespace {

using support::storedByPointer;

class ArchiveReport : public ProgramTest {};

TEST_F(ArchiveReport, ListsErrors) {
    mvFrequencyDefs::InvalidSize size("Size must be a power of 2.");
    mvFrequencyDefs::UnboundWindow window;
    write("errors.mva", storedByPointer({&size, &window}));
    EXPECT_EQ(succeed({"info", "errors.mva"}).out,
              "mvFrequencyDefs::InvalidSize\n"
              "  number: 0x10006302\n"
              "  message: Size must be a power of 2.\n"
              "mvFrequencyDefs::UnboundWindow\n"
              "  number: 0x10006303\n"
              "  message: (none)\n");
}

TEST_F(ArchiveReport, ListsFiltersWithoutResponse) {
    mvFrequencyFilterGabor gabor;
    mvFrequencyFilterImage image;
    write("empty.mva", storedByPointer({&gabor, &image, nullptr}));
    EXPECT_EQ(succeed({"info", "empty.mva"}).out,
              "mvFrequencyFilterGabor\n  without response\n"
              "mvFrequencyFilterImage\n  without response\n"
              "null\n");
}

}  // namespace
