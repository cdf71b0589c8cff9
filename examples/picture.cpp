// Pictures in PNG files, by the simple interface of libpng.
#include "picture.h"

#include <png.h>

#include <stdexcept>

namespace {

void require(bool good, const png_image& file, const std::string& path) {
    if (!good) throw std::runtime_error(path + ": " + file.message);
}

template <class T>
void write(const std::string& path, const mvPelBuffer<T>& picture, png_uint_32 format) {
    png_image file{};
    file.version = PNG_IMAGE_VERSION;
    file.width = static_cast<png_uint_32>(picture.width());
    file.height = static_cast<png_uint_32>(picture.height());
    file.format = format;
    const auto rowStep = static_cast<png_int_32>(picture.rowUpdate() * long{sizeof(T)});
    require(png_image_write_to_file(&file, path.c_str(), 0, picture.pointToOffset(), rowStep,
                                    nullptr) != 0,
            file, path);
}

}  // namespace

Image readPicture(const std::string& path) {
    png_image file{};
    file.version = PNG_IMAGE_VERSION;
    require(png_image_begin_read_from_file(&file, path.c_str()) != 0, file, path);
    file.format = PNG_FORMAT_GRAY;
    Image picture(static_cast<long>(file.width), static_cast<long>(file.height));
    const auto rowStep = static_cast<png_int_32>(picture.rowUpdate());
    require(png_image_finish_read(&file, nullptr, picture.pointToOffset(), rowStep, nullptr) != 0,
            file, path);
    return picture;
}

void writePicture(const std::string& path, const Image& picture) {
    write(path, picture, PNG_FORMAT_GRAY);
}

void writePicture(const std::string& path, const mvPelBuffer<Colour>& picture) {
    write(path, picture, PNG_FORMAT_RGB);
}
