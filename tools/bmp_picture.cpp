// Pictures in BMP files.
#include "bmp_picture.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "failure.h"
#include "input_bytes.h"

namespace {

using Rgb = std::array<unsigned char, 3>;

// The least heads: that of OS/2, and that of Windows, which later ones only lengthen.
constexpr std::uint32_t kOldHead = 12, kHead = 40, kHeadWithMasks = 52, kLongestHead = 256;
constexpr std::uint32_t kPlain = 0, kMasks = 3, kMasksWithAlpha = 6;

// The bits of a pel that are one of its colours, spread over 8 bits.
struct Mask {
    std::uint32_t bits;

    unsigned char of(std::uint32_t pel) const {
        if (bits == 0) return 0;
        const int shift = std::countr_zero(bits);
        const std::uint64_t most = bits >> shift, value = (pel & bits) >> shift;
        return static_cast<unsigned char>((value * 255 + most / 2) / most);
    }
};

class BmpReader : public PictureReader {
  public:
    explicit BmpReader(InputBytes& file) : file_(file) {
        take(10);
        const std::uint32_t pels = take(4);
        const std::uint32_t head = take(4);
        if (head == kOldHead) {
            readOldHead();
        } else if (head >= kHead && head <= kLongestHead) {
            readHead(head);
        } else {
            throw Failure("Its head is of a kind that is not read");
        }
        if (bits_ <= 8) readPalette(head == kOldHead ? 3 : 4);
        if (pels < taken_) throw Failure("Its head is broken");
        skip(pels - taken_);
        requireBytes();
        header_.kind = "BMP";
        header_.depth = 8;
        header_.isColour = bits_ > 8 || !isGrey();
        header_.colour = bits_ <= 8 ? "palette" : "colour";
    }

    PictureHeader header() override { return header_; }

    void read(PictureRows& rows) override {
        std::vector<unsigned char> row(rowBytes());
        std::vector<Rgb> pels(static_cast<std::size_t>(header_.width));
        for (long i = 0; i < header_.height; ++i) {
            if (!file_.read(row.data(), row.size())) throw Failure("The file ends early");
            for (std::size_t x = 0; x < pels.size(); ++x) pels[x] = colourOf(row, x);
            rows.put(0, isTopDown_ ? i : header_.height - 1 - i, header_.width, pels.data(), 3);
        }
    }

  private:
    // The next integer; of one that is longer than four bytes, the last four.
    std::uint32_t take(std::size_t size) {
        std::array<unsigned char, 16> bytes{};
        if (!file_.read(bytes.data(), size)) throw Failure("The file ends early");
        taken_ += static_cast<std::uint32_t>(size);
        std::uint32_t value = 0;
        for (std::size_t i = size; i-- > 0;) value = value << 8 | bytes[i];
        return value;
    }

    void skip(std::uint32_t count) {
        for (; count > 0; --count) take(1);
    }

    void setSize(long width, long height) {
        header_.width = width;
        header_.height = std::abs(height);
        isTopDown_ = height < 0;
        if (width <= 0 || height == 0) throw Failure("Its head is broken");
    }

    void setBits(std::uint32_t bits) {
        bits_ = bits;
        const std::array<std::uint32_t, 6> known{1, 4, 8, 16, 24, 32};
        if (std::find(known.begin(), known.end(), bits) == known.end()) {
            throw Failure("Its head is broken");
        }
        if (bits == 16) masks_ = {{{0x7c00}, {0x3e0}, {0x1f}}};
    }

    void readOldHead() {
        const auto width = static_cast<long>(take(2)), height = static_cast<long>(take(2));
        setSize(width, height);
        take(2);
        setBits(take(2));
    }

    void readHead(std::uint32_t size) {
        const auto width = static_cast<std::int32_t>(take(4));
        const auto height = static_cast<std::int32_t>(take(4));
        setSize(width, height);
        take(2);
        setBits(take(2));
        const std::uint32_t compression = take(4);
        take(12);
        colours_ = take(4);
        take(4);
        const bool hasMasks = compression == kMasks || compression == kMasksWithAlpha;
        if (compression != kPlain && !(hasMasks && bits_ > 8)) {
            throw Failure("Compressed BMP is not read");
        }
        if (hasMasks) {
            for (Mask& mask : masks_) mask.bits = take(4);
        }
        const std::uint32_t head = taken_ - 14;
        if (head < size) skip(size - head);
        if (hasMasks && size < kHeadWithMasks && compression == kMasksWithAlpha) take(4);
    }

    void readPalette(std::size_t entryBytes) {
        const std::uint32_t most = 1u << bits_;
        if (colours_ > most) throw Failure("Its palette is broken");
        palette_.resize(most);
        for (std::uint32_t i = 0; i < (colours_ == 0 ? most : colours_); ++i) {
            const std::uint32_t entry = take(entryBytes);
            for (std::size_t c = 0; c < 3; ++c) palette_[i][c] = Mask{0xff0000u >> 8 * c}.of(entry);
        }
    }

    bool isGrey() const {
        return std::all_of(palette_.begin(), palette_.end(), [](const Rgb& colour) {
            return colour[0] == colour[1] && colour[1] == colour[2];
        });
    }

    // Rows end at multiples of four bytes.
    std::size_t rowBytes() const {
        return (static_cast<std::size_t>(header_.width) * bits_ + 31) / 32 * 4;
    }

    void requireBytes() const {
        const auto rows = static_cast<std::uint64_t>(header_.height);
        if (file_.size() && rows > *file_.size() / rowBytes()) throw Failure("The file ends early");
    }

    Rgb colourOf(const std::vector<unsigned char>& row, std::size_t x) const {
        if (bits_ <= 8) {
            const std::size_t bit = x * bits_;
            const unsigned byte = row[bit / 8];
            return palette_[byte >> (8 - bits_ - bit % 8) & ((1u << bits_) - 1)];
        }
        std::uint32_t pel = 0;
        for (std::size_t i = bits_ / 8; i-- > 0;) pel = pel << 8 | row[x * (bits_ / 8) + i];
        return {masks_[0].of(pel), masks_[1].of(pel), masks_[2].of(pel)};
    }

    InputBytes& file_;
    PictureHeader header_{};
    bool isTopDown_ = false;
    std::uint32_t taken_ = 0, bits_ = 0, colours_ = 0;
    std::array<Mask, 3> masks_{{{0xff0000}, {0xff00}, {0xff}}};
    std::vector<Rgb> palette_;
};

}  // namespace

std::unique_ptr<PictureReader> bmpReader(InputBytes& file) {
    return std::make_unique<BmpReader>(file);
}
