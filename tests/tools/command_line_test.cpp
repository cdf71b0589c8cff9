// Commands, options, and what is wrong with them.
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <regex>
#include <sstream>

#include "support/png_file.h"
#include "support/program.h"

namespace {

constexpr const char* kCommands[] = {"bandpass", "bandreject", "gabor",    "gaborreject",
                                     "convolve", "apply",      "spectrum", "view",
                                     "explore",  "suggest",    "peaks",    "info"};

using CommandLine = ProgramTest;

TEST_F(CommandLine, TellsItsVersion) {
    EXPECT_TRUE(
        std::regex_match(succeed({"--version"}).out, std::regex("mvfreq \\d+\\.\\d+\\.\\d+\n")));
}

TEST_F(CommandLine, ListsItsCommands) {
    const std::string help = succeed({"--help"}).out;
    for (const char* command : kCommands) {
        EXPECT_NE(help.find(command), std::string::npos) << command;
    }
}

TEST_F(CommandLine, FitsItsHelpOn80Columns) {
    Arguments commands(std::begin(kCommands), std::end(kCommands));
    commands.emplace_back();
    for (const std::string& command : commands) {
        const Arguments help = command.empty() ? Arguments{"--help"} : Arguments{command, "--help"};
        std::istringstream lines(succeed(help).out);
        for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 80u) << line;
    }
}

struct Wrong {
    Arguments arguments;
    std::string text;
};

class BadArguments : public ProgramTest, public ::testing::WithParamInterface<Wrong> {};

TEST_P(BadArguments, EndWithExitCode2) {
    writePng(path("in.png"), noisePng(16, 8, 8));
    const Outcome outcome = run(GetParam().arguments);
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err.rfind("mvfreq: ", 0), 0u) << outcome.err;
    EXPECT_NE(outcome.err.find(GetParam().text), std::string::npos) << outcome.err;
    EXPECT_EQ(files(), std::vector<std::string>{"in.png"});
}

Wrong ring(const char* command, const char* frequency, const char* sigma, const char* plateau,
           const char* radius, const char* text) {
    return {{command, "--frequency", frequency, "--sigma", sigma, "--plateau", plateau,
             "--dc-radius", radius, "in.png", "out.png"},
            text};
}

