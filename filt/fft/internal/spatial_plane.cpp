// The inverse transform of a buffer, with its band and in its state.
#include <filt/fft/internal/buffer_access.h>
#include <filt/fft/internal/kernel/plane_results.h>
#include <filt/fft/internal/kernel/result_sink.h>
#include <filt/fft/internal/spatial_plane.h>

namespace mvi {

namespace {

mvPair<long> sizeOf(const mvFrequencyBuffer& buf) {
    return {BufferAccess::width(buf), BufferAccess::height(buf)};
}

RowBand bandOf(const mvFrequencyBuffer& buf) {
    const long height = BufferAccess::height(buf);
    if (BufferAccess::masked(buf) == 0) return RowBand(height);
    return {height, BufferAccess::maskedMiny(buf), BufferAccess::maskedMaxy(buf)};
}

FinishedColumns finished(const mvFrequencyBuffer& buf, long columns) {
    return {0, columns, BufferAccess::data(buf), 2 * BufferAccess::width(buf)};
}

}  // namespace

float inverseScale(const mvFrequencyBuffer& buf) {
    return inverseScale(sizeOf(buf));
}

void transformToSpace(const mvFrequencyBuffer& src, float* dst, long columns, ColumnSink* sink) {
    transformComplex(BufferAccess::data(src), dst, sizeOf(src), Direction::inverse, bandOf(src),
                     columns, sink);
}

template <class P>
void writeResults(const mvFrequencyBuffer& buf, const PlaneOutput<P>& out) {
    if (BufferAccess::inverseComputed(buf)) {
        ResultSink<P>(out, inverseScale(buf), bestKernelPath())
            .take(finished(buf, out.from.x + out.size.x));
    } else {
        transformToResults(BufferAccess::data(buf), sizeOf(buf), bandOf(buf), out);
    }
}

#define MVFREQ_RESULTS_OF(P) \
    template void writeResults(const mvFrequencyBuffer& buf, const PlaneOutput<P>& out);
MVFREQ_RESULTS_OF(unsigned char)
MVFREQ_RESULTS_OF(unsigned short)
MVFREQ_RESULTS_OF(double)
MVFREQ_RESULTS_OF(float)
#undef MVFREQ_RESULTS_OF

void visitSpatialPlane(const mvFrequencyBuffer& buf, long columns, ColumnSink& sink) {
    if (BufferAccess::inverseComputed(buf)) {
        sink.take(finished(buf, columns));
    } else {
        transformToSpace(buf, nullptr, columns, &sink);
    }
}

}  // namespace mvi
