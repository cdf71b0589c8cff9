// The progress line, on a terminal of the test's own.
#include <fcntl.h>
#include <pty.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/png_file.h"
#include "support/program.h"

namespace {

class Progress : public ProgramTest {
  protected:
    // What a run shows on its terminal when its input, a pipe, is filled after that time.
    std::string shown(const Arguments& arguments, unsigned microseconds) {
        writePng(path("in.png"), noisePng(64, 64, 8));
        EXPECT_EQ(mkfifo(path("pipe.png").c_str(), 0600), 0);
        int terminal = -1, other = -1;
        EXPECT_EQ(openpty(&terminal, &other, nullptr, nullptr, nullptr), 0);
        const pid_t process = start(arguments, other);
        close(other);
        fill(path("pipe.png"), contents("in.png"), microseconds);
        const std::string text = readAll(terminal);
        EXPECT_EQ(wait(process).exitCode, 0);
        return text;
    }

  private:
    static void fill(const std::string& name, const std::string& bytes, unsigned microseconds) {
        const int pipe = open(name.c_str(), O_WRONLY);
        usleep(microseconds);
        EXPECT_EQ(::write(pipe, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
        close(pipe);
    }

    // A terminal whose other side is closed reads as an error.
    static std::string readAll(int terminal) {
        std::string text;
        char bytes[256];
        for (ssize_t count; (count = read(terminal, bytes, sizeof bytes)) > 0;)
            text.append(bytes, static_cast<std::size_t>(count));
        close(terminal);
        return text;
    }
};

const Arguments single{"bandpass", "--frequency", "0.1", "--sigma", "0.05", "pipe.png", "out.png"};

TEST_F(Progress, IsShownAfterASecondAndTakenAway) {
    const std::string text = shown(single, 1'050'000);
    EXPECT_NE(text.find("\r\033[Kmvfreq: working, 1."), std::string::npos) << text;
    EXPECT_NE(text.find("Ctrl-C stops\r\033[K"), std::string::npos) << text;
    EXPECT_EQ(text.substr(text.size() - 4), "\r\033[K");
}

TEST_F(Progress, CountsPictures) {
    const std::string text = shown({"bandpass", "--frequency", "0.1", "--sigma", "0.05", "in.png",
                                    "pipe.png", "--out-dir", "results", "--jobs", "1"},
                                   1'050'000);
    EXPECT_NE(text.find("mvfreq: 1 of 2 pictures done, 1."), std::string::npos) << text;
}

TEST_F(Progress, IsNotShownForShortWork) {
    EXPECT_EQ(shown(single, 0), "");
}

}  // namespace
