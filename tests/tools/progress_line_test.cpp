// The progress line, on a terminal of the test's own.
#include <fcntl.h>
#include <pty.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <regex>
#include <sstream>

#include "support/png_file.h"
#include "support/program.h"

namespace {

class Progress : public ProgramTest {
  protected:
    void SetUp() override {
        if (openpty(&terminal_, &other_, nullptr, nullptr, &size_) != 0) {
            GTEST_SKIP() << "This system gives no terminals.";
        }
        writePng(path("in.png"), noisePng(64, 64, 8));
        ASSERT_EQ(mkfifo(path("pipe.png").c_str(), 0600), 0);
    }
    ~Progress() override { close(terminal_); }

    // What a run shows on its terminal when one of its inputs, a pipe, is filled after that time.
    std::string shown(const Arguments& arguments, unsigned microseconds) {
        const pid_t process = start(arguments, other_);
        close(other_);
        const int pipe = open(path("pipe.png").c_str(), O_WRONLY);
        usleep(microseconds);
        const std::string bytes = contents("in.png");
        EXPECT_EQ(::write(pipe, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
        close(pipe);
        const std::string text = readAll(terminal_);
        EXPECT_EQ(wait(process).exitCode, 0);
        return text;
    }

    winsize size_{24, 80, 0, 0};

  private:
    // A terminal whose other side is closed reads as an error.
    static std::string readAll(int terminal) {
        std::string text;
        char bytes[256];
        for (ssize_t count; (count = read(terminal, bytes, sizeof bytes)) > 0;) {
            text.append(bytes, static_cast<std::size_t>(count));
        }
        return text;
    }

    int terminal_ = -1;
    int other_ = -1;
};

const Arguments kSingle{"bandpass", "--frequency", "0.1", "--sigma", "0.05", "pipe.png", "out.png"};

TEST_F(Progress, IsShownAfterASecondAndTakenAway) {
    const std::string text = shown(kSingle, 1'050'000);
    EXPECT_NE(text.find("\r\033[Kmvfreq: reading, "), std::string::npos) << text;
    EXPECT_NE(text.find("Ctrl-C stops\r\033[K"), std::string::npos) << text;
    EXPECT_TRUE(text.ends_with("\r\033[K")) << text;
}

// The picture is large enough for a line in the middle of its filtering.
TEST_F(Progress, SaysHowFarTheFilteringIs) {
    writePng(path("in.png"), noisePng(3000, 2000, 8));
    Arguments slow = kSingle;
    slow.insert(slow.end(), {"--jobs", "1", "--angle-image", "angle.png"});
    const std::string text = shown(slow, 1'050'000);
    EXPECT_TRUE(std::regex_search(text, std::regex("mvfreq: filtering, [0-9]+ %, [0-9.]+ s")))
        << text;
    EXPECT_TRUE(text.ends_with("\r\033[K")) << text;
}

class NarrowProgress : public Progress {
  protected:
    NarrowProgress() { size_.ws_col = 30; }
};

TEST_F(NarrowProgress, FitsTheTerminal) {
    const std::string text = shown(kSingle, 1'050'000);
    EXPECT_NE(text.find("\r\033[Kmvfreq: reading, "), std::string::npos) << text;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line, '\r');) {
        EXPECT_LE(line.size(), std::string("\033[K").size() + 29) << line;
    }
}

TEST_F(Progress, CountsPictures) {
    const Arguments two{"bandpass", "--frequency", "0.1",     "--sigma", "0.05", "in.png",
                        "pipe.png", "--out-dir",   "results", "--jobs",  "1"};
    const std::string text = shown(two, 1'050'000);
    EXPECT_NE(text.find("mvfreq: 1 of 2 pictures done, "), std::string::npos) << text;
    EXPECT_TRUE(text.ends_with("Ctrl-C stops\r\033[K2 pictures done\r\n")) << text;
}

TEST_F(Progress, IsNotShownForShortWork) {
    const auto begin = std::chrono::steady_clock::now();
    const std::string text = shown(kSingle, 0);
    // A busy machine makes long work of it.
    if (std::chrono::steady_clock::now() - begin < std::chrono::seconds(1)) {
        EXPECT_EQ(text, "");
    }
}

}  // namespace
