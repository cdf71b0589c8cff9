// The inverse transform of a buffer, with its band and in its state.
#include <filt/fft/internal/buffer_access.h>
#include <filt/fft/internal/spatial_plane.h>

namespace mvi {

float inverseScale(mvPair<long> plane) {
    return static_cast<float>(1.0 / static_cast<double>(plane.x * plane.y));
}

float inverseScale(const mvFrequencyBuffer& buf) {
    return inverseScale(mvPair<long>(BufferAccess::width(buf), BufferAccess::height(buf)));
}

void transformToSpace(const mvFrequencyBuffer& src, float* dst, long columns, ColumnSink* sink) {
    const mvPair<long> size(BufferAccess::width(src), BufferAccess::height(src));
    const RowBand band =
        BufferAccess::masked(src) != 0
            ? RowBand(size.y, BufferAccess::maskedMiny(src), BufferAccess::maskedMaxy(src))
            : RowBand(size.y);
    transformComplex(BufferAccess::data(src), dst, size, Direction::inverse, band, columns, sink);
}

void visitSpatialPlane(const mvFrequencyBuffer& buf, long columns, ColumnSink& sink) {
    if (BufferAccess::inverseComputed(buf)) {
        sink.take({0, columns, BufferAccess::data(buf), 2 * BufferAccess::width(buf)});
    } else {
        transformToSpace(buf, nullptr, columns, &sink);
    }
}

}  // namespace mvi
