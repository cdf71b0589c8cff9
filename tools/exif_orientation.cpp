// Which way up a camera was held.
#include "exif_orientation.h"

#include <cstddef>

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kName = "Exif\0\0"sv;
constexpr unsigned long kOrientation = 0x112;
constexpr std::size_t kEntryBytes = 12;

// Integers of either byte order, 0 where the text ends before them.
struct Integers {
    std::string_view bytes;
    bool isLittle;

    unsigned long at(std::size_t place, std::size_t size) const {
        if (place > bytes.size() || bytes.size() - place < size) return 0;
        unsigned long value = 0;
        for (std::size_t i = 0; i < size; ++i) {
            const std::size_t next = place + (isLittle ? size - 1 - i : i);
            value = value << 8 | static_cast<unsigned char>(bytes[next]);
        }
        return value;
    }
};

}  // namespace

// The content is a TIFF of which the first folder counts.
int exifOrientation(std::string_view marker) {
    if (!marker.starts_with(kName)) return 1;
    marker.remove_prefix(kName.size());
    const Integers integers{marker, marker.starts_with("II")};
    const std::size_t folder = integers.at(4, 4);
    const std::size_t count = integers.at(folder, 2);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t entry = folder + 2 + i * kEntryBytes;
        if (integers.at(entry, 2) != kOrientation) continue;
        const unsigned long value = integers.at(entry + 8, 2);
        return value >= 1 && value <= 8 ? static_cast<int>(value) : 1;
    }
    return 1;
}
