// Whether two images share pels.
#pragma once

#include <cstddef>

namespace mvi {

/// The bytes of an image's rows.
struct PelBytes {
    const void* first;
    std::ptrdiff_t rowBytes, rows;
    std::ptrdiff_t step;  // from one row to the next
};

template <class Image>
PelBytes pelBytes(const Image& image) {
    constexpr auto kPel = static_cast<std::ptrdiff_t>(sizeof(*image.pointToOffset()));
    return {image.pointToOffset(), image.width() * kPel, image.height(), image.rowUpdate() * kPel};
}

/// True when a byte belongs to both.
bool sharePels(const PelBytes& a, const PelBytes& b);

}  // namespace mvi
