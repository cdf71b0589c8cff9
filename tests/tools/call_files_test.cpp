// What may be replaced, and names that are none.
#include <filt/freqfilt.h>

#include <cstdlib>
#include <filesystem>

#include "support/archive_bytes.h"
#include "support/png_file.h"
#include "support/program.h"

namespace {

namespace fs = std::filesystem;

const Arguments kRing{"bandreject", "--frequency", "0.3", "--sigma", "0.05"};

class CallFiles : public ProgramTest {
  protected:
    void SetUp() override {
        for (const char* name : {"a.png", "b.png"}) writePng(path(name), noisePng(20, 20, 8));
    }

    static Arguments ring(const Arguments& more) {
        Arguments all = kRing;
        all.insert(all.end(), more.begin(), more.end());
        return all;
    }

    // Expects a refusal, no file changed, and success with --force.
    void expectForceNeeded(Arguments arguments, const std::string& text) {
        const std::vector<std::string> names = files();
        std::vector<std::string> before;
        for (const std::string& name : names) before.push_back(contents(name));
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.exitCode, 2);
        EXPECT_EQ(outcome.err, "mvfreq: " + text + "\n");
        EXPECT_EQ(files(), names);
        for (std::size_t i = 0; i < names.size(); ++i) EXPECT_EQ(contents(names[i]), before[i]);
        arguments.push_back("--force");
        EXPECT_EQ(run(arguments).exitCode, 0);
    }

    void expectRefused(const Arguments& arguments, const std::string& text) {
        const std::vector<std::string> before = files();
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.exitCode, 2);
        EXPECT_EQ(outcome.err.rfind("mvfreq: " + text, 0), 0u) << outcome.err;
        EXPECT_EQ(files(), before);
    }

    // The exit code of a line in which `mvfreq` is the program; the rest goes to files.
    int shell(const std::string& line) const {
        const std::string command =
            "cd '" + path("") + "' && mvfreq() { '" + MVFREQ_PROGRAM + "' \"$@\"; }\n" + line;
        return WEXITSTATUS(std::system(command.c_str()));
    }
};

// mvfreq bandpass ... *.png, with --out-dir forgotten.
TEST_F(CallFiles, ASecondPictureIsNoOutput) {
    expectForceNeeded(ring({"a.png", "b.png"}),
                      "b.png: exists, and is no picture that mvfreq wrote (--force replaces it; "
                      "several inputs need --out-dir)");
}

TEST_F(CallFiles, WhatTheProgramWroteItWritesAgain) {
    succeed(ring({"a.png", "out.png", "--save", "filter.mva", "--angle-image", "angle.png"}));
    succeed(ring({"b.png", "out.png", "--save", "filter.mva", "--angle-image", "angle.png"}));
    succeed({"spectrum", "a.png", "out.png"});
    succeed({"view", "filter.mva", "out.png"});
}

TEST_F(CallFiles, AnInputIsNoOutput) {
    const std::string text = ": is an input of this call (--force replaces it)";
    succeed(ring({"a.png", "own.png", "--save", "filter.mva"}));
    fs::create_hard_link(path("own.png"), path("same.png"));
    fs::create_symlink("own.png", path("link.png"));
    for (const char* name : {"own.png", "./own.png", "same.png", "link.png"}) {
        expectForceNeeded(ring({"own.png", name}), name + text);
        fs::remove(path("same.png"));
        fs::create_hard_link(path("own.png"), path("same.png"));
    }
    expectForceNeeded({"spectrum", "own.png", "own.png"}, "own.png" + text);
    expectForceNeeded(ring({"a.png", "out.png", "--angle-image", "a.png"}), "a.png" + text);
    expectForceNeeded({"convolve", "--kernel", "b.png", "a.png", "b.png"}, "b.png" + text);
    succeed(ring({"a.png", "out.png", "--save", "filter.mva"}));
    expectForceNeeded({"apply", "filter.mva", "b.png", "filter.mva"}, "filter.mva" + text);
}

