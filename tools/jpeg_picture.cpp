// Pictures in JPEG files, by libjpeg.
#include "jpeg_picture.h"

#include <string_view>
#include <vector>

#include "exif_orientation.h"
#include "input_bytes.h"
#include "jpeg_state.h"

namespace {

constexpr int kExifMarker = JPEG_APP0 + 1;

class JpegReader : public PictureReader {
  public:
    explicit JpegReader(InputBytes& file) : state_(file) {
        guarded(state_, [](j_decompress_ptr jpeg) {
            jpeg_save_markers(jpeg, kExifMarker, 0xffff);
            jpeg_read_header(jpeg, TRUE);
        });
        requireColours();
    }

    PictureHeader header() override {
        return {.kind = "JPEG",
                .width = static_cast<long>(state_.jpeg.image_width),
                .height = static_cast<long>(state_.jpeg.image_height),
                .depth = state_.jpeg.data_precision,
                .colour = isGrey() ? "grey" : "colour",
                .isColour = !isGrey(),
                .isOwn = false,
                .orientation = orientation()};
    }

    void read(PictureRows& rows) override {
        guarded(state_, [](j_decompress_ptr jpeg) { jpeg_start_decompress(jpeg); });
        const long width = static_cast<long>(state_.jpeg.output_width);
        const long samples = state_.jpeg.output_components;
        std::vector<unsigned char> row(static_cast<std::size_t>(width * samples));
        for (long y = 0; y < static_cast<long>(state_.jpeg.output_height); ++y) {
            readRow(row.data());
            rows.put(0, y, width, row.data(), samples);
        }
        guarded(state_, [](j_decompress_ptr jpeg) { jpeg_finish_decompress(jpeg); });
    }

  private:
    bool isGrey() const { return state_.jpeg.jpeg_color_space == JCS_GRAYSCALE; }

    void requireColours() {
        const J_COLOR_SPACE colours = state_.jpeg.jpeg_color_space;
        if (!isGrey() && colours != JCS_YCbCr && colours != JCS_RGB) {
            throw Failure("Colours other than grey, YCbCr and RGB are not read");
        }
        state_.jpeg.out_color_space = isGrey() ? JCS_GRAYSCALE : JCS_RGB;
    }

    int orientation() const {
        for (const auto* marker = state_.jpeg.marker_list; marker; marker = marker->next) {
            const std::string_view content(reinterpret_cast<const char*>(marker->data),
                                           marker->data_length);
            if (marker->marker == kExifMarker && content.starts_with("Exif")) {
                return exifOrientation(content);
            }
        }
        return 1;
    }

    void readRow(unsigned char* row) {
        guarded(state_, [row](j_decompress_ptr jpeg) {
            unsigned char* pointer = row;
            jpeg_read_scanlines(jpeg, &pointer, 1);
        });
    }

    JpegState state_;
};

}  // namespace

std::unique_ptr<PictureReader> jpegReader(InputBytes& file) {
    return std::make_unique<JpegReader>(file);
}
