// Many pictures in one run.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>

#include "support/png_file.h"
#include "support/program.h"

namespace {

namespace fs = std::filesystem;

class ManyPictures : public ProgramTest {
  protected:
    // Pictures of both depths and of different padded sizes.
    void SetUp() override {
        for (const long side : {8, 20, 33, 64}) {
            for (const int depth : {8, 16}) {
                const std::string name =
                    std::to_string(side) + "-" + std::to_string(depth) + ".png";
                writePng(path(name), noisePng(side, 2 * side, depth));
                inputs_.push_back(name);
            }
        }
    }

    static Arguments all(Arguments arguments, const Arguments& more) {
        arguments.insert(arguments.end(), more.begin(), more.end());
        return arguments;
    }

    Arguments inputs_;
    const Arguments bandPass_{"bandpass", "--frequency", "0.2", "--sigma", "0.05"};
    const Arguments toResults_{"--out-dir", "results"};
};

class Jobs : public ManyPictures, public ::testing::WithParamInterface<const char*> {};

TEST_P(Jobs, GiveEachPictureWhatARunOfItsOwnGives) {
    const Arguments jobs{"--jobs", GetParam()};
    const Outcome outcome = succeed(all(all(all(bandPass_, inputs_), toResults_), jobs));
    EXPECT_EQ(outcome.out, "8 pictures done\n");
    for (const std::string& input : inputs_) {
        succeed(all(bandPass_, {input, "alone.png"}));
        EXPECT_EQ(contents("results/" + input), contents("alone.png")) << input;
    }
}

INSTANTIATE_TEST_SUITE_P(Counts, Jobs, ::testing::Values("1", "2", "7", "100"),
                         [](const auto& test) { return std::string(test.param); });

TEST_F(ManyPictures, GoThroughEveryCommandThatTakesAPicture) {
    succeed(all(bandPass_, {"--save", "filter.mva", "8-8.png", "out.png"}));
    const Arguments pair{"8-8.png", "8-16.png"};
    const std::vector<Arguments> commands = {
        {"bandreject", "--frequency", "0.2", "--sigma", "0.05"},
        {"gabor", "--frequency", "0.2", "--sigma", "0.05"},
        {"gaborreject", "--frequency", "0.2", "--sigma", "0.05"},
        {"convolve", "--kernel", "8-8.png"},
        {"apply", "filter.mva"},
        {"spectrum"}};
    for (const Arguments& command : commands) {
        const std::string folder = "of-" + command.front();
        EXPECT_EQ(succeed(all(all(command, pair), {"--out-dir", folder})).out, "2 pictures done\n");
        succeed(all(command, {"8-16.png", "alone.png"}));
        EXPECT_EQ(contents(folder + "/8-16.png"), contents("alone.png")) << folder;
    }
}

TEST_F(ManyPictures, AreDoneOrReportedEach) {
    write("text.png", "This is no picture.");
    fs::create_directory(path("folder.png"));
    const Outcome outcome =
        run(all(all(bandPass_, {"text.png", "8-8.png", "missing.png", "folder.png", "8-16.png"}),
                all(toResults_, {"--jobs", "1"})));
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.out, "2 of 5 pictures done, 3 failed\n");
    EXPECT_EQ(outcome.err,
              "mvfreq: text.png: Not a PNG, JPEG, TIFF, BMP or PNM file\n"
              "mvfreq: missing.png: No such file or directory\n"
              "mvfreq: folder.png: Is a directory\n");
    EXPECT_TRUE(fs::exists(path("results/8-8.png")));
    EXPECT_TRUE(fs::exists(path("results/8-16.png")));
    EXPECT_FALSE(fs::exists(path("results/text.png")));
}

// The square around DC fits only the larger picture.
TEST_F(ManyPictures, GoOnWhenOneIsTooSmallForTheFilter) {
    const Outcome outcome = run(all(bandPass_, {"--dc-radius", "17", "8-8.png", "33-8.png",
                                                "--out-dir", "results", "--jobs", "1"}));
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.err, "mvfreq: 8-8.png: --dc-radius: at most 8 fits a plane of 16 x 32\n");
    EXPECT_TRUE(fs::exists(path("results/33-8.png")));
}

TEST_F(ManyPictures, AreNotTriedWithParametersThatFitNone) {
    const Outcome outcome =
        run(all(all({"bandpass", "--frequency", "0.6", "--sigma", "0.1"}, inputs_), toResults_));
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_EQ(outcome.err, "mvfreq: Frequency must be between 0.0 and 0.5.\n");
    EXPECT_EQ(outcome.out, "");
}

TEST_F(ManyPictures, AreNotTriedWithASigmaThatIsTooLarge) {
    for (const char* sigma : {"1e12", "0"}) {
        const Outcome outcome = run(
            all(all({"bandpass", "--frequency", "0.1", "--sigma", sigma}, inputs_), toResults_));
        EXPECT_EQ(outcome.exitCode, 2);
        EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
        EXPECT_EQ(outcome.out, "");
        EXPECT_FALSE(fs::exists(path("results")));
    }
}