TEST_F(CallFiles, AnArchiveIsNoOutputOfItsView) {
    succeed(ring({"a.png", "out.png", "--save", "filter.mva"}));
    expectForceNeeded({"view", "filter.mva", "filter.mva"},
                      "filter.mva: is an input of this call (--force replaces it)");
}

TEST_F(CallFiles, WhatIsOfAnotherKindIsNoOutput) {
    succeed(ring({"a.png", "out", "--save", "filter"}));
    write("text", "a letter");
    const std::string noPicture =
        ": exists, and is no picture that mvfreq wrote (--force replaces it; several inputs need "
        "--out-dir)";
    expectForceNeeded(ring({"a.png", "filter"}), "filter" + noPicture);
    expectForceNeeded({"spectrum", "a.png", "text"}, "text" + noPicture);
    write("text", "a letter");
    expectForceNeeded(ring({"a.png", "new.png", "--save", "out"}),
                      "out: exists, and is no filter (--force replaces it)");
    expectForceNeeded(ring({"a.png", "new.png", "--save", "text"}),
                      "text: exists, and is no filter (--force replaces it)");
    mvFrequencyDefs::BadCoord error;
    write("errors.mva", support::storedByPointer({&error}));
    expectForceNeeded(ring({"a.png", "new.png", "--save", "errors.mva"}),
                      "errors.mva: exists, and is no filter (--force replaces it)");
}

TEST_F(CallFiles, AnEmptyFileMayGo) {
    write("out.png", "");
    write("filter.mva", "");
    succeed(ring({"a.png", "out.png", "--save", "filter.mva"}));
}

TEST_F(CallFiles, AnExistingOutputIsSkippedWhenAskedFor) {
    const std::string before = contents("b.png");
    succeed(ring({"--skip-existing", "a.png", "b.png"}));
    EXPECT_EQ(contents("b.png"), before);
    succeed(ring({"--skip-existing", "a.png", "new.png"}));
    EXPECT_EQ(readPng(path("new.png")).width, 20);
}

TEST_F(CallFiles, AnEmptyNameIsRefused) {
    expectRefused(ring({"a.png", ""}), "output: the name of a file is missing");
    expectRefused(ring({"", "out.png"}), "input: the name of a file is missing");
    expectRefused({"view", "", "out.png"}, "input: the name of a file is missing");
    expectRefused({"view", "a.png", ""}, "output: the name of a file is missing");
    expectRefused({"info", ""}, "input: the name of a file is missing");
    expectRefused({"apply", "", "a.png", "out.png"}, "input: the name of a file is missing");
    expectRefused({"convolve", "--kernel", "", "a.png", "out.png"},
                  "input: the name of a file is missing");
    for (const char* option : {"--save", "--angle-image", "--quadrant-image"}) {
        expectRefused(ring({"a.png", "out.png", option, ""}),
                      std::string(option) + ": the name of a file is missing");
    }
}

TEST_F(CallFiles, AFolderIsNoOutput) {
    fs::create_directory(path("results"));
    for (const char* name : {"results", "results/", "."}) {
        expectRefused(ring({"a.png", name}),
                      std::string(name) + ": is a folder (--out-dir writes pictures into one)");
    }
}

TEST_F(CallFiles, ANameOfAKindThatIsNotWrittenIsRefused) {
    expectRefused(ring({"a.png", "x.jpg"}),
                  "x.jpg: pictures are written as PNG, TIFF, PGM and PPM");
    expectRefused({"spectrum", "a.png", "X.GIF"}, "X.GIF: pictures are written as PNG");
    expectRefused(ring({"a.png", "out.png", "--angle-image", "x.bmp"}), "x.bmp: pictures are");
    expectRefused(ring({"a.png", "out.png", "--save", "filter.png"}),
                  "filter.png: a filter is written as an archive, not as a picture");
    fs::copy(path("a.png"), path("c.jpg"));
    succeed(ring({"c.jpg", "--out-dir", "results"}));
}

