// Small picture files of every kind that the program reads.
#include "support/picture_bytes.h"

// libjpeg's header needs those before it.
// clang-format off
#include <cstddef>
#include <cstdio>
#include <jpeglib.h>
// clang-format on

#include <tiffio.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <utility>

namespace support {

namespace {

std::string little(std::uint32_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i) text += i < 4 ? static_cast<char>(value >> 8 * i) : '\0';
    return text;
}

// Samples as the machine stores them.
std::vector<unsigned char> stored(const Samples& samples, std::vector<unsigned> values) {
    std::vector<unsigned char> bytes;
    for (const unsigned value : values) {
        const auto word = static_cast<std::uint16_t>(value);
        const auto byte = static_cast<unsigned char>(value);
        const auto* from =
            samples.depth == 16 ? reinterpret_cast<const unsigned char*>(&word) : &byte;
        bytes.insert(bytes.end(), from, from + samples.depth / 8);
    }
    return bytes;
}

// The samples of a block; those outside the picture are 0.
std::vector<unsigned> block(const Samples& samples, long x, long y, long width, long height,
                            long first, long count) {
    std::vector<unsigned> values;
    for (long v = y; v < y + height; ++v) {
        for (long u = x; u < x + width; ++u) {
            for (long c = first; c < first + count; ++c) {
                const bool isInside = u < samples.width && v < samples.height;
                const long at = (v * samples.width + u) * samples.channels + c;
                values.push_back(isInside ? samples.values[static_cast<std::size_t>(at)] : 0);
            }
        }
    }
    return values;
}

std::string contentOf(std::FILE* file) {
    std::string bytes(static_cast<std::size_t>(std::ftell(file)), '\0');
    std::rewind(file);
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file));
    return bytes;
}

void writeBlocks(TIFF* tiff, const Samples& samples, const TiffKind& kind) {
    const long side = kind.isTiled ? 16 : samples.width, rows = kind.isTiled ? 16 : 2;
    const long parts = kind.isApart ? samples.channels : 1;
    for (long part = 0; part < parts; ++part) {
        for (long y = 0; y < samples.height; y += rows) {
            for (long x = 0; x < samples.width; x += side) {
                const long height = kind.isTiled ? rows : std::min(rows, samples.height - y);
                auto bytes = stored(
                    samples, block(samples, x, y, side, height, part, samples.channels / parts));
                const auto u = static_cast<std::uint32_t>(x), v = static_cast<std::uint32_t>(y);
                const auto sample = static_cast<std::uint16_t>(part);
                const auto size = static_cast<tmsize_t>(bytes.size());
                if (kind.isTiled) {
                    TIFFWriteEncodedTile(tiff, TIFFComputeTile(tiff, u, v, 0, sample), bytes.data(),
                                         size);
                } else {
                    TIFFWriteEncodedStrip(tiff, TIFFComputeStrip(tiff, v, sample), bytes.data(),
                                          size);
                }
            }
        }
    }
}

}  // namespace

Samples someSamples(long width, long height, int depth, long channels) {
    Samples samples{width, height, depth, channels, {}};
    for (long i = 0; i < width * height * channels; ++i) {
        samples.values.push_back(static_cast<unsigned>(i * 7919 + i / 5) & ((1u << depth) - 1));
    }
    return samples;
}

std::string pnmBytes(const Samples& samples, bool isText) {
    const int kind = (isText ? 2 : 5) + (samples.channels == 3 ? 1 : 0);
    std::string bytes = "P" + std::to_string(kind) + "\n# a comment\n" +
                        std::to_string(samples.width) + " " + std::to_string(samples.height) +
                        "\n" + std::to_string((1 << samples.depth) - 1) + "\n";
    for (const unsigned value : samples.values) {
        if (isText) {
            bytes += std::to_string(value) + "\n";
        } else {
            if (samples.depth == 16) bytes += static_cast<char>(value >> 8);
            bytes += static_cast<char>(value);
        }
    }
    return bytes;
}

