// Files of pictures, of any kind that the program reads.
#include "picture_file.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

#include "bmp_picture.h"
#include "failure.h"
#include "input_bytes.h"
#include "jpeg_picture.h"
#include "picture_rows.h"
#include "png_picture.h"
#include "pnm_picture.h"
#include "size_text.h"
#include "standard_names.h"
#include "tiff_picture.h"

namespace {

struct Kind {
    std::string_view head;  // the first bytes
    std::unique_ptr<PictureReader> (*open)(InputBytes& file);
};

using namespace std::string_view_literals;

constexpr Kind kKinds[] = {
    {"\x89PNG\r\n\x1a\n"sv, pngReader},
    {"\xff\xd8\xff"sv, jpegReader},
    {"II*\0"sv, tiffReader},  // and its large kind
    {"MM\0*"sv, tiffReader},
    {"II+\0"sv, tiffReader},
    {"MM\0+"sv, tiffReader},
    {"BM"sv, bmpReader},
    {"P2"sv, pnmReader},
    {"P3"sv, pnmReader},
    {"P5"sv, pnmReader},
    {"P6"sv, pnmReader},
};

std::unique_ptr<PictureReader> openReader(InputBytes& file) {
    const auto* const kind =
        std::find_if(std::begin(kKinds), std::end(kKinds),
                     [&](const Kind& known) { return file.head().starts_with(known.head); });
    if (kind != std::end(kKinds)) return kind->open(file);
    throw Failure("Not a PNG, JPEG, TIFF, BMP or PNM file");
}

// Reads a file as far as `use` needs it.
template <class Use>
auto useReader(const std::string& path, Use use) {
    InputBytes file(path);
    try {
        return use(*openReader(file));
    } catch (const Failure&) {
        if (file.complaint().empty()) throw;
        throw Failure(file.complaint());
    }
}

// Names the file that fails.
template <class Use>
auto useNamed(const std::string& path, Use use) {
    try {
        return useReader(path, use);
    } catch (const Failure& failure) {
        throw Failure(inputName(path) + ": " + failure.what());
    }
}

// Before memory is taken for them.
void requireFewPels(const PictureHeader& header, long most) {
    if (header.width <= most / header.height) return;
    throw Failure(sizeText({header.width, header.height}) + " pels are more than --max-pixels " +
                  std::to_string(most));
}

}  // namespace

Picture readPicture(const std::string& path, const ReadOptions& options) {
    return useNamed(path, [&](PictureReader& reader) {
        requireFewPels(reader.header(), options.maxPixels);
        return collectPicture(reader, options.channels);
    });
}

bool isOwnPicture(const std::string& path) {
    try {
        return useReader(path, [](PictureReader& reader) { return reader.header().isOwn; });
    } catch (const Failure&) {
        return false;
    }
}

bool beginsPicture(int firstByte) {
    return std::any_of(std::begin(kKinds), std::end(kKinds), [=](const Kind& kind) {
        return static_cast<unsigned char>(kind.head.front()) == firstByte;
    });
}

std::string pictureReport(const std::string& path) {
    return useNamed(path, [](PictureReader& reader) {
        const PictureHeader header = reader.header();
        const mvPair<long> upright = header.isTurned() ? mvPair<long>(header.height, header.width)
                                                       : mvPair<long>(header.width, header.height);
        return std::string(header.kind) + " picture\n  size: " + sizeText(upright) +
               "\n  depth: " + std::to_string(header.depth) + " bits, " + header.colour +
               (header.isOwn ? "\n  written by: mvfreq\n" : "\n");
    });
}
