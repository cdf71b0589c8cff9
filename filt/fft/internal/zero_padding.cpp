// Clearing of what lies between the image and the padded plane.
#include <filt/fft/internal/attention.h>
#include <filt/fft/internal/zero_padding.h>

#include <algorithm>

namespace mvi {

void clearPadding(float* plane, long imageWidth, long imageHeight, long width, long height) {
    pollAttention();
    for (long y = 0; y < imageHeight; ++y) {
        float* const row = plane + 2 * width * y;
        std::fill(row + 2 * imageWidth, row + 2 * width, 0.0f);
    }
    std::fill(plane + 2 * width * imageHeight, plane + 2 * width * height, 0.0f);
}

}  // namespace mvi
