// Filters saved, reported, and applied again.
#include <filt/freqfilt.h>

#include "support/archive_bytes.h"
#include "support/png_file.h"
#include "support/program.h"

namespace {

using support::storedByPointer;

struct Saved {
    const char* name;
    Arguments command;
    std::vector<std::string> report;
};

class SavedFilter : public ProgramTest, public ::testing::WithParamInterface<Saved> {
  protected:
    void SetUp() override {
        writePng(path("in.png"), noisePng(50, 20, 8));
        writePng(path("kernel.png"), noisePng(5, 5, 8));
        Arguments arguments = GetParam().command;
        arguments.insert(arguments.end(), {"--save", "filter.mva", "in.png", "direct.png"});
        succeed(arguments);
    }
};

TEST_P(SavedFilter, AppliesAsItDidWhenItWasMade) {
    succeed({"apply", "filter.mva", "in.png", "applied.png"});
    EXPECT_EQ(contents("applied.png"), contents("direct.png"));
}

TEST_P(SavedFilter, TellsItsParameters) {
    const std::string report = succeed({"info", "filter.mva"}).out;
    for (const std::string& line : GetParam().report) {
        EXPECT_NE(report.find(line), std::string::npos) << line << " in " << report;
    }
}

TEST_P(SavedFilter, IsRefusedWhenItEndsEarly) {
    const std::string whole = contents("filter.mva");
    for (const std::size_t length : {0ul, 1ul, 20ul, whole.size() / 2, whole.size() - 1}) {
        write("short.mva", whole.substr(0, length));
        for (const Arguments& arguments : {Arguments{"info", "short.mva"},
                                           Arguments{"apply", "short.mva", "in.png", "out.png"}}) {
            const Outcome outcome = run(arguments);
            EXPECT_EQ(outcome.exitCode, 1);
            EXPECT_EQ(outcome.err.rfind("mvfreq: short.mva: ", 0), 0u) << outcome.err;
        }
    }
}

const Saved ringFilter(const char* name, const char* report, const char* radius) {
    return {
        name,
        {name, "--frequency", "0.2", "--sigma", "0.05", "--plateau", "0.03", "--dc-radius", "2"},
        {report, "size: 128 x 64", "frequency: 0.2 cycles per pixel",
         "sigma: 0.05 cycles per pixel", "plateau: 0.03 cycles per pixel", radius}};
}

const Saved lobeFilter(const char* name, const char* report, const char* radius) {
    return {name,
            {name, "--frequency", "0.2", "--angle", "30", "--sigma", "0.05", "--sigma-across",
             "0.07", "--dc-radius", "3"},
            {report, "size: 128 x 64", "frequency: 0.2 cycles per pixel", "angle: 30 degrees",
             "sigma: 0.05 along, 0.07 across", "plateau: 0 along, 0 across", radius}};
}

INSTANTIATE_TEST_SUITE_P(
    Commands, SavedFilter,
    ::testing::Values(
        ringFilter("bandpass", "mvFrequencyFilterBandPass\n", "DC removal radius: 2"),
        ringFilter("bandreject", "mvFrequencyFilterBandReject\n", "DC protection radius: 2"),
        lobeFilter("gabor", "mvFrequencyFilterGabor\n", "DC removal radius: 3"),
        lobeFilter("gaborreject", "mvFrequencyFilterGaborReject\n", "DC protection radius: 3"),
        Saved{"convolve",
              {"convolve", "--kernel", "kernel.png"},
              {"mvFrequencyFilterImage\n", "size: 64 x 32"}}),
    [](const auto& test) { return std::string(test.param.name); });

class OtherArchives : public ProgramTest {};

TEST_F(OtherArchives, AreNotApplied) {
    writePng(path("in.png"), noisePng(8, 8, 8));
    mvFrequencyDefs::BadCoord error;
    mvFrequencyFilterBandPass empty;
    write("error.mva", storedByPointer({&error}));
    write("empty.mva", storedByPointer({&empty}));
    write("null.mva", storedByPointer({nullptr}));
    write("text.mva", "This is no archive.");
    for (const char* name :
         {"error.mva", "empty.mva", "null.mva", "text.mva", "missing.mva", "."}) {
        const Outcome outcome = run({"apply", name, "in.png", "out.png"});
        EXPECT_EQ(outcome.exitCode, 1) << name;
        EXPECT_EQ(outcome.err.rfind("mvfreq: ", 0), 0u) << outcome.err;
    }
    EXPECT_EQ(run({"apply", "null.mva", "in.png", "out.png"}).err,
              "mvfreq: null.mva: holds no filter\n");
    EXPECT_EQ(run({"apply", "in.png", "text.mva", "out.png"})
                  .err.rfind("mvfreq: in.png: holds no filter: ", 0),
              0u);
}

}  // namespace
