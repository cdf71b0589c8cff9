// Files that appear whole or not at all.
#pragma once

#include <cstdio>
#include <deque>
#include <filesystem>
#include <string>

/// A file that is written in its target's folder and takes the target's name when it is complete;
/// or bytes for standard output, which are kept until then. Where the system can do that, the file
/// has no name until it is complete, so that not even a killed program leaves one.
///
/// A target that is a symbolic link stays one. One that exists and is no regular file (a device, a
/// directory) is refused with a Failure. What is not published is removed again.
class OutputFile {
  public:
    explicit OutputFile(const std::string& path);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /// As it was given.
    const std::string& name() const { return name_; }

    const std::filesystem::path& target() const { return target_; }
    bool isStandardOutput() const { return !stream_ && target_.empty(); }

    /// False when the bytes cannot be stored; nothing is thrown.
    bool store(const void* bytes, std::size_t count) noexcept;
    void write(const std::string& bytes) { store(bytes.data(), bytes.size()); }

    /// Throws a Failure, with its cause, when any bytes could not be stored.
    void requireStored() const;

    /// Closes the file, which now has a name beside the target. Throws a Failure when not all bytes
    /// could be stored.
    void finish();

    /// Puts the finished file in the target's place, or prints it.
    void publish();

  private:
    void open();
    void giveName();

    std::string name_;
    std::filesystem::path target_;
    std::filesystem::path temporary_;
    std::FILE* stream_ = nullptr;
    std::string bytes_;
    int error_ = 0;
};

/// The files of one run. They are published together, after the last one is complete.
class OutputFiles {
  public:
    /// Throws BadArgument when an output of this run has that name already.
    OutputFile& add(const std::string& path);

    /// Throws a Failure, or what a signal makes the attention poll throw, and then leaves nothing.
    /// What goes to standard output goes first.
    void publish();

  private:
    std::deque<OutputFile> files_;
};
