// Files that the program writes appear whole or not at all.
#include <sys/stat.h>

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
        lowPass({"old.png", "--angle-image", "angle.png", "--save", "no/filter.mva"});
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

TEST_F(OutputFilesTest, ReplaceTheirInput) {
    EXPECT_EQ(lowPass({"in.png"}).exitCode, 0);
    EXPECT_EQ(readPng(path("in.png")).width, 20);
    EXPECT_EQ(files(), std::vector<std::string>{"in.png"});
}

TEST_F(OutputFilesTest, GoWhereALinkPoints) {
    fs::create_directory(path("store"));
    fs::create_symlink("store/out.png", path("link.png"));
    write("store/out.png", "old");
    EXPECT_EQ(lowPass({"link.png"}).exitCode, 0);
    EXPECT_TRUE(fs::is_symlink(path("link.png")));
    EXPECT_EQ(readPng(path("store/out.png")).width, 20);
}

TEST_F(OutputFilesTest, KeepTheModeOfWhatTheyReplace) {
    write("out.png", "old");
    fs::permissions(path("out.png"), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(lowPass({"out.png"}).exitCode, 0);
    EXPECT_EQ(fs::status(path("out.png")).permissions(),
              fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(OutputFilesTest, NeverReplaceADevice) {
    ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
    const Outcome outcome = lowPass({"pipe"});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_NE(outcome.err.find("pipe: is not a regular file"), std::string::npos) << outcome.err;
    EXPECT_TRUE(fs::is_fifo(path("pipe")));
}

TEST_F(OutputFilesTest, ReportAFullDisk) {
    if (!fs::exists("/dev/full")) GTEST_SKIP() << "no /dev/full here";
    const std::string command = "cd '" + path("") +
                                "' && '" MVFREQ_PROGRAM
                                "' bandpass --frequency 0 "
                                "--sigma 0.1 --save filter.mva in.png out.png && '" MVFREQ_PROGRAM
                                "' info filter.mva >/dev/full 2>/dev/null";
    const int status = std::system(command.c_str());
    EXPECT_EQ(WEXITSTATUS(status), 1);
}

}  // namespace
