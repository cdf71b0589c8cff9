// Pictures in TIFF files, by libtiff.
#include "tiff_picture.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>
#include <vector>

#include "failure.h"
#include "tiff_samples.h"
#include "tiff_state.h"

namespace {

// Strips and tiles alike.
struct Grid {
    bool isTiled;
    long width, height;  // of a block

    explicit Grid(const TiffState& state, const TiffLayout& layout)
        : isTiled(TIFFIsTiled(state.tiff()) != 0),
          width(isTiled ? tiffSide(state, TIFFTAG_TILEWIDTH) : layout.width),
          height(isTiled ? tiffSide(state, TIFFTAG_TILELENGTH)
                         : std::min(tiffSide(state, TIFFTAG_ROWSPERSTRIP), layout.height)) {
        if (width == 0 || height == 0) throw Failure("Its blocks have no size");
    }
};

// What is decoded at once is as large as the picture at most, or as 4096 x 4096 pels, for files
// that are one tile.
constexpr std::int64_t kLeastPels = 4096 * 4096;

class TiffReader : public PictureReader {
  public:
    explicit TiffReader(InputBytes& file)
        : state_(file), layout_(tiffLayout(state_)), grid_(state_, layout_) {}

    PictureHeader header() override {
        const bool isPalette = !layout_.palette.empty();
        return {.kind = "TIFF",
                .width = layout_.width,
                .height = layout_.height,
                .depth = layout_.bits,
                .colour = isPalette ? "palette" : (layout_.isColour ? "colour" : "grey"),
                .isColour = layout_.isColour,
                .isOwn = isOwn(),
                .orientation = orientation()};
    }

    void read(PictureRows& rows) override {
        const std::int64_t pels = std::int64_t{layout_.width} * layout_.height;
        if (grid_.width > std::max(kLeastPels, pels) / grid_.height) {
            throw Failure("Its tiles are larger than the picture");
        }
        for (auto& block : blocks_) block.resize(blockBytes());
        TiffRow row(layout_, grid_.width);
        for (long y = 0; y < layout_.height; y += grid_.height) {
            for (long x = 0; x < layout_.width; x += grid_.width) readBlock(x, y, row, rows);
        }
    }

  private:
    using Bytes = std::vector<unsigned char>;

    bool isOwn() const {
        const char* software = nullptr;
        return TIFFGetField(state_.tiff(), TIFFTAG_SOFTWARE, &software) == 1 &&
               std::string_view(software) == "mvfreq";
    }

    int orientation() const {
        const int value = state_.get<std::uint16_t>(TIFFTAG_ORIENTATION, 1);
        return value >= 1 && value <= 8 ? value : 1;
    }

    std::size_t blockBytes() const {
        TIFF* tiff = state_.tiff();
        return static_cast<std::size_t>(grid_.isTiled ? TIFFTileSize(tiff) : TIFFStripSize(tiff));
    }

    // How many of the samples that are stored apart count.
    std::size_t parts() const { return layout_.isApart && layout_.isColour ? 3 : 1; }

    void readBlock(long x, long y, TiffRow& row, PictureRows& rows) {
        const long height = std::min(grid_.height, layout_.height - y);
        for (std::size_t part = 0; part < parts(); ++part) decode(x, y, height, part);
        const std::ptrdiff_t rowBytes = std::ssize(blocks_[0]) / grid_.height;
        for (long j = 0; j < height; ++j) {
            unsigned char* stored = &blocks_[0][static_cast<std::size_t>(j * rowBytes)];
            if (parts() > 1) stored = interleaved(j);
            rows.put(x, y + j, std::min(grid_.width, layout_.width - x), row.decoded(stored),
                     row.step());
        }
    }

    void decode(long x, long y, long height, std::size_t part) {
        TIFF* tiff = state_.tiff();
        const auto sample = static_cast<std::uint16_t>(part);
        const auto column = static_cast<std::uint32_t>(x), row = static_cast<std::uint32_t>(y);
        Bytes& block = blocks_[part];
        tmsize_t decoded = 0, expected = std::ssize(block);
        if (grid_.isTiled) {
            const std::uint32_t tile = TIFFComputeTile(tiff, column, row, 0, sample);
            decoded = TIFFReadEncodedTile(tiff, tile, block.data(), expected);
        } else {
            expected = TIFFVStripSize(tiff, static_cast<std::uint32_t>(height));
            const std::uint32_t strip = TIFFComputeStrip(tiff, row, sample);
            decoded = TIFFReadEncodedStrip(tiff, strip, block.data(), expected);
        }
        if (decoded != expected) state_.fail();
    }

    // Row j of the three blocks as one.
    unsigned char* interleaved(long j) {
        const auto each = static_cast<std::size_t>(layout_.sampleBytes());
        const auto count = static_cast<std::size_t>(grid_.width);
        row_.resize(3 * each * count);
        for (std::size_t part = 0; part < 3; ++part) {
            const unsigned char* from = &blocks_[part][static_cast<std::size_t>(j) * count * each];
            for (std::size_t i = 0; i < count; ++i) {
                std::memcpy(&row_[(3 * i + part) * each], from + i * each, each);
            }
        }
        return row_.data();
    }

    const TiffState state_;
    const TiffLayout layout_;
    const Grid grid_;
    std::vector<Bytes> blocks_ = std::vector<Bytes>(parts());
    Bytes row_;
};

}  // namespace

std::unique_ptr<PictureReader> tiffReader(InputBytes& file) {
    return std::make_unique<TiffReader>(file);
}
