// The rows outside a band: are they zero, and what becomes of them if not.
#include <filt/fft/internal/kernel/row_band.h>
#include <internal/bit_cast.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

namespace mvi {

bool isAllZero(const float* floats, long count) {
    const auto bytes = static_cast<std::size_t>(count - 1) * sizeof(float);
    return bitCast<std::uint32_t>(floats[0]) == 0 && std::memcmp(floats, floats + 1, bytes) == 0;
}

void exchangeUnmovedTiles(float* data, long n, const RowBand& band) {
    const auto exchange = [data](long a, long b) {
        std::swap(data[2 * a], data[2 * b]);
        std::swap(data[2 * a + 1], data[2 * b + 1]);
    };
    for (long y = 0; y < n; ++y) {
        if (!band.excludesTile(y / 4 * 4)) continue;
        for (long x = 0; x < y; ++x) {
            if (band.excludesTile(x / 4 * 4)) exchange(y * n + x, x * n + y);
        }
    }
}

}  // namespace mvi