TEST_F(CallFiles, StandardStreamsHaveAName) {
    succeed(ring({"a.png", "out.png", "--save", "filter.mva"}));
    const std::string ring = "mvfreq bandreject --frequency 0.3 --sigma 0.05 ";
    EXPECT_EQ(shell(ring + "- - <a.png >piped.png"), 0);
    EXPECT_EQ(contents("piped.png"), contents("out.png"));
    EXPECT_EQ(shell("cat a.png | " + ring + "- second.png"), 0);
    EXPECT_EQ(contents("second.png"), contents("out.png"));
    EXPECT_EQ(shell("cat filter.mva | mvfreq apply - a.png - | cat >third.png"), 0);
    EXPECT_EQ(contents("third.png"), contents("out.png"));
    EXPECT_EQ(shell("mvfreq info - <filter.mva | grep -q BandReject"), 0);
    EXPECT_EQ(shell(ring + "a.png out.png --save - >saved.mva"), 0);
    EXPECT_EQ(contents("saved.mva"), contents("filter.mva"));
    EXPECT_EQ(shell("mvfreq view - - <filter.mva >view.png"), 0);
    EXPECT_EQ(readPng(path("view.png")).width, 64);
}

TEST_F(CallFiles, StandardStreamsAreUsedOnce) {
    expectRefused({"convolve", "--kernel", "-", "-", "out.png"},
                  "-: standard input can be read only once");
    expectRefused(ring({"a.png", "-", "--angle-image", "-"}),
                  "standard output: two outputs have this name");
}

TEST_F(CallFiles, AFailingStandardStreamIsReported) {
    const std::string ring = "mvfreq bandreject --frequency 0.3 --sigma 0.05 ";
    EXPECT_EQ(shell(ring + "- - </dev/null >out.png 2>err"), 1);
    EXPECT_EQ(contents("err").rfind("mvfreq: standard input: ", 0), 0u) << contents("err");
    EXPECT_EQ(contents("out.png"), "");
    if (!fs::exists("/dev/full")) GTEST_SKIP() << "no /dev/full here";
    EXPECT_EQ(shell(ring + "a.png - --save filter.mva >/dev/full 2>err"), 1);
    EXPECT_EQ(contents("err"), "mvfreq: standard output: No space left on device\n");
    EXPECT_FALSE(fs::exists(path("filter.mva")));
}

TEST_F(CallFiles, ControlCharactersOfNamesAreSpeltOut) {
    const Outcome outcome = run(ring({"a\x1b]0;b\x07\xc2\x9b\x7f\n\xc3\xa9.png", "out.png"}));
    EXPECT_EQ(outcome.err,
              "mvfreq: a\\x1b]0;b\\x07\\xc2\\x9b\\x7f\\x0a\xc3\xa9.png: No such file or "
              "directory\n");
    const Outcome batch = run(ring({"\x1b[2J.png", "--out-dir", "results"}));
    EXPECT_EQ(batch.err, "mvfreq: \\x1b[2J.png: No such file or directory\n");
}

TEST_F(CallFiles, InfoDescribesPictures) {
    EXPECT_EQ(succeed({"info", "a.png"}).out,
              "PNG picture\n  size: 20 x 20\n  depth: 8 bits, grey\n");
    succeed(ring({"a.png", "out.png"}));
    EXPECT_EQ(succeed({"info", "out.png"}).out,
              "PNG picture\n  size: 20 x 20\n  depth: 8 bits, grey\n  written by: mvfreq\n");
    write("broken.png", contents("a.png").substr(0, 20));
    EXPECT_EQ(run({"info", "broken.png"}).err, "mvfreq: broken.png: The file ends early\n");
}

}  // namespace
