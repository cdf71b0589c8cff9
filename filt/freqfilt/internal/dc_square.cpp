// The square of frequencies around DC that filters clear or keep.
#include <filt/freqfilt/internal/dc_square.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <stdexcept>

namespace mvi {

namespace {

template <class Visit>
void visitSquare(std::int64_t radius, Visit visit) {
    for (std::int64_t v = 1 - radius; v < radius; ++v) {
        for (std::int64_t u = 1 - radius; u < radius; ++u) {
            visit(static_cast<long>(u), static_cast<long>(v));
        }
    }
}

// In 64 bits on all machines, also where sizes and longs have 32.
std::uint64_t squared(std::int64_t side) {
    return static_cast<std::uint64_t>(side) * static_cast<std::uint64_t>(side);
}

// What a list may hold where addresses have 64 bits; others refuse the same radii.
constexpr std::uint64_t kLongestList =
    std::numeric_limits<std::int64_t>::max() / sizeof(mvPair<double>);

}  // namespace

void clearDcSquare(mvFrequencyBuffer& buf, std::int64_t radius) {
    visitSquare(radius, [&](long u, long v) {
        buf.putReal(u, v, 0.0, true);
        buf.putImaginary(u, v, 0.0, true);
    });
}

void requireList(std::int64_t radius) {
    if (radius > 0 && squared(radius) > kLongestList) {
        throw std::length_error("vector<T> too long");
    }
}

DcSquare::DcSquare(const mvFrequencyBuffer& buf, std::int64_t radius) : radius_(radius) {
    if (radius <= 0) return;
    // A square that lies in the plane holds no more values than the plane; one that does not is
    // refused at its first value outside.
    values_.reserve(static_cast<std::size_t>(
        std::min(squared(2 * radius - 1),
                 static_cast<std::uint64_t>(std::int64_t{buf.width()} * buf.height()))));
}

void DcSquare::save(const mvFrequencyBuffer& buf) {
    visitSquare(radius_, [&](long u, long v) { values_.push_back(buf.get(u, v, true)); });
}

void DcSquare::restore(mvFrequencyBuffer& buf) const {
    auto value = values_.begin();
    visitSquare(radius_, [&](long u, long v) { buf.put(u, v, *value++, true); });
}

}  // namespace mvi
