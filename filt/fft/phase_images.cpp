// Angle and quadrant images of a complex plane.
#include <filt/fft/internal/attention.h>
#include <filt/fft/internal/buffer_access.h>
#include <filt/fft/internal/output_image.h>
#include <filt/fft/internal/quadrant.h>
#include <filt/fft/transforms.h>
#include <cmath>

namespace {

template <class T, class Pel>
void phaseImage(const mvFrequencyBuffer& buf, mvPelBuffer<T>& out, Pel pel) {
    mf_BufferAccess::requireData(buf);
    mf_BufferAccess::requireImageInPlane(buf);
    mf_PollAttention();
    mf_OutputImage<T> output(buf, out);
    output.fill(buf, pel);
    output.wrap();
    output.deliver();
}

}  // namespace

void mf_ComputeAngleImage(const mvFrequencyBuffer& buf, mvPelBuffer<double>& angle) {
    phaseImage(buf, angle, [](float re, float im) { return std::atan2(im, re); });
}

void mf_ComputeQuadrantImage(const mvFrequencyBuffer& buf, mvPelBuffer<unsigned char>& quadrant) {
    phaseImage(buf, quadrant, mf_Quadrant);
}
