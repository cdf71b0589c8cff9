// Running the program mvfreq in a folder of its own.
#pragma once

#include <gtest/gtest.h>
#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

/// How a run ended. `exitCode` is -1 when a signal ended it.
struct Outcome {
    int exitCode;
    std::string out;
    std::string err;
};

using Arguments = std::vector<std::string>;

/// A test with an empty folder that lives as long as it does; every run has it as current folder.
class ProgramTest : public ::testing::Test {
  protected:
    ProgramTest();
    ~ProgramTest() override;

    /// Starts the program with its output and errors going to files, or both to a terminal.
    pid_t start(const Arguments& arguments, int terminal = -1) const;
    Outcome wait(pid_t process) const;

    /// Sends a signal and returns when the program has taken it.
    void send(pid_t process, int signal) const;
    Outcome run(const Arguments& arguments) const { return wait(start(arguments)); }

    /// Runs and expects success, without a word on standard error.
    Outcome succeed(const Arguments& arguments) const;

    std::string path(const std::string& name) const { return folder_ / name; }

    /// The names in the folder, sorted, without those of this class.
    std::vector<std::string> files() const;

    std::string contents(const std::string& name) const;
    void write(const std::string& name, const std::string& contents) const;

  private:
    std::filesystem::path folder_;
};
