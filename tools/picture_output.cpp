// Pictures on their way into files.
#include "picture_output.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "attention.h"
#include "failure.h"
#include "output_file.h"
#include "picture_format.h"
#include "png_output.h"
#include "pnm_output.h"
#include "tiff_output.h"

namespace {

template <class T>
PictureForm formOf(const PictureOf<T>& picture) {
    return {picture.first().width(), picture.first().height(), 8 * sizeof(T),
            static_cast<long>(picture.channels.size())};
}

template <class T>
void interleave(const PictureOf<T>& picture, long y, std::vector<T>& row) {
    const std::size_t step = picture.channels.size();
    for (std::size_t at = 0; at < step; ++at) {
        const T* from = picture.channels[at].pointToRow(y);
        for (std::size_t to = at; to < row.size(); to += step) row[to] = *from++;
    }
}

template <class T>
void writeRows(PictureWriter& writer, const PictureOf<T>& picture) {
    const PictureForm form = formOf(picture);
    std::vector<T> row(static_cast<std::size_t>(form.width * form.channels));
    beginStage("writing", form.height);
    for (long y = 0; y < form.height; ++y) {
        checkInterrupted();
        interleave(picture, y, row);
        writer.writeRow(row.data());
    }
    writer.finish();
}

std::unique_ptr<PictureWriter> writerOf(OutputFile& file, const PictureForm& form) {
    switch (formatOf(file.name())) {
        case PictureFormat::tiff:
            return tiffWriter(file, form);
        case PictureFormat::pgm:
        case PictureFormat::ppm:
            return pnmWriter(file, form);
        case PictureFormat::png:
            break;
    }
    return pngWriter(file, form);
}

// A PPM has three channels always; they may share their pels.
template <class T>
PictureOf<T> fitted(const PictureOf<T>& picture, const std::string& path) {
    if (picture.isColour()) requireRoomForColour(path);
    if (picture.isColour() || formatOf(path) != PictureFormat::ppm) return picture;
    return {{picture.first(), picture.first(), picture.first()}};
}

}  // namespace

template <class T>
void writePicture(OutputFile& file, const PictureOf<T>& picture) {
    const PictureOf<T> fit = fitted(picture, file.name());
    try {
        writeRows(*writerOf(file, formOf(fit)), fit);
    } catch (const Failure&) {
        file.requireStored();
        throw;
    }
}

template void writePicture(OutputFile&, const PictureOf<unsigned char>&);
template void writePicture(OutputFile&, const PictureOf<unsigned short>&);
