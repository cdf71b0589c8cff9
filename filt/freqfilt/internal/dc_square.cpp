// The square of frequencies around DC that filters clear or keep.
#include <filt/freqfilt/internal/dc_square.h>

#include <algorithm>
#include <stdexcept>

namespace mvi {

namespace {

template <class Visit>
void visitSquare(long radius, Visit visit) {
    for (long v = 1 - radius; v < radius; ++v) {
        for (long u = 1 - radius; u < radius; ++u) visit(u, v);
    }
}

std::size_t squared(long side) {
    return static_cast<std::size_t>(side) * static_cast<std::size_t>(side);
}

}  // namespace

void clearDcSquare(mvFrequencyBuffer& buf, long radius) {
    visitSquare(radius, [&](long u, long v) {
        buf.putReal(u, v, 0.0, true);
        buf.putImaginary(u, v, 0.0, true);
    });
}

void requireList(long radius) {
    if (radius > 0 && squared(radius) > std::vector<mvPair<double>>().max_size()) {
        throw std::length_error("vector<T> too long");
    }
}

DcSquare::DcSquare(const mvFrequencyBuffer& buf, long radius) : radius_(radius) {
    if (radius <= 0) return;
    // A square that lies in the plane holds no more values than the plane; one that does not is
    // refused at its first value outside.
    values_.reserve(
        std::min(squared(2 * radius - 1), static_cast<std::size_t>(buf.width() * buf.height())));
}

void DcSquare::save(const mvFrequencyBuffer& buf) {
    visitSquare(radius_, [&](long u, long v) { values_.push_back(buf.get(u, v, true)); });
}

void DcSquare::restore(mvFrequencyBuffer& buf) const {
    auto value = values_.begin();
    visitSquare(radius_, [&](long u, long v) { buf.put(u, v, *value++, true); });
}

}  // namespace mvi
