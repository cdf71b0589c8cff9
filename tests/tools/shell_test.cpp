// Tab completion and the manual page.
#include <cstdlib>

#include "support/program.h"

namespace {

class Shell : public ProgramTest {
  protected:
    // Runs a bash script; what it prints goes to "printed".
    std::string printed(const std::string& script) {
        write("script.sh", "mvfreq() { '" MVFREQ_PROGRAM "' \"$@\"; }\n" + script);
        const std::string command = "cd '" + path("") + "' && bash script.sh >printed";
        EXPECT_EQ(std::system(command.c_str()), 0) << script;
        return contents("printed");
    }

    // What is offered for a command line whose last word is begun.
    std::string completions(const std::string& line) {
        return printed("compopt() { :; }\nsource '" MVFREQ_SHELL "/mvfreq.bash'\nCOMP_WORDS=(" +
                       line +
                       ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_mvfreq\n"
                       "echo \"${COMPREPLY[*]}\"\n");
    }
};

TEST_F(Shell, CompletesCommands) {
    EXPECT_EQ(completions("mvfreq ''"),
              "bandpass bandreject gabor gaborreject convolve apply spectrum view explore suggest "
              "peaks info "
              "--help --version\n");
    EXPECT_EQ(completions("mvfreq ban"), "bandpass bandreject\n");
}

TEST_F(Shell, CompletesTheOptionsOfACommand) {
    EXPECT_EQ(completions("mvfreq gabor --s"),
              "--sigma --sigma-across --skip-existing --signed --save\n");
    EXPECT_EQ(completions("mvfreq spectrum in.png --"),
              "--help --out-dir --jobs --max-pixels --force --skip-existing --axes --max-frequency "
              "--border\n");
    EXPECT_EQ(completions("mvfreq bandpass --o"), "--out-dir --overlay\n");
}

TEST_F(Shell, CompletesTheFiltersOfAChain) {
    EXPECT_EQ(completions("mvfreq bandpass --sigma 1 then ''"),
              "bandpass bandreject gabor gaborreject convolve apply\n");
    EXPECT_EQ(completions("mvfreq bandpass then gaborreject --b"), "--both-sides --border\n");
}

TEST_F(Shell, CompletesValues) {
    std::filesystem::create_directory(path("results"));
    write("rest.png", "");
    EXPECT_EQ(completions("mvfreq bandpass --border ''"), "mirror zero\n");
    EXPECT_EQ(completions("mvfreq bandpass --channels ''"), "grey each\n");
    EXPECT_EQ(completions("mvfreq bandpass --out-dir res"), "results\n");
}

TEST_F(Shell, LeavesFileNamesToBash) {
    EXPECT_EQ(completions("mvfreq bandpass in"), "\n");
}

TEST_F(Shell, HasAManualPageOfAllCommandsAndOptions) {
    const std::string page =
        printed("'" MVFREQ_SHELL "/make_man_page.sh' '" MVFREQ_PROGRAM "' /dev/stdout");
    EXPECT_EQ(page.rfind(".TH MVFREQ 1 ", 0), 0u);
    for (const char* command : {"bandpass", "bandreject", "gabor", "gaborreject", "convolve",
                                "apply", "spectrum", "view", "suggest", "peaks", "info"}) {
        EXPECT_NE(page.find(std::string(".SS mvfreq ") + command + "\n"), std::string::npos);
    }
    for (const char* text :
         {"\n.B \\-\\-dc\\-radius INT\nClear DC", "\n.B \\-\\-out\\-dir TEXT",
          "\nPels around the picture, or around each of its tiles, that are filtered "
          "with it; as far",
          "\n  mvfreq bandpass \\-\\-frequency 0.03"}) {
        EXPECT_NE(page.find(text), std::string::npos) << text;
    }
}

}  // namespace
