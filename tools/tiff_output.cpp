// Pictures into TIFF files. They are written from front to back, which libtiff does not do.
#include "tiff_output.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "failure.h"
#include "output_file.h"

namespace {

// Its numbers are the types of TIFF.
enum class Type : std::uint16_t { text = 2, word = 3, number = 4 };

struct Tag {
    std::uint16_t id;
    Type type;
    std::vector<std::uint32_t> values;
};

// A number in the machine's byte order, which the file's head names.
template <class Number>
std::string bytesOf(Number number) {
    return {reinterpret_cast<const char*>(&number), sizeof number};
}

std::string valuesOf(const Tag& tag) {
    std::string bytes;
    for (const std::uint32_t value : tag.values) {
        if (tag.type == Type::text) bytes += static_cast<char>(value);
        if (tag.type == Type::word) bytes += bytesOf(static_cast<std::uint16_t>(value));
        if (tag.type == Type::number) bytes += bytesOf(value);
    }
    bytes.resize(std::max<std::size_t>(bytes.size() + bytes.size() % 2, 4));
    return bytes;
}

// What stands before the samples: the tags, and behind them the values that are longer than a tag.
std::string headOf(const std::vector<Tag>& tags) {
    constexpr std::uint32_t kTags = 8;
    const std::size_t end = kTags + 2 + 12 * tags.size() + 4;
    std::string head = std::endian::native == std::endian::little ? "II" : "MM";
    head += bytesOf(std::uint16_t{42}) + bytesOf(kTags) +
            bytesOf(static_cast<std::uint16_t>(tags.size()));
    std::string behind;
    for (const Tag& tag : tags) {
        const std::string values = valuesOf(tag);
        head += bytesOf(tag.id) + bytesOf(static_cast<std::uint16_t>(tag.type)) +
                bytesOf(static_cast<std::uint32_t>(tag.values.size()));
        head +=
            values.size() == 4 ? values : bytesOf(static_cast<std::uint32_t>(end + behind.size()));
        if (values.size() > 4) behind += values;
    }
    return head + bytesOf(std::uint32_t{0}) + behind;
}

// Strips of about 64 KiB, as readers like them.
class Strips {
  public:
    explicit Strips(const PictureForm& form)
        : rows(std::clamp<std::size_t>(65536 / form.rowBytes(), 1,
                                       static_cast<std::size_t>(form.height))) {
        const auto height = static_cast<std::size_t>(form.height);
        for (std::size_t y = 0; y < height; y += rows) {
            sizes.push_back(
                static_cast<std::uint32_t>(std::min(rows, height - y) * form.rowBytes()));
        }
    }

    // Where they begin, the first one at `place`.
    std::vector<std::uint32_t> places(std::size_t place) const {
        std::vector<std::uint32_t> all;
        for (const std::uint32_t size : sizes) {
            all.push_back(static_cast<std::uint32_t>(place));
            place += size;
        }
        return all;
    }

    std::size_t rows;
    std::vector<std::uint32_t> sizes;
};

std::string headOf(const PictureForm& form, const Strips& strips, std::size_t firstPlace) {
    const auto depth = static_cast<std::uint32_t>(form.depth);
    const auto channels = static_cast<std::uint32_t>(form.channels);
    const std::uint32_t colours = form.channels == 1 ? 1 : 2;  // 0 is black; RGB
    return headOf({{256, Type::number, {static_cast<std::uint32_t>(form.width)}},
                   {257, Type::number, {static_cast<std::uint32_t>(form.height)}},
                   {258, Type::word, std::vector<std::uint32_t>(channels, depth)},
                   {259, Type::word, {1}},  // not compressed
                   {262, Type::word, {colours}},
                   {273, Type::number, strips.places(firstPlace)},
                   {277, Type::word, {channels}},
                   {278, Type::number, {static_cast<std::uint32_t>(strips.rows)}},
                   {279, Type::number, strips.sizes},
                   {284, Type::word, {1}},  // samples together
                   {305, Type::text, {'m', 'v', 'f', 'r', 'e', 'q', '\0'}}});
}

class TiffWriter : public PictureWriter {
  public:
    TiffWriter(OutputFile& file, const PictureForm& form)
        : file_(file), rowBytes_(form.rowBytes()) {
        const Strips strips(form);
        const std::size_t head = headOf(form, strips, 0).size();
        const std::size_t bytes = rowBytes_ * static_cast<std::size_t>(form.height);
        if (head + bytes > std::numeric_limits<std::uint32_t>::max()) {
            throw Failure(file.name() + ": a TIFF takes 4 GiB at most; PNG takes more");
        }
        file_.write(headOf(form, strips, head));
    }

    void writeRow(const void* samples) override {
        file_.store(samples, rowBytes_);
        file_.requireStored();
    }

  private:
    OutputFile& file_;
    const std::size_t rowBytes_;
};

}  // namespace

std::unique_ptr<PictureWriter> tiffWriter(OutputFile& file, const PictureForm& form) {
    return std::make_unique<TiffWriter>(file, form);
}
