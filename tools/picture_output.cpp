// Grey pictures on their way into files.
#include "picture_output.h"

#include <bit>

#include "attention.h"
#include "output_file.h"
#include "png_state.h"

namespace {

extern "C" void storeBytes(png_structp png, png_bytep bytes, png_size_t count) {
    auto* file = static_cast<OutputFile*>(png_get_io_ptr(png));
    if (!file->store(bytes, count)) png_error(png, "not stored");
}

extern "C" void flushNothing(png_structp) {}

template <class T>
void begin(PngWriteState& state, OutputFile& file, const mvPelBuffer_const<T>& picture) {
    guarded(state, [&](png_structp png, png_infop info) {
        png_set_write_fn(png, &file, storeBytes, flushNothing);
        png_set_IHDR(png, info, static_cast<png_uint_32>(picture.width()),
                     static_cast<png_uint_32>(picture.height()), 8 * sizeof(T), PNG_COLOR_TYPE_GRAY,
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

template <class T>
void writeRows(PngWriteState& state, const mvPelBuffer_const<T>& picture) {
    beginStage("writing", picture.height());
    for (long y = 0; y < picture.height(); ++y) {
        checkInterrupted();
        const void* row = picture.pointToRow(y);
        guarded(state, [row](png_structp png, png_infop) {
            png_write_row(png, static_cast<png_const_bytep>(row));
        });
    }
    guarded(state, [](png_structp png, png_infop) { png_write_end(png, nullptr); });
}

}  // namespace

template <class T>
void writePicture(OutputFile& file, const mvPelBuffer_const<T>& picture) {
    PngWriteState state;
    try {
        begin(state, file, picture);
        writeRows(state, picture);
    } catch (const Failure&) {
        file.requireStored();
        throw;
    }
}

template void writePicture(OutputFile&, const mvPelBuffer_const<unsigned char>&);
template void writePicture(OutputFile&, const mvPelBuffer_const<unsigned short>&);
