// What SIGINT, SIGTERM and SIGKILL do.
#include <base/exception.h>
#include <filt/fft.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

#include "support/png_file.h"
#include "support/program.h"
#include "tools/attention.h"
#include "tools/system.h"

namespace {

class Signals : public ProgramTest, public ::testing::WithParamInterface<int> {};
using Killed = ProgramTest;

Arguments filtering(const char* input) {
    return {"bandpass", "--frequency", "0.1", "--sigma", "0.05", input, "out.png"};
}

// The program reads its input from a pipe, so the test knows that it runs and has not finished.
TEST_P(Signals, EndTheRunWith130AndWithoutAFile) {
    writePng(path("in.png"), noisePng(64, 64, 8));
    const std::string bytes = contents("in.png");
    ASSERT_EQ(mkfifo(path("pipe.png").c_str(), 0600), 0);
    const pid_t process = start(filtering("pipe.png"));
    const int pipe = open(path("pipe.png").c_str(), O_WRONLY);
    ASSERT_GE(pipe, 0);
    ASSERT_EQ(::write(pipe, bytes.data(), bytes.size() / 2),
              static_cast<ssize_t>(bytes.size() / 2));
    send(process, GetParam());
    close(pipe);
    const Outcome outcome = wait(process);
    EXPECT_EQ(outcome.exitCode, 130);
    EXPECT_EQ(outcome.err, "mvfreq: interrupted, nothing was written\n");
    EXPECT_EQ(files(), (std::vector<std::string>{"in.png", "pipe.png"}));
}

// Wherever the signal strikes, there is a whole picture or none.
TEST_P(Signals, NeverLeaveHalfAFile) {
    writePng(path("in.png"), noisePng(1024, 1024, 8));
    for (unsigned microseconds = 1000; microseconds < 400000; microseconds = microseconds * 3 / 2) {
        std::remove(path("out.png").c_str());
        const pid_t process = start(filtering("in.png"));
        usleep(microseconds);
        kill(process, GetParam());
        const Outcome outcome = wait(process);
        if (outcome.exitCode == 0) {
            EXPECT_EQ(readPng(path("out.png")).height, 1024);
        } else {
            // -1: the signal came before the program could catch it.
            EXPECT_TRUE(outcome.exitCode == 130 || outcome.exitCode == -1) << outcome.exitCode;
            EXPECT_EQ(files(), std::vector<std::string>{"in.png"}) << microseconds;
        }
    }
}

// Nor does one that cannot be caught, where files can be without a name until they are complete.
TEST_F(Killed, NeverLeavesHalfAFile) {
    std::FILE* const nameless = makeNameless(path(""));
    if (!nameless) GTEST_SKIP() << "this disk has no files without a name";
    std::fclose(nameless);
    writePng(path("in.png"), noisePng(512, 512, 8));
    int exitCode = -1;
    for (unsigned microseconds = 10000; exitCode != 0; microseconds = microseconds * 6 / 5) {
        const pid_t process = start(filtering("in.png"));
        usleep(microseconds);
        kill(process, SIGKILL);
        exitCode = wait(process).exitCode;
        for (const std::string& file : files()) {
            EXPECT_EQ(readPng(path(file)).height, 512) << microseconds;
            if (file != "in.png") std::remove(path(file).c_str());
        }
    }
}

TEST_P(Signals, StopTheThreadsOfOnePicture) {
    writePng(path("in.png"), noisePng(2500, 1800, 8));
    Arguments arguments = filtering("in.png");
    arguments.insert(arguments.end(), {"--jobs", "4", "--tile", "512"});
    for (unsigned microseconds = 20000; microseconds < 400000; microseconds *= 2) {
        const pid_t process = start(arguments);
        usleep(microseconds);
        kill(process, GetParam());
        const Outcome outcome = wait(process);
        if (outcome.exitCode == 0) {
            EXPECT_EQ(readPng(path("out.png")).height, 1800);
            break;
        }
        // -1: the signal came before the program could catch it.
        EXPECT_TRUE(outcome.exitCode == 130 || outcome.exitCode == -1) << outcome.exitCode;
        EXPECT_EQ(files(), std::vector<std::string>{"in.png"}) << microseconds;
    }
}

INSTANTIATE_TEST_SUITE_P(Each, Signals, ::testing::Values(SIGINT, SIGTERM), [](const auto& test) {
    return test.param == SIGINT ? "Interrupt" : "Terminate";
});

TEST(AttentionSignal, StopsATransform) {
    const Attention attention;
    mvFrequencyBuffer buffer;
    const mvPelBuffer<unsigned char> picture(64, 64);
    mfForwardFFT(picture, buffer);
    EXPECT_FALSE(interrupted());
    std::raise(SIGINT);
    EXPECT_TRUE(interrupted());
    EXPECT_THROW(mfForwardFFT(picture, buffer), mvStatusException);
    EXPECT_THROW(checkInterrupted(), mvStatusException);
}

}  // namespace
