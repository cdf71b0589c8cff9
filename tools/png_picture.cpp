// Pictures in PNG files, by libpng.
#include "png_picture.h"

#include <base/pel_buffer.h>

#include <algorithm>
#include <bit>
#include <string_view>
#include <vector>

#include "attention.h"
#include "input_bytes.h"
#include "png_state.h"

namespace {

extern "C" void readPng(png_structp png, png_bytep to, png_size_t count) {
    auto* file = static_cast<InputBytes*>(png_get_io_ptr(png));
    if (!file->read(to, count)) png_error(png, "too few bytes");
}

class PngReader : public PictureReader {
  public:
    explicit PngReader(InputBytes& file) {
        guarded(state_, [&](png_structp png, png_infop info) {
            png_set_read_fn(png, &file, readPng);
            png_read_info(png, info);
        });
        requireBytes(file);
        header_ = {.kind = "PNG",
                   .width = static_cast<long>(png_get_image_width(state_.png, state_.info)),
                   .height = static_cast<long>(png_get_image_height(state_.png, state_.info)),
                   .depth = png_get_bit_depth(state_.png, state_.info),
                   .colour = colour(),
                   .isColour = isColour(),
                   .isOwn = isOwn()};
    }

    PictureHeader header() override { return header_; }

    void read(PictureRows& rows) override {
        int passes = 1;
        guarded(state_, [&passes](png_structp png, png_infop info) {
            png_set_palette_to_rgb(png);
            png_set_expand_gray_1_2_4_to_8(png);
            png_set_strip_alpha(png);
            if (std::endian::native == std::endian::little) png_set_swap(png);
            passes = png_set_interlace_handling(png);
            png_read_update_info(png, info);
        });
        if (passes == 1) {
            readRows(rows);
        } else {
            readPasses(rows, passes);
        }
        guarded(state_, [](png_structp png, png_infop) { png_read_end(png, nullptr); });
    }

  private:
    int type() const { return png_get_color_type(state_.png, state_.info); }
    std::size_t rowBytes() const { return png_get_rowbytes(state_.png, state_.info); }

    const char* colour() const {
        if (type() == PNG_COLOR_TYPE_PALETTE) return "palette";
        return (type() & PNG_COLOR_MASK_COLOR) != 0 ? "colour" : "grey";
    }

    // A palette may be one of greys.
    bool isColour() const {
        if (type() != PNG_COLOR_TYPE_PALETTE) return (type() & PNG_COLOR_MASK_COLOR) != 0;
        png_colorp colours = nullptr;
        int count = 0;
        png_get_PLTE(state_.png, state_.info, &colours, &count);
        return std::any_of(colours, colours + count, [](const png_color& entry) {
            return entry.red != entry.green || entry.green != entry.blue;
        });
    }

    bool isOwn() const {
        png_textp texts = nullptr;
        const int count = png_get_text(state_.png, state_.info, &texts, nullptr);
        return std::any_of(texts, texts + count, [](const png_text& text) {
            return std::string_view(text.key) == kPngSoftware &&
                   std::string_view(text.text) == kPngProgram;
        });
    }

    // A byte of deflate makes 1032 at most. A header that promises more would only cost memory.
    void requireBytes(const InputBytes& file) const {
        const std::uint64_t bytes =
            rowBytes() * std::uint64_t{png_get_image_height(state_.png, state_.info)};
        if (file.size() && bytes / 1032 > *file.size()) throw Failure("The file ends early");
    }

    long samplesEach() const { return png_get_channels(state_.png, state_.info); }

    void readRow(unsigned char* row) {
        guarded(state_, [row](png_structp png, png_infop) { png_read_row(png, row, nullptr); });
    }

    void readRows(PictureRows& rows) {
        std::vector<unsigned char> row(rowBytes());
        for (long y = 0; y < header_.height; ++y) {
            readRow(row.data());
            rows.put(0, y, header_.width, row.data(), samplesEach());
        }
    }

    // Each pass adds some pels to rows that are there already.
    void readPasses(PictureRows& rows, int passes) {
        const mvPelBuffer<unsigned char> all(static_cast<long>(rowBytes()), header_.height);
        for (int pass = 0; pass < passes; ++pass) {
            for (long y = 0; y < header_.height; ++y) {
                checkInterrupted();
                readRow(all.pointToRow(y));
            }
        }
        for (long y = 0; y < header_.height; ++y) {
            rows.put(0, y, header_.width, all.pointToRow(y), samplesEach());
        }
    }

    PngReadState state_;
    PictureHeader header_{};
};

}  // namespace

std::unique_ptr<PictureReader> pngReader(InputBytes& file) {
    return std::make_unique<PngReader>(file);
}