TEST_F(ManyPictures, AreNotTriedWithoutTheFilter) {
    const Outcome outcome = run(all(all({"apply", "missing.mva"}, inputs_), toResults_));
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.err, "mvfreq: missing.mva: No such file or directory\n");
}

TEST_F(ManyPictures, NeedAFolderThatCanBeMade) {
    write("results", "a file");
    const Outcome outcome = run(all(all(bandPass_, inputs_), toResults_));
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.err.rfind("mvfreq: results: ", 0), 0u) << outcome.err;
}

TEST_F(ManyPictures, AreRefusedWhenTheirResultsWouldMeet) {
    fs::create_directory(path("more"));
    fs::copy(path("8-8.png"), path("more/8-8.png"));
    const struct {
        Arguments arguments;
        const char* text;
    } cases[] = {
        {{"8-8.png", "more/8-8.png", "--out-dir", "results"},
         "mvfreq: results/8-8.png: the results of 8-8.png and more/8-8.png have this name\n"},
        {{"8-8.png", "--out-dir", "."},
         "mvfreq: ./8-8.png: is an input of this call (--force replaces it)\n"},
        {{"8-8.png", "--out-dir", "-"}, "mvfreq: --out-dir: the name of a folder is missing\n"},
        {{"-", "--out-dir", "results"},
         "mvfreq: -: a picture from standard input has no name for --out-dir\n"},
        {{"8-8.png", "20-8.png", "--out-dir", ""},
         "mvfreq: --out-dir: the name of a folder is missing\n"},
        {{"8-8.png", "20-8.png", "33-8.png"},
         "mvfreq: 33-8.png: more than one input needs --out-dir\n"},
    };
    const std::string before = contents("20-8.png");
    for (const auto& [arguments, text] : cases) {
        const Outcome outcome = run(all(bandPass_, arguments));
        EXPECT_EQ(outcome.exitCode, 2);
        EXPECT_EQ(outcome.err, text);
        EXPECT_FALSE(fs::exists(path("results")));
    }
    EXPECT_EQ(contents("20-8.png"), before);
}

TEST_F(ManyPictures, HaveNoOutputsThatThereIsOneNameFor) {
    for (const char* option : {"--save", "--angle-image", "--quadrant-image"}) {
        const Outcome outcome =
            run(all(all(bandPass_, inputs_), all(toResults_, {option, "one.file"})));
        EXPECT_EQ(outcome.exitCode, 2) << option;
        EXPECT_NE(outcome.err.find("--out-dir"), std::string::npos) << outcome.err;
        EXPECT_FALSE(fs::exists(path("one.file")));
    }
}

TEST_F(ManyPictures, GoOnWhereAStoppedRunEnded) {
    succeed(all(all(bandPass_, {"8-8.png", "20-8.png"}), toResults_));
    const auto before = fs::last_write_time(path("results/8-8.png"));
    const Outcome outcome =
        succeed(all(all(all(bandPass_, inputs_), toResults_), {"--skip-existing"}));
    EXPECT_EQ(outcome.out, "6 pictures done, 2 skipped\n");
    EXPECT_EQ(fs::last_write_time(path("results/8-8.png")), before);
    EXPECT_EQ(succeed(all(all(all(bandPass_, inputs_), toResults_), {"--skip-existing"})).out,
              "0 pictures done, 8 skipped\n");
    EXPECT_EQ(succeed(all(all(bandPass_, inputs_), toResults_)).out, "8 pictures done\n");
}

TEST_F(ManyPictures, AreNotTriedWhenAResultWouldReplaceAnothersFile) {
    fs::create_directory(path("results"));
    fs::copy(path("8-8.png"), path("results/20-8.png"));
    const Outcome outcome = run(all(all(bandPass_, inputs_), toResults_));
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_EQ(
        outcome.err.rfind("mvfreq: results/20-8.png: exists, and is no picture that mvfreq", 0), 0u)
        << outcome.err;
    EXPECT_EQ(std::distance(fs::directory_iterator(path("results")), {}), 1);
    EXPECT_EQ(contents("results/20-8.png"), contents("8-8.png"));
    EXPECT_EQ(run(all(all(all(bandPass_, inputs_), toResults_), {"--force"})).out,
              "8 pictures done\n");
}

// The second picture is a pipe in which nothing comes, so the test knows what is done by then.
TEST_F(ManyPictures, LeaveTheDoneOnesWhenInterrupted) {
    ASSERT_EQ(mkfifo(path("pipe.png").c_str(), 0600), 0);
    const pid_t process = start(
        all(bandPass_, {"8-8.png", "pipe.png", "20-8.png", "--out-dir", "results", "--jobs", "1"}));
    const int pipe = open(path("pipe.png").c_str(), O_WRONLY);
    ASSERT_GE(pipe, 0);
    send(process, SIGINT);
    close(pipe);
    const Outcome outcome = wait(process);
    EXPECT_EQ(outcome.exitCode, 130);
    EXPECT_EQ(outcome.err, "mvfreq: interrupted, 1 of 3 pictures done\n");
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(contents("results/8-8.png").substr(1, 3), "PNG");
    EXPECT_EQ(std::distance(fs::directory_iterator(path("results")), {}), 1);
}

}  // namespace
