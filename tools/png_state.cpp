// What libpng keeps of a file, and its errors as exceptions.
#include "png_state.h"

#include <cstdio>

namespace {

extern "C" void keepError(png_structp png, png_const_charp message) {
    auto* text = static_cast<PngError*>(png_get_error_ptr(png));
    std::snprintf(text->data(), text->size(), "%s", message);
    png_longjmp(png, 1);
}

extern "C" void ignoreWarning(png_structp, png_const_charp) {}

}  // namespace

PngReadState::PngReadState() {
    png = png_create_read_struct(PNG_LIBPNG_VER_STRING, &error, keepError, ignoreWarning);
    info = png_create_info_struct(png);
}

PngReadState::~PngReadState() {
    png_destroy_read_struct(&png, &info, nullptr);
}

PngWriteState::PngWriteState() {
    png = png_create_write_struct(PNG_LIBPNG_VER_STRING, &error, keepError, ignoreWarning);
    info = png_create_info_struct(png);
}

PngWriteState::~PngWriteState() {
    png_destroy_write_struct(&png, &info);
}
