// Samples as TIFF files store them.
#include "tiff_samples.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <string>

#include "failure.h"
#include "tiff_state.h"

namespace {

void requireIntegers(const TiffState& state, int bits) {
    const auto format = state.get<std::uint16_t>(TIFFTAG_SAMPLEFORMAT, SAMPLEFORMAT_UINT);
    if (format != SAMPLEFORMAT_UINT && format != SAMPLEFORMAT_VOID) {
        throw Failure("Samples with signs or fractions are not read");
    }
    for (const int known : {1, 2, 4, 8, 16}) {
        if (bits == known) return;
    }
    throw Failure("Samples of " + std::to_string(bits) + " bits are not read");
}

// The tables have 16 bits an entry, but for old files that have 8.
void readPalette(const TiffState& state, TiffLayout& layout) {
    std::array<std::uint16_t*, 3> tables{};
    if (TIFFGetField(state.tiff(), TIFFTAG_COLORMAP, &tables[0], &tables[1], &tables[2]) != 1) {
        throw Failure("The palette is missing");
    }
    const std::size_t count = std::size_t{1} << layout.bits;
    const bool isWide = std::any_of(tables.begin(), tables.end(), [=](const std::uint16_t* table) {
        return std::any_of(table, table + count, [](std::uint16_t entry) { return entry > 255; });
    });
    for (std::size_t i = 0; i < count; ++i) {
        auto& colour = layout.palette.emplace_back();
        for (std::size_t c = 0; c < 3; ++c) {
            colour[c] = static_cast<unsigned char>(tables[c][i] >> (isWide ? 8 : 0));
        }
        layout.isColour |= colour[0] != colour[1] || colour[1] != colour[2];
    }
}

// What JPEG keeps as luminance and chrominance, libtiff gives as colours.
void requireRgb(const TiffState& state) {
    if (state.get<std::uint16_t>(TIFFTAG_COMPRESSION, COMPRESSION_NONE) != COMPRESSION_JPEG) {
        throw Failure("YCbCr without JPEG is not read");
    }
    TIFFSetField(state.tiff(), TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
}

void readColours(const TiffState& state, TiffLayout& layout) {
    std::uint16_t photometric = 0;
    if (TIFFGetField(state.tiff(), TIFFTAG_PHOTOMETRIC, &photometric) != 1) {
        throw Failure("It does not say what its samples mean");
    }
    switch (photometric) {
        case PHOTOMETRIC_MINISWHITE:
            layout.isInverted = true;
            break;
        case PHOTOMETRIC_MINISBLACK:
            break;
        case PHOTOMETRIC_YCBCR:
            requireRgb(state);
            [[fallthrough]];
        case PHOTOMETRIC_RGB:
            layout.isColour = true;
            break;
        case PHOTOMETRIC_PALETTE:
            if (layout.bits <= 8) readPalette(state, layout);
            break;
        default:
            throw Failure("Colours other than grey, RGB and palettes are not read");
    }
}

}  // namespace

long tiffSide(const TiffState& state, std::uint32_t tag) {
    const std::int64_t side = state.get<std::uint32_t>(tag, 0);
    return static_cast<long>(std::min<std::int64_t>(side, std::numeric_limits<long>::max()));
}

TiffLayout tiffLayout(const TiffState& state) {
    TiffLayout layout;
    layout.width = tiffSide(state, TIFFTAG_IMAGEWIDTH);
    layout.height = tiffSide(state, TIFFTAG_IMAGELENGTH);
    layout.bits = state.get<std::uint16_t>(TIFFTAG_BITSPERSAMPLE, 1);
    layout.samples = state.get<std::uint16_t>(TIFFTAG_SAMPLESPERPIXEL, 1);
    layout.isApart = layout.samples > 1 &&
                     state.get<std::uint16_t>(TIFFTAG_PLANARCONFIG, 1) == PLANARCONFIG_SEPARATE;
    requireIntegers(state, layout.bits);
    readColours(state, layout);
    const bool isRgb = layout.isColour && layout.palette.empty();
    const long least = isRgb ? 3 : 1;
    const bool mustBeOne = layout.bits < 8 || !layout.palette.empty();
    if (layout.width == 0 || layout.height == 0 || layout.samples < least ||
        layout.samples > (mustBeOne ? 1 : least + 2)) {
        throw Failure("Pels of " + std::to_string(layout.samples) + " such samples are not read");
    }
    return layout;
}

TiffRow::TiffRow(const TiffLayout& layout, long count)
    : layout_(layout),
      step_(!layout.palette.empty() ? 3
            : layout.isApart        ? (layout.isColour ? 3 : 1)
                                    : layout.samples),
      samples_(static_cast<std::size_t>(count)),
      colours_(layout.palette.empty() ? 0 : static_cast<std::size_t>(3 * count)) {}

// Indices stay what they are; grey is spread over 8 bits.
void TiffRow::unpack(const unsigned char* stored) {
    const auto bits = static_cast<std::size_t>(layout_.bits);
    const unsigned most = (1u << bits) - 1;
    const unsigned factor = layout_.palette.empty() ? 255 / most : 1;
    for (std::size_t i = 0; i < samples_.size(); ++i) {
        const std::size_t bit = i * bits;
        const unsigned value = stored[bit / 8] >> (8 - bits - bit % 8) & most;
        samples_[i] = static_cast<unsigned char>(value * factor);
    }
}

void TiffRow::lookUp(const unsigned char* indices) {
    for (std::size_t i = 0; i < samples_.size(); ++i) {
        std::copy_n(layout_.palette[indices[i]].begin(), 3, &colours_[3 * i]);
    }
}

const void* TiffRow::decoded(unsigned char* stored) {
    if (layout_.bits < 8) {
        unpack(stored);
        stored = samples_.data();
    }
    if (!layout_.palette.empty()) {
        lookUp(stored);
        return colours_.data();
    }
    if (layout_.isInverted) {
        const std::ptrdiff_t bytes = std::ssize(samples_) * step_ * layout_.sampleBytes();
        std::transform(stored, stored + bytes, stored,
                       [](unsigned char byte) { return static_cast<unsigned char>(~byte); });
    }
    return stored;
}
