// Files that appear whole or not at all.
#pragma once

#include <cstdio>
#include <deque>
#include <filesystem>
#include <string>

/// A file that is written beside its target and takes the target's name when it is complete.
///
/// A target that is a symbolic link stays one. One that exists and is no regular file (a device, a
/// directory) is refused with a Failure. What is not published is removed again.
class OutputFile {
  public:
    explicit OutputFile(const std::string& path);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    const std::filesystem::path& target() const { return target_; }
    std::FILE* stream() { return stream_; }
    void write(const std::string& bytes);

    /// Closes the file. Throws a Failure when not all bytes could be stored.
    void finish();

    /// Puts the finished file in the target's place.
    void publish();

  private:
    std::filesystem::path target_;
    std::filesystem::path temporary_;
    std::FILE* stream_ = nullptr;
};

/// The files of one run. They are published together, after the last one is complete.
class OutputFiles {
  public:
    /// Throws BadArgument when an output of this run has that name already.
    OutputFile& add(const std::string& path);

    /// Throws a Failure, or what a signal makes the attention poll throw, and then leaves nothing.
    void publish();

  private:
    std::deque<OutputFile> files_;
};
