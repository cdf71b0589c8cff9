// Whether two images share pels.
#include <filt/freqfilt/internal/shared_pels.h>

#include <algorithm>
#include <cstdint>

namespace mvi {

namespace {

std::intptr_t address(const void* pointer) {
    return reinterpret_cast<std::intptr_t>(pointer);
}

// Whether one of the rows of `image` has a byte of begin .. end - 1.
bool meetsRows(const PelBytes& image, std::intptr_t begin, std::intptr_t end) {
    const std::intptr_t first = address(image.first);
    if (end <= first) return false;
    const std::intptr_t last =
        std::min<std::intptr_t>((end - 1 - first) / image.step, image.rows - 1);
    return first + last * image.step + image.rowBytes > begin;
}

}  // namespace

// The last row of `b` that begins before a row of `a` ends is the one that reaches farthest into
// it.
bool sharePels(const PelBytes& a, const PelBytes& b) {
    std::intptr_t begin = address(a.first);
    for (std::ptrdiff_t y = 0; y < a.rows; ++y, begin += a.step) {
        if (meetsRows(b, begin, begin + a.rowBytes)) return true;
    }
    return false;
}

}  // namespace mvi
