// PNG files of any kind, written and read sample by sample.
#include "support/png_file.h"

#include <cstdio>
#include <memory>
#include <random>
#include <stdexcept>

namespace {

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

File openFile(const std::string& path, const char* mode) {
    File file(std::fopen(path.c_str(), mode), &std::fclose);
    if (!file) throw std::runtime_error(path);
    return file;
}

std::size_t channelsOf(int colourType) {
    if (colourType == PNG_COLOR_TYPE_PALETTE) return 1;
    return (colourType & PNG_COLOR_MASK_COLOR ? 3u : 1u) +
           (colourType & PNG_COLOR_MASK_ALPHA ? 1u : 0u);
}

std::size_t rowSamples(const PngFile& picture) {
    return static_cast<std::size_t>(picture.width) * channelsOf(picture.colourType);
}

// The rows as bytes of the file, samples of less than 8 bits one a byte.
using Rows = std::vector<std::vector<png_byte>>;

std::vector<png_byte*> pointers(Rows& rows) {
    std::vector<png_byte*> result;
    for (auto& row : rows) result.push_back(row.data());
    return result;
}

Rows emptyRows(const PngFile& picture) {
    const std::size_t bytes = rowSamples(picture) * (picture.depth == 16 ? 2 : 1);
    return Rows(static_cast<std::size_t>(picture.height), std::vector<png_byte>(bytes));
}

Rows packed(const PngFile& picture) {
    Rows rows = emptyRows(picture);
    auto sample = picture.samples.begin();
    for (auto& row : rows) {
        for (std::size_t at = 0; at < row.size(); ++sample) {
            if (picture.depth == 16) row[at++] = static_cast<png_byte>(*sample >> 8);
            row[at++] = static_cast<png_byte>(*sample & 255);
        }
    }
    return rows;
}

void unpack(const Rows& rows, PngFile& picture) {
    for (const auto& row : rows) {
        for (std::size_t at = 0; at < row.size(); ++at) {
            unsigned sample = row[at];
            if (picture.depth == 16) sample = sample << 8 | row[++at];
            picture.samples.push_back(sample);
        }
    }
}

[[noreturn]] void throwError(png_structp, png_const_charp message) {
    throw std::runtime_error(message);
}

}  // namespace

void writePng(const std::string& path, const PngFile& picture) {
    const File file = openFile(path, "wb");
    Rows rows = packed(picture);
    std::vector<png_byte*> rowPointers = pointers(rows);
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, throwError, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, file.get());
    png_set_IHDR(png, info, static_cast<png_uint_32>(picture.width),
                 static_cast<png_uint_32>(picture.height), picture.depth, picture.colourType,
                 picture.interlace, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (!picture.palette.empty()) {
        png_set_PLTE(png, info, picture.palette.data(), static_cast<int>(picture.palette.size()));
    }
    png_set_rows(png, info, rowPointers.data());
    png_write_png(png, info, PNG_TRANSFORM_PACKING, nullptr);
    png_destroy_write_struct(&png, &info);
}

PngFile readPng(const std::string& path) {
    const File file = openFile(path, "rb");
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, throwError, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, file.get());
    png_read_info(png, info);
    PngFile picture{.width = static_cast<long>(png_get_image_width(png, info)),
                    .height = static_cast<long>(png_get_image_height(png, info)),
                    .depth = png_get_bit_depth(png, info),
                    .colourType = png_get_color_type(png, info)};
    Rows rows = emptyRows(picture);
    png_read_image(png, pointers(rows).data());
    png_read_end(png, nullptr);
    unpack(rows, picture);
    png_destroy_read_struct(&png, &info, nullptr);
    return picture;
}

PngFile noisePng(long width, long height, int depth) {
    std::minstd_rand random(static_cast<unsigned>(width * 31 + height));
    return greyPng(width, height, depth,
                   [&](long, long) { return (random() >> 8) & ((1u << depth) - 1); });
}