std::string bmpBytes(const Samples& samples) {
    const bool isGrey = samples.channels == 1;
    const std::uint32_t place = 54 + (isGrey ? 1024 : 0);
    std::string bytes = "BM" + little(0, 8) + little(place, 4) + little(40, 4) +
                        little(static_cast<std::uint32_t>(samples.width), 4) +
                        little(static_cast<std::uint32_t>(samples.height), 4) + little(1, 2) +
                        little(isGrey ? 8 : 24, 2) + little(0, 24);
    for (std::uint32_t i = 0; isGrey && i < 256; ++i) bytes += little(i * 0x10101, 4);
    for (long y = samples.height - 1; y >= 0; --y) {
        auto row = block(samples, 0, y, samples.width, 1, 0, samples.channels);
        for (std::size_t i = 0; !isGrey && i < row.size(); i += 3) std::swap(row[i], row[i + 2]);
        for (const unsigned value : row) bytes += static_cast<char>(value);
        bytes.append((4 - row.size() % 4) % 4, '\0');
    }
    return bytes;
}

std::string jpegBytes(const Samples& samples, int orientation, bool isProgressive) {
    jpeg_compress_struct jpeg{};
    jpeg_error_mgr errors{};
    jpeg.err = jpeg_std_error(&errors);
    jpeg_create_compress(&jpeg);
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&jpeg, &bytes, &size);
    jpeg.image_width = static_cast<JDIMENSION>(samples.width);
    jpeg.image_height = static_cast<JDIMENSION>(samples.height);
    jpeg.input_components = static_cast<int>(samples.channels);
    jpeg.in_color_space = samples.channels == 3 ? JCS_RGB : JCS_GRAYSCALE;
    jpeg_set_defaults(&jpeg);
    if (isProgressive) jpeg_simple_progression(&jpeg);
    jpeg_start_compress(&jpeg, TRUE);
    if (orientation != 0) {
        const std::string exif = std::string("Exif\0\0II*\0", 10) + little(8, 4) + little(1, 2) +
                                 little(0x112, 2) + little(3, 2) + little(1, 4) +
                                 little(static_cast<std::uint32_t>(orientation), 4) + little(0, 4);
        jpeg_write_marker(&jpeg, JPEG_APP0 + 1, reinterpret_cast<const JOCTET*>(exif.data()),
                          static_cast<unsigned>(exif.size()));
    }
    auto pels = stored(samples, samples.values);
    for (long y = 0; y < samples.height; ++y) {
        unsigned char* row = &pels[static_cast<std::size_t>(y * samples.width * samples.channels)];
        jpeg_write_scanlines(&jpeg, &row, 1);
    }
    jpeg_finish_compress(&jpeg);
    std::string text(reinterpret_cast<char*>(bytes), size);
    std::free(bytes);
    jpeg_destroy_compress(&jpeg);
    return text;
}

std::string tiffBytes(const Samples& samples, const TiffKind& kind) {
    std::FILE* file = std::tmpfile();
    TIFF* tiff = TIFFFdOpen(dup(fileno(file)), "", kind.isBigEndian ? "wb" : "wl");
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, static_cast<std::uint32_t>(samples.width));
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, static_cast<std::uint32_t>(samples.height));
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, samples.depth);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, static_cast<int>(samples.channels));
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC,
                 samples.channels == 3 ? PHOTOMETRIC_RGB : PHOTOMETRIC_MINISBLACK);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, kind.isApart ? 2 : 1);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, kind.compression);
    TIFFSetField(tiff, TIFFTAG_ORIENTATION, kind.orientation);
    if (kind.isTiled) {
        TIFFSetField(tiff, TIFFTAG_TILEWIDTH, 16);
        TIFFSetField(tiff, TIFFTAG_TILELENGTH, 16);
    } else {
        TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, 2);
    }
    writeBlocks(tiff, samples, kind);
    TIFFClose(tiff);
    std::fseek(file, 0, SEEK_END);
    std::string bytes = contentOf(file);
    std::fclose(file);
    return bytes;
}

}  // namespace support
