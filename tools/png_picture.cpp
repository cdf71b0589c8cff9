// Grey pictures in PNG files, by libpng.
#include "png_picture.h"

#include <png.h>
#include <sys/stat.h>

#include <array>
#include <bit>
#include <cerrno>
#include <csetjmp>
#include <cstdio>
#include <memory>

#include "attention.h"
#include "failure.h"
#include "output_file.h"

namespace {

using ErrorText = std::array<char, 256>;

extern "C" void keepError(png_structp png, png_const_charp message) {
    auto* text = static_cast<ErrorText*>(png_get_error_ptr(png));
    std::snprintf(text->data(), text->size(), "%s", message);
    png_longjmp(png, 1);
}

extern "C" void ignoreWarning(png_structp, png_const_charp) {}

// libpng's state of one file, with the text of its last error.
struct ReadState {
    ErrorText error{};
    png_structp png =
        png_create_read_struct(PNG_LIBPNG_VER_STRING, &error, keepError, ignoreWarning);
    png_infop info = png_create_info_struct(png);
    ~ReadState() { png_destroy_read_struct(&png, &info, nullptr); }
};

struct WriteState {
    ErrorText error{};
    png_structp png =
        png_create_write_struct(PNG_LIBPNG_VER_STRING, &error, keepError, ignoreWarning);
    png_infop info = png_create_info_struct(png);
    ~WriteState() { png_destroy_write_struct(&png, &info); }
};

// libpng reports errors by longjmp: `steps` must not own anything that has a destructor.
template <class State, class Steps>
void guarded(State& state, Steps steps) {
    if (!state.info) throw std::bad_alloc();
    if (setjmp(png_jmpbuf(state.png))) throw Failure(state.error.data());
    steps(state.png, state.info);
}

class Reader {
  public:
    explicit Reader(std::FILE* file) {
        guarded(state_, [=](png_structp png, png_infop info) {
            png_init_io(png, file);
            png_read_info(png, info);
        });
    }

    long width() const { return static_cast<long>(png_get_image_width(state_.png, state_.info)); }
    long height() const { return static_cast<long>(png_get_image_height(state_.png, state_.info)); }
    int depth() const { return png_get_bit_depth(state_.png, state_.info); }

    // What the samples take before they are compressed.
    unsigned long long bytes() const {
        return static_cast<unsigned long long>(png_get_rowbytes(state_.png, state_.info)) *
               static_cast<unsigned long long>(height());
    }

    // All samples, interleaved, one or three a pel, in the machine's byte order.
    template <class T>
    mvPelBuffer<T> samples() {
        int passes = 1;
        guarded(state_, [&passes](png_structp png, png_infop info) {
            png_set_palette_to_rgb(png);
            png_set_expand_gray_1_2_4_to_8(png);
            png_set_strip_alpha(png);
            if (std::endian::native == std::endian::little) png_set_swap(png);
            passes = png_set_interlace_handling(png);
            png_read_update_info(png, info);
        });
        mvPelBuffer<T> all(width() * channels(), height());
        beginStage("reading", passes * height());
        for (int pass = 0; pass < passes; ++pass) {
            for (long y = 0; y < height(); ++y) readRow(all.pointToRow(y));
        }
        guarded(state_, [](png_structp png, png_infop) { png_read_end(png, nullptr); });
        return all;
    }

    long channels() const { return png_get_channels(state_.png, state_.info); }

  private:
    void readRow(void* row) {
        checkInterrupted();
        guarded(state_, [row](png_structp png, png_infop) {
            png_read_row(png, static_cast<png_bytep>(row), nullptr);
        });
    }

    ReadState state_;
};

template <class T>
T luma(const T* rgb) {
    return static_cast<T>((299ul * rgb[0] + 587ul * rgb[1] + 114ul * rgb[2] + 500) / 1000);
}

template <class T>
mvPelBuffer<T> readPels(Reader& reader) {
    const mvPelBuffer<T> samples = reader.samples<T>();
    if (reader.channels() == 1) return samples;
    mvPelBuffer<T> picture(reader.width(), reader.height());
    for (long y = 0; y < picture.height(); ++y) {
        const T* rgb = samples.pointToRow(y);
        T* row = picture.pointToRow(y);
        for (long x = 0; x < picture.width(); ++x, rgb += 3) row[x] = luma(rgb);
    }
    return picture;
}

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

File openPicture(const std::string& path) {
    File file(std::fopen(path.c_str(), "rb"), &std::fclose);
    if (!file) throw Failure(systemText(errno));
    struct stat status {};
    if (fstat(fileno(file.get()), &status) == 0 && S_ISDIR(status.st_mode)) {
        throw Failure(systemText(EISDIR));
    }
    return file;
}

// A byte of deflate makes 1032 at most. A header that promises more would only cost memory.
void requireBytes(const Reader& reader, std::FILE* file) {
    struct stat status {};
    const bool isFile = fstat(fileno(file), &status) == 0 && S_ISREG(status.st_mode);
    if (isFile && reader.bytes() / 1032 > static_cast<unsigned long long>(status.st_size)) {
        throw Failure("The file ends early");
    }
}

Picture decoded(std::FILE* file) {
    Reader reader(file);
    requireBytes(reader, file);
    if (reader.depth() == 16) return readPels<unsigned short>(reader);
    return readPels<unsigned char>(reader);
}

Picture readPng(const std::string& path) {
    const File file = openPicture(path);
    try {
        return decoded(file.get());
    } catch (const Failure&) {
        if (std::feof(file.get())) throw Failure("The file ends early");
        throw;
    }
}

}  // namespace

Picture readPicture(const std::string& path) {
    try {
        return readPng(path);
    } catch (const Failure& failure) {
        throw Failure(path + ": " + failure.what());
    }
}

template <class T>
void writePicture(OutputFile& file, const mvPelBuffer_const<T>& picture) {
    WriteState state;
    guarded(state, [&](png_structp png, png_infop info) {
        png_init_io(png, file.stream());
        png_set_IHDR(png, info, static_cast<png_uint_32>(picture.width()),
                     static_cast<png_uint_32>(picture.height()), 8 * sizeof(T), PNG_COLOR_TYPE_GRAY,
                     PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
        png_write_info(png, info);
        if (std::endian::native == std::endian::little) png_set_swap(png);
    });
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

template void writePicture(OutputFile&, const mvPelBuffer_const<unsigned char>&);
template void writePicture(OutputFile&, const mvPelBuffer_const<unsigned short>&);
