// Pictures into PNG files, by libpng.
#include "png_output.h"

#include <bit>

#include "output_file.h"
#include "png_state.h"

namespace {

extern "C" void storeBytes(png_structp png, png_bytep bytes, png_size_t count) {
    auto* file = static_cast<OutputFile*>(png_get_io_ptr(png));
    if (!file->store(bytes, count)) png_error(png, "not stored");
}

extern "C" void flushNothing(png_structp) {}

class PngWriter : public PictureWriter {
  public:
    PngWriter(OutputFile& file, const PictureForm& form) {
        guarded(state_, [&](png_structp png, png_infop info) {
            png_set_write_fn(png, &file, storeBytes, flushNothing);
            png_set_IHDR(png, info, static_cast<png_uint_32>(form.width),
                         static_cast<png_uint_32>(form.height), form.depth,
                         form.channels == 1 ? PNG_COLOR_TYPE_GRAY : PNG_COLOR_TYPE_RGB,
                         PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
            png_text name{};
            name.compression = PNG_TEXT_COMPRESSION_NONE;
            name.key = const_cast<png_charp>(kPngSoftware);
            name.text = const_cast<png_charp>(kPngProgram);
            png_set_text(png, info, &name, 1);
            png_write_info(png, info);
            if (std::endian::native == std::endian::little) png_set_swap(png);
        });
    }

    void writeRow(const void* samples) override {
        guarded(state_, [samples](png_structp png, png_infop) {
            png_write_row(png, static_cast<png_const_bytep>(samples));
        });
    }

    void finish() override {
        guarded(state_, [](png_structp png, png_infop) { png_write_end(png, nullptr); });
    }

  private:
    PngWriteState state_;
};

}  // namespace

std::unique_ptr<PictureWriter> pngWriter(OutputFile& file, const PictureForm& form) {
    return std::make_unique<PngWriter>(file, form);
}
