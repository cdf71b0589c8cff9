// Copying and filling pels.
#include <base/pel_buffer.h>

#include <cstring>
#include <functional>
#include <vector>

namespace {

// What two ranges of image coordinates have in common; nothing when the size is below 1.
struct Range {
    std::int64_t first, size;
};

Range common(Range a, Range b) {
    const std::int64_t first = std::max(a.first, b.first);
    return {first, std::min(a.first + a.size, b.first + b.size) - first};
}

// Rows of a part of a pel buffer, in bytes.
struct Rows {
    unsigned char* first;
    std::ptrdiff_t step;

    unsigned char* row(std::ptrdiff_t y) const { return first + y * step; }
};

struct Size {
    std::size_t rowBytes;
    std::ptrdiff_t rows;
};

bool shareMemory(Rows a, Rows b, Size size) {
    const auto end = [&](Rows r) { return r.row(size.rows - 1) + size.rowBytes; };
    const std::less<> before;
    return before(a.first, end(b)) && before(b.first, end(a));
}

// Both sides have the same step from row to row. Taken from the end toward which the pels move, no
// row is written over one that is still to be read.
void copyInOrder(Rows from, Rows to, Size size) {
    const bool backwards = std::less<>()(from.first, to.first);
    for (std::ptrdiff_t i = 0; i < size.rows; ++i) {
        const std::ptrdiff_t y = backwards ? size.rows - 1 - i : i;
        std::memmove(to.row(y), from.row(y), size.rowBytes);
    }
}

void copyRows(Rows from, Rows to, Size size) {
    if (from.step == to.step || !shareMemory(from, to, size)) {
        copyInOrder(from, to, size);
        return;
    }
    std::vector<unsigned char> packed(size.rowBytes * static_cast<std::size_t>(size.rows));
    const Rows temporary{packed.data(), static_cast<std::ptrdiff_t>(size.rowBytes)};
    copyInOrder(from, temporary, size);
    copyInOrder(temporary, to, size);
}

}  // namespace

void mv_PelBuffer::copyPels(const mv_PelBuffer& src, const mv_PelBuffer& dst, std::size_t pelSize) {
    src.checkBound();
    dst.checkBound();
    const Range x = common({src.offset_.x, src.width_}, {dst.offset_.x, dst.width_});
    const Range y = common({src.offset_.y, src.height_}, {dst.offset_.y, dst.height_});
    if (x.size < 1 || y.size < 1) return;
    const auto rows = [&](const mv_PelBuffer& view) {
        return Rows{view.at(static_cast<long>(x.first - view.offset_.x),
                            static_cast<long>(y.first - view.offset_.y), pelSize),
                    std::ptrdiff_t{view.rowUpdate_} * static_cast<std::ptrdiff_t>(pelSize)};
    };
    copyRows(rows(src), rows(dst),
             {static_cast<std::size_t>(x.size) * pelSize, static_cast<std::ptrdiff_t>(y.size)});
}

void mfPelSet_U8(mvPelBuffer<unsigned char>& dst, unsigned char value) {
    mfPelSet(dst, value);
}
