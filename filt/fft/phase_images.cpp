// Angle and quadrant images of a complex plane.
#include <filt/fft/internal/attention.h>
#include <filt/fft/internal/buffer_access.h>
#include <filt/fft/internal/output_image.h>
#include <filt/fft/internal/quadrant.h>
#include <filt/fft/transforms.h>

#include <cmath>

namespace {

// write(elements, count, pels) makes a run of pels.
template <class T, class Write>
void phaseImage(const mvFrequencyBuffer& buf, mvPelBuffer<T>& out, Write write) {
    using Access = mvi::BufferAccess;
    Access::requireData(buf);
    Access::requireImageInPlane(buf);
    mvi::pollAttention();
    mvi::OutputImage<T> output(buf, out);
    output.bind();
    for (long y = 0; y < Access::imageHeight(buf); ++y) {
        write(Access::data(buf) + 2 * Access::width(buf) * y, Access::imageWidth(buf),
              output.row(y));
    }
    output.wrap();
    output.deliver();
}

void writeAngles(const float* elements, long count, double* angles) {
    for (long i = 0; i < count; ++i) angles[i] = std::atan2(elements[2 * i + 1], elements[2 * i]);
}

}  // namespace

void mf_ComputeAngleImage(const mvFrequencyBuffer& buf, mvPelBuffer<double>& angle) {
    phaseImage(buf, angle, writeAngles);
}

void mf_ComputeQuadrantImage(const mvFrequencyBuffer& buf, mvPelBuffer<unsigned char>& quadrant) {
    phaseImage(buf, quadrant, mvi::writeQuadrants);
}
