// Grey pictures in PNG files, by libpng.
#include "png_picture.h"

#include <sys/stat.h>

#include <bit>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <string_view>

#include "attention.h"
#include "failure.h"
#include "luma.h"
#include "png_state.h"
#include "size_text.h"
#include "standard_names.h"

namespace {

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

    // Whether the file bears the program's name.
    bool isOwn() {
        png_textp texts = nullptr;
        const int count = png_get_text(state_.png, state_.info, &texts, nullptr);
        for (int i = 0; i < count; ++i) {
            if (std::string_view(texts[i].key) == kPngSoftware &&
                std::string_view(texts[i].text) == kPngProgram) {
                return true;
            }
        }
        return false;
    }

    const char* colour() const {
        const int type = png_get_color_type(state_.png, state_.info);
        if (type == PNG_COLOR_TYPE_PALETTE) return "palette";
        return (type & PNG_COLOR_MASK_COLOR) != 0 ? "colour" : "grey";
    }

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

    PngReadState state_;
};

template <class T>
mvPelBuffer<T> readPels(Reader& reader) {
    mvPelBuffer<T> samples = reader.samples<T>();
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

int leaveOpen(std::FILE*) {
    return 0;
}

File openPicture(const std::string& path) {
    if (isStandard(path)) return {stdin, &leaveOpen};
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

template <class Use>
auto usePng(const std::string& path, Use use) {
    const File file = openPicture(path);
    try {
        return use(file.get());
    } catch (const Failure&) {
        if (std::feof(file.get())) throw Failure("The file ends early");
        throw;
    }
}

// Names the file that fails.
template <class Use>
auto useNamed(const std::string& path, Use use) {
    try {
        return usePng(path, use);
    } catch (const Failure& failure) {
        throw Failure(inputName(path) + ": " + failure.what());
    }
}

}  // namespace

Picture readPicture(const std::string& path) {
    return useNamed(path, decoded);
}

bool isOwnPicture(const std::string& path) {
    try {
        return usePng(path, [](std::FILE* file) { return Reader(file).isOwn(); });
    } catch (const Failure&) {
        return false;
    }
}

std::string pictureReport(const std::string& path) {
    return useNamed(path, [](std::FILE* file) {
        Reader reader(file);
        return "PNG picture\n  size: " + sizeText({reader.width(), reader.height()}) +
               "\n  depth: " + std::to_string(reader.depth()) + " bits, " + reader.colour() +
               (reader.isOwn() ? "\n  written by: mvfreq\n" : "\n");
    });
}
