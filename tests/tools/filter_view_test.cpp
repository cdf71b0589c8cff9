// The response of a filter as a picture.
#include "support/png_file.h"
#include "support/program.h"

namespace {

class View : public ProgramTest {
  protected:
    void SetUp() override { writePng(path("in.png"), noisePng(64, 32, 8)); }

    PngFile of(Arguments command, const Arguments& options = {}) {
        command.insert(command.end(), {"--border", "zero", "--rescale", "--save", "filter.mva",
                                       "in.png", "out.png"});
        succeed(command);
        Arguments view{"view", "filter.mva", "response.png"};
        view.insert(view.end(), options.begin(), options.end());
        succeed(view);
        return readPng(path("response.png"));
    }
};

// The ring of 0.25 cycles per pixel: 16 of 64 columns and 8 of 32 rows from the middle.
TEST_F(View, DrawsARingAroundTheMiddle) {
    const PngFile ring = of({"bandpass", "--frequency", "0.25", "--sigma", "0.01"});
    EXPECT_EQ(ring.width, 64);
    EXPECT_EQ(ring.height, 32);
    EXPECT_EQ(ring.depth, 8);
    for (const auto& [x, y] : {std::pair(48l, 16l), {16l, 16l}, {32l, 24l}, {32l, 8l}}) {
        EXPECT_EQ(ring.at(x, y), 255u) << x << ", " << y;
    }
    EXPECT_EQ(ring.at(32, 16), 0u);
    EXPECT_EQ(ring.at(0, 0), 0u);
}

TEST_F(View, DrawsWhatARejectFilterClearsInBlack) {
    const PngFile ring =
        of({"bandreject", "--frequency", "0.25", "--sigma", "0.01", "--plateau", "0.02"});
    EXPECT_EQ(ring.at(48, 16), 0u);
    EXPECT_EQ(ring.at(32, 16), 255u);
    EXPECT_EQ(ring.at(0, 0), 255u);
}

// 90 degrees point down the rows; there is no lobe on the other side.
TEST_F(View, DrawsALobeWhereItLies) {
    const PngFile lobe = of({"gabor", "--frequency", "0.25", "--angle", "90", "--sigma", "0.02"});
    EXPECT_EQ(lobe.at(32, 24), 255u);
    EXPECT_EQ(lobe.at(32, 8), 0u);
    EXPECT_EQ(lobe.at(48, 16), 0u);
}

TEST_F(View, ShowsTheSquareThatIsClearedAroundDC) {
    const PngFile lowPass =
        of({"bandpass", "--frequency", "0", "--sigma", "0.2", "--dc-radius", "2"});
    for (long y = 15; y <= 17; ++y) {
        for (long x = 31; x <= 33; ++x) EXPECT_EQ(lowPass.at(x, y), 0u) << x << ", " << y;
    }
    EXPECT_GT(lowPass.at(34, 16), 200u);
}

// A kernel of one pel passes everything, whatever the size of its gains.
TEST_F(View, IsWhiteWhereTheGainIsLargest) {
    writePng(path("one.png"), greyPng(1, 1, 8, [](long, long) { return 7; }));
    const PngFile flat = of({"convolve", "--kernel", "one.png"});
    EXPECT_EQ(flat.samples, std::vector<unsigned>(64 * 32, 255));
}

TEST_F(View, TakesAxes) {
    const PngFile plot = of({"bandpass", "--frequency", "0.25", "--sigma", "0.01"}, {"--axes"});
    EXPECT_GT(plot.width, 256);
    EXPECT_GT(plot.height, 128);
}

TEST_F(View, ReportsWhatIsNoFilter) {
    write("text.mva", "This is no archive.");
    for (const char* name : {"text.mva", "missing.mva", "."}) {
        const Outcome outcome = run({"view", name, "out.png"});
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_EQ(outcome.err.rfind(std::string("mvfreq: ") + name + ": ", 0), 0u) << outcome.err;
    }
    EXPECT_EQ(files(), (std::vector<std::string>{"in.png", "text.mva"}));
}

}  // namespace
