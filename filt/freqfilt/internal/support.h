// How large a response is.
#pragma once

#include <cstdint>

namespace mvi {

/// A side of a response: truncated, and made odd so that there is a middle. Throws
/// std::length_error for a side that is a NaN or above 2^31 - 1.
std::int32_t oddSide(double side);

/// Throws std::length_error for a response of more than 2^32 - 1 gains.
void requireAddressable(std::int32_t width, std::int32_t height);

}  // namespace mvi
