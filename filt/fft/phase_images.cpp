// Angle and quadrant images of a complex plane.
#include <filt/fft/internal/attention.h>
#include <filt/fft/internal/buffer_access.h>
#include <filt/fft/internal/output_image.h>
#include <filt/fft/internal/phase_images.h>
#include <filt/fft/internal/quadrant.h>
#include <filt/fft/transforms.h>

#include <cmath>
#include <cstddef>

namespace {

using Access = mvi::BufferAccess;

// write(elements, count, pels) makes a run of pels.
template <class T, class Write>
void makePhaseImage(const mvFrequencyBuffer& buf, mvi::OutputImage<T>& output, Write write) {
    output.bind();
    for (long y = 0; y < Access::imageHeight(buf); ++y) {
        write(Access::data(buf) + 2 * std::ptrdiff_t{Access::width(buf)} * y,
              Access::imageWidth(buf), output.row(y));
    }
    output.wrap();
    output.deliver();
}

void writeAngles(const float* elements, long count, double* angles) {
    for (long i = 0; i < count; ++i) angles[i] = std::atan2(elements[2 * i + 1], elements[2 * i]);
}

void beginPhaseImage(const mvFrequencyBuffer& buf) {
    Access::requireData(buf);
    Access::requireImageInPlane(buf);
    mvi::pollAttention();
}

}  // namespace

void mvi::makeAngleImage(const mvFrequencyBuffer& buf, OutputImage<double>& output) {
    makePhaseImage(buf, output, writeAngles);
}

void mvi::makeQuadrantImage(const mvFrequencyBuffer& buf, OutputImage<unsigned char>& output) {
    makePhaseImage(buf, output, writeQuadrants);
}

void mf_ComputeAngleImage(const mvFrequencyBuffer& buf, mvPelBuffer<double>& angle) {
    beginPhaseImage(buf);
    mvi::OutputImage<double> output(buf, angle);
    mvi::makeAngleImage(buf, output);
}

void mf_ComputeQuadrantImage(const mvFrequencyBuffer& buf, mvPelBuffer<unsigned char>& quadrant) {
    beginPhaseImage(buf);
    mvi::OutputImage<unsigned char> output(buf, quadrant);
    mvi::makeQuadrantImage(buf, output);
}
