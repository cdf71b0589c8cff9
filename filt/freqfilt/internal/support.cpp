// How large a response is.
#include <filt/freqfilt/internal/support.h>

#include <limits>
#include <stdexcept>

namespace mvi {

namespace {

[[noreturn]] void throwTooLarge() {
    throw std::length_error("The response of the filter would be too large.");
}

}  // namespace

std::int32_t oddSide(double side) {
    if (!(side <= std::numeric_limits<std::int32_t>::max())) throwTooLarge();
    return static_cast<std::int32_t>(side) | 1;
}

void requireAddressable(std::int32_t width, std::int32_t height) {
    const std::int64_t gains = static_cast<std::int64_t>(width) * height;
    if (gains > std::numeric_limits<std::uint32_t>::max()) throwTooLarge();
}

}  // namespace mvi
