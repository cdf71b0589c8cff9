// Files that the program writes appear whole or not at all.
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>

#include "support/png_file.h"
#include "support/program.h"

namespace {

namespace fs = std::filesystem;

class OutputFilesTest : public ProgramTest {
  protected:
    void SetUp() override { writePng(path("in.png"), noisePng(20, 20, 8)); }

    Outcome lowPass(Arguments more) const {
        Arguments all{"bandpass", "--frequency", "0", "--sigma", "0.1", "in.png"};
        all.insert(all.end(), more.begin(), more.end());
        return run(all);
    }
};

TEST_F(OutputFilesTest, NothingIsLeftWhenOneOfThemFails) {
    write("old.png", "what was here before");
    const Outcome outcome =
        lowPass({"--force", "old.png", "--angle-image", "angle.png", "--save", "no/filter.mva"});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_NE(outcome.err.find("no/filter.mva: No such file or directory"), std::string::npos)
        << outcome.err;
    EXPECT_EQ(files(), (std::vector<std::string>{"in.png", "old.png"}));
    EXPECT_EQ(contents("old.png"), "what was here before");
}

TEST_F(OutputFilesTest, OneNameForTwoFilesIsABadArgument) {
    const Outcome outcome = lowPass({"out.png", "--angle-image", "./out.png"});
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_EQ(files(), std::vector<std::string>{"in.png"});
}

TEST_F(OutputFilesTest, GoWhereALinkPoints) {
    fs::create_directory(path("store"));
    fs::create_symlink("store/out.png", path("link.png"));
    write("store/out.png", "old");
    EXPECT_EQ(lowPass({"--force", "link.png"}).exitCode, 0);
    EXPECT_TRUE(fs::is_symlink(path("link.png")));
    EXPECT_EQ(readPng(path("store/out.png")).width, 20);
}

TEST_F(OutputFilesTest, KeepTheModeOfWhatTheyReplace) {
    write("out.png", "old");
    fs::permissions(path("out.png"), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(lowPass({"--force", "out.png"}).exitCode, 0);
    EXPECT_EQ(fs::status(path("out.png")).permissions(),
              fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(OutputFilesTest, MayHaveTheLongestNamesThereAre) {
    for (const std::size_t length : {251u, 252u, 253u, 254u, 255u}) {
        const std::string name = std::string(length - 4, 'a') + ".png";
        EXPECT_EQ(lowPass({name}).exitCode, 0) << length;
        EXPECT_EQ(readPng(path(name)).width, 20);
        fs::remove(path(name));
    }
    const std::string name = std::string(252, 'a') + ".png";
    const Outcome outcome = lowPass({name});
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_EQ(outcome.err, "mvfreq: " + name + ": File name too long\n");
    EXPECT_EQ(files(), std::vector<std::string>{"in.png"});
}

TEST_F(OutputFilesTest, NeverReplaceADevice) {
    ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
    const Outcome outcome = lowPass({"pipe"});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_NE(outcome.err.find("pipe: is not a regular file"), std::string::npos) << outcome.err;
    EXPECT_TRUE(fs::is_fifo(path("pipe")));
}

// A limit on the size of files stands for a full disk.
TEST_F(OutputFilesTest, AreNamedWithTheCauseWhenTheyCannotBeWritten) {
    writePng(path("large.png"), noisePng(300, 300, 8));
    const std::string limited = "cd '" + path("") + "' && trap '' XFSZ && ulimit -f 8 && '" +
                                MVFREQ_PROGRAM "' bandreject --frequency 0.3 --sigma 0.01 ";
    EXPECT_EQ(WEXITSTATUS(std::system((limited + "large.png out.png 2>err").c_str())), 1);
    EXPECT_EQ(contents("err"), "mvfreq: out.png: File too large\n");
    const std::string batch = limited + "large.png in.png --jobs 1 --out-dir results 2>err >said";
    EXPECT_EQ(WEXITSTATUS(std::system(batch.c_str())), 1);
    EXPECT_EQ(contents("err"), "mvfreq: results/large.png: File too large\n");
    EXPECT_EQ(contents("said"), "1 of 2 pictures done, 1 failed\n");
    EXPECT_EQ(files(), (std::vector<std::string>{"err", "in.png", "large.png", "results", "said"}));
}

TEST_F(OutputFilesTest, ReportAFullStandardOutput) {
    if (!fs::exists("/dev/full")) GTEST_SKIP() << "no /dev/full here";
    const std::string command = "cd '" + path("") +
                                "' && '" MVFREQ_PROGRAM
                                "' bandpass --frequency 0 "
                                "--sigma 0.1 --save filter.mva in.png out.png && '" MVFREQ_PROGRAM
                                "' info filter.mva >/dev/full 2>err";
    EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 1);
    EXPECT_EQ(contents("err"), "mvfreq: standard output: No space left on device\n");
}

}  // namespace
