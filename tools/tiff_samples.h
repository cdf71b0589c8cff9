// Samples as TIFF files store them.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

class TiffState;

/// What the tags of a file say of its samples.
struct TiffLayout {
    long width = 0, height = 0;
    int bits = 0;             // of a sample
    long samples = 0;         // of a pel, those that do not count included
    bool isColour = false;    // the first three count, or the palette is no grey one; else one
    bool isApart = false;     // each of them in blocks of its own
    bool isInverted = false;  // 0 is white
    std::vector<std::array<unsigned char, 3>> palette{};

    long sampleBytes() const { return bits > 8 ? 2 : 1; }
};

/// A tag's width or height; the largest long for one that no long holds.
long tiffSide(const TiffState& state, std::uint32_t tag);

/// Throws a Failure for samples that are not read.
TiffLayout tiffLayout(const TiffState& state);

/// Makes rows of bytes, or unsigned shorts, of rows as they are stored.
class TiffRow {
  public:
    TiffRow(const TiffLayout& layout, long count);

    /// The row's samples, until the next row comes. `stored` may be changed.
    const void* decoded(unsigned char* stored);

    /// Samples from pel to pel.
    long step() const { return step_; }

  private:
    void unpack(const unsigned char* stored);
    void lookUp(const unsigned char* indices);

    const TiffLayout& layout_;
    const long step_;
    std::vector<unsigned char> samples_, colours_;
};
