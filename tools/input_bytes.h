// The bytes of a file that a decoder reads.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

/// A file, or standard input, from its first byte on. The first ones can be looked at before.
class InputBytes {
  public:
    /// Throws a Failure, which does not name the file, when there is none to be read.
    explicit InputBytes(const std::string& path);

    /// The first bytes, eight if there are as many.
    std::string_view head() const { return head_; }

    /// True when `count` bytes were read. Throws nothing: decoders in C call it.
    bool read(void* to, std::size_t count) noexcept;

    /// Reads up to that many bytes, none at the end of the file.
    std::size_t readSome(void* to, std::size_t count) noexcept;

    /// Notes that the file should have had more bytes.
    void noteEnd() noexcept { isShort_ = true; }

    /// Goes to that place, counted as fseek counts; gives the place, from the first byte.
    std::uint64_t seek(std::uint64_t offset, int whence) noexcept;

    /// Keeps what a pipe delivers, so that it has places and a size like a file. Throws a Failure
    /// when that is more than a picture takes.
    void makeSeekable();

    /// How many bytes there are; nothing for a pipe.
    std::optional<std::uint64_t> size() const;

    /// Why the bytes were too few for what was read, or an empty text when they were not.
    std::string complaint() const;

  private:
    using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

    static File open(const std::string& path);

    std::size_t pull(char* to, std::size_t count) noexcept;

    File file_;
    bool isKept_ = false;
    std::string kept_;
    std::size_t place_ = 0;  // in what is kept
    std::string head_;
    std::string_view pending_;  // what of the head is still to be read
    int error_ = 0;
    bool isShort_ = false;
};