INSTANTIATE_TEST_SUITE_P(
    Parsing, BadArguments,
    ::testing::Values(
        Wrong{{}, "subcommand is required"},
        Wrong{{"blur", "in.png", "out.png"}, "blur: there is no such command"},
        Wrong{{"--nonsense"}, "--nonsense: there is no such option"},
        Wrong{{"bandpass", "--freq", "0.1", "--sigma", "0.1", "in.png", "out.png"},
              "--freq: there is no such option"},
        Wrong{{"info", "filter.mva", "more.mva"}, "more.mva: is not expected"},
        Wrong{{"suggest"}, "pictures is required"},
        Wrong{{"suggest", "in.png", "--radius", "0"}, "--radius"},
        Wrong{{"spectrum"}, "input is required"},
        Wrong{{"spectrum", "in.png"}, "output is required"},
        Wrong{{"spectrum", "in.png", "out.png", "more.png"}, "more.png"},
        Wrong{{"spectrum", "--border", "red", "in.png", "out.png"}, "--border"},
        Wrong{{"bandpass", "--sigma", "0.1", "in.png", "out.png"}, "--frequency is required"},
        Wrong{{"bandpass", "--frequency", "0.1", "in.png", "out.png"}, "--sigma is required"},
        Wrong{{"convolve", "--kernel", "in.png", "--tile", "0", "in.png", "out.png"},
              "--tile: 0 is not within 1 to 2048"},
        Wrong{{"convolve", "--kernel", "in.png", "--tile", "1000", "in.png", "out.png"},
              "--tile: 1000 is no power of two"},
        Wrong{{"convolve", "--kernel", "in.png", "--tile", "4096", "in.png", "out.png"}, "--tile"},
        Wrong{{"convolve", "--kernel", "in.png", "--tile", "-64", "in.png", "out.png"}, "--tile"},
        Wrong{{"convolve", "--kernel", "in.png", "--tile", "", "in.png", "out.png"}, "--tile"},
        Wrong{{"convolve", "--kernel", "in.png", "--tile", "64.5", "in.png", "out.png"}, "--tile"},
        Wrong{{"convolve", "--kernel", "in.png", "--margin", "-1", "in.png", "out.png"},
              "--margin"},
        Wrong{{"convolve", "--kernel", "in.png", "--margin", "1024", "in.png", "out.png"},
              "--margin"},
        Wrong{{"convolve", "--kernel", "in.png", "--margin", "far", "in.png", "out.png"},
              "--margin"},
        Wrong{{"convolve", "--kernel", "in.png", "--jobs", "0", "in.png", "out.png"}, "--jobs"},
        Wrong{{"apply", "--tile", "64", "filter.mva", "in.png", "out.png"},
              "--tile: there is no such option"},
        Wrong{{"convolve", "--kernel", "in.png", "--rescale", "101", "in.png", "out.png"},
              "--rescale: 101 is not within 0 to 100"},
        Wrong{{"convolve", "--kernel", "in.png", "--rescale", "0", "in.png", "out.png"},
              "--rescale"},
        Wrong{{"convolve", "--kernel", "in.png", "--rescale=", "in.png", "out.png"},
              "--rescale: 'in.png' is no number"},
        Wrong{{"spectrum", "--force", "--skip-existing", "in.png", "out.png"}, "--force"},
        Wrong{{"bandpass", "--frequency", "low", "--sigma", "0.1", "in.png", "out.png"},
              "--frequency"},
        Wrong{{"convolve", "in.png", "out.png"}, "--kernel is required"},
        Wrong{{"info"}, "archive is required"}));

INSTANTIATE_TEST_SUITE_P(
    Parameters, BadArguments,
    ::testing::Values(
        ring("bandpass", "0.6", "0.1", "0", "0", "Frequency must be between 0.0 and 0.5."),
        ring("bandreject", "-0.1", "0.1", "0", "0", "Frequency must be between 0.0 and 0.5."),
        ring("gabor", "nan", "0.1", "0", "0", "--frequency: 'nan' is no number"),
        ring("gabor", "", "0.1", "0", "0", "--frequency: '' is no number"),
        ring("gabor", "0.1 ", "0.1", "0", "0", "--frequency: '0.1 ' is no number"),
        ring("gabor", "0,1", "0.1", "0", "0", "--frequency: '0,1' is no number"),
        ring("bandpass", "0.1", "inf", "0", "0", "--sigma: 'inf' is no number"),
        ring("bandpass", "0.1", "", "0", "0", "--sigma: '' is no number"),
        ring("bandpass", "0.1", "0.1", "", "0", "--plateau: '' is no number"),
        ring("bandpass", "0.1", "0.1", "1e999", "0", "--plateau: '1e999' is no number"),
        ring("bandpass", "0.1", "0.1", "0", "", "--dc-radius: '' is no whole number"),
        ring("bandpass", "0.1", "0.1", "0", "1.5", "--dc-radius: '1.5' is no whole number"),
        ring("bandpass", "0.1", "0.1", "0", "1e2", "--dc-radius: '1e2' is no whole number"),
        Wrong{{"gabor", "--frequency", "0.1", "--sigma", "0.1", "--angle", "", "in.png", "out.png"},
              "--angle: '' is no number"},
        Wrong{{"gabor", "--frequency", "0.1", "--sigma", "0.1", "--sigma-across=", "in.png",
               "out.png"},
              "--sigma-across: 'in.png' is no number"},
        Wrong{{"spectrum", "--max-frequency", "", "in.png", "out.png"},
              "--max-frequency: '' is no number"},
        Wrong{{"spectrum", "--max-frequency", "0", "in.png", "out.png"}, "--max-frequency"},
        Wrong{{"spectrum", "--max-frequency", "0.6", "in.png", "out.png"},
              "--max-frequency: 0.6 is not within 0 to 0.5"},
        Wrong{{"spectrum", "--jobs", "", "in.png", "out.png"}, "--jobs: '' is no whole number"},
        ring("bandpass", "0.1", "0", "0", "0", "Sigma must be positive."),
        ring("gaborreject", "0.1", "-1", "0", "0", "Sigma values must be positive."),
        ring("bandreject", "0.1", "0.1", "-1", "0", "Plateau cannot be negative."),
        ring("gabor", "0.1", "0.1", "-1", "0", "Plateau values cannot be negative."),
        ring("bandpass", "0.1", "0.1", "0", "-1", "DC Removal Radius cannot be negative."),
        ring("gaborreject", "0.1", "0.1", "0", "-1", "DC Protection Radius cannot be negative."),
        ring("bandpass", "0.1", "0.1", "0", "9", "--dc-radius: at most 8 fits a plane of 32 x 16"),
        ring("bandreject", "0.1", "0.1", "0", "2000000000", "--dc-radius: at most 8"),
        ring("bandpass", "0.1", "1e12", "0", "0", "too large"),
        ring("gabor", "0.1", "1e12", "0", "0", "too large"),
        Wrong{{"gabor", "--frequency", "0.1", "--sigma", "0.1", "--sigma-across", "-1", "in.png",
               "out.png"},
              "Sigma values must be positive."}));

