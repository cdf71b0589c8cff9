// The square of frequencies around DC that filters clear or keep.
#include <filt/freqfilt/internal/dc_square.h>
#include <algorithm>

namespace {

template <class Visit>
void visitSquare(long radius, Visit visit) {
    for (long v = 1 - radius; v < radius; ++v) {
        for (long u = 1 - radius; u < radius; ++u) visit(u, v);
    }
}

// A square that lies in the plane holds no more values than the plane. One that does not is
// refused at its first value outside; a radius that no list could serve is refused by the list.
std::size_t roomFor(const mvFrequencyBuffer& buf, long radius, std::size_t longestList) {
    const auto wanted = static_cast<std::size_t>(radius) * static_cast<std::size_t>(radius);
    const auto plane = static_cast<std::size_t>(buf.width() * buf.height());
    return wanted > longestList ? wanted : std::min(wanted, plane);
}

}  // namespace

void mf_ClearDcSquare(mvFrequencyBuffer& buf, long radius) {
    visitSquare(radius, [&](long u, long v) {
        buf.putReal(u, v, 0.0, true);
        buf.putImaginary(u, v, 0.0, true);
    });
}

mf_DcSquare::mf_DcSquare(const mvFrequencyBuffer& buf, long radius) : radius_(radius) {
    if (radius <= 0) return;
    values_.reserve(roomFor(buf, radius, values_.max_size()));
    visitSquare(radius, [&](long u, long v) { values_.push_back(buf.get(u, v, true)); });
}

void mf_DcSquare::restore(mvFrequencyBuffer& buf) const {
    auto value = values_.begin();
    visitSquare(radius_, [&](long u, long v) { buf.put(u, v, *value++, true); });
}
