// What encoders of picture files have in common.
#pragma once

#include <cstddef>
#include <memory>

class OutputFile;

/// The picture that is to be written.
struct PictureForm {
    long width, height;
    int depth;      // 8 or 16 bits a sample
    long channels;  // 1 or 3

    std::size_t rowBytes() const {
        return static_cast<std::size_t>(width) * static_cast<std::size_t>(channels * depth / 8);
    }
};

/// A picture's file that is being encoded, after its head.
class PictureWriter {
  public:
    virtual ~PictureWriter() = default;

    /// The rows in their order: samples interleaved, bytes or unsigned shorts. Throws a Failure.
    virtual void writeRow(const void* samples) = 0;
    virtual void finish() {}
};