TEST_F(CommandLine, TakesANegativeAngle) {
    writePng(path("in.png"), noisePng(16, 8, 8));
    succeed(
        {"gabor", "--frequency", "0.1", "--sigma", "0.1", "--angle", "-45", "in.png", "out.png"});
}

TEST_F(CommandLine, TakesPlusSignsAndExponents) {
    writePng(path("in.png"), noisePng(16, 8, 8));
    const auto result = [&](const char* frequency, const char* sigma) {
        succeed({"bandreject", "--frequency", frequency, "--sigma", sigma, "in.png", "out.png"});
        return contents("out.png");
    };
    EXPECT_EQ(result("+0.1", "5e-2"), result("0.1", "0.05"));
}

TEST_F(CommandLine, FailsWhenItsHelpCannotBeWritten) {
    if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no /dev/full here";
    for (const char* command : {"--help", "--version", "bandpass --help"}) {
        const std::string run =
            std::string("'" MVFREQ_PROGRAM "' ") + command + " >/dev/full 2>'" + path("err") + "'";
        EXPECT_EQ(WEXITSTATUS(std::system(run.c_str())), 1) << command;
        EXPECT_EQ(contents("err"), "mvfreq: standard output: No space left on device\n");
    }
}

// The indented lines below "Example:", as they are pasted into a shell.
std::string exampleOf(const std::string& help) {
    const std::size_t begin = help.find("Example:\n");
    return begin == std::string::npos ? "" : help.substr(begin + 9);
}

class Help : public ProgramTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(Help, GivesAnExampleThatRuns) {
    namespace fs = std::filesystem;
    const std::string example = exampleOf(succeed({GetParam(), "--help"}).out);
    ASSERT_NE(example.find(std::string("mvfreq ") + GetParam()), std::string::npos);
    if (GetParam() == std::string("explore")) GTEST_SKIP() << "it would open a browser";
    fs::create_directory(path("bin"));
    fs::create_symlink(MVFREQ_PROGRAM, path("bin/mvfreq"));
    fs::create_symlink(MVFREQ_EXAMPLES, path("examples"));
    write("example.sh", "set -e\ncd '" + path("") + "'\nPATH=$PWD/bin:$PATH\n" + example);
    EXPECT_EQ(std::system(("sh '" + path("example.sh") + "' >/dev/null").c_str()), 0) << example;
}

INSTANTIATE_TEST_SUITE_P(Commands, Help, ::testing::ValuesIn(kCommands),
                         [](const auto& test) { return std::string(test.param); });

}  // namespace
