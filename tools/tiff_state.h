// What libtiff keeps of a file, and its errors as exceptions.
#pragma once

#include <tiffio.h>

#include <array>
#include <cstdint>

class InputBytes;

/// A file that is being decoded. Its memory, besides that of the pels, is bounded by its bytes.
class TiffState {
  public:
    /// Throws a Failure for what is no TIFF, and what makeSeekable throws.
    explicit TiffState(InputBytes& file);
    ~TiffState();
    TiffState(const TiffState&) = delete;
    TiffState& operator=(const TiffState&) = delete;

    TIFF* tiff() const { return tiff_; }

    /// Throws a Failure with libtiff's first error.
    [[noreturn]] void fail() const;

    /// The value of a tag, or the default that it has.
    template <class T>
    T get(std::uint32_t tag, T otherwise) const {
        T value{};
        return TIFFGetFieldDefaulted(tiff_, tag, &value) == 1 ? value : otherwise;
    }

    std::array<char, 256> error{};

  private:
    TIFF* tiff_ = nullptr;
};
