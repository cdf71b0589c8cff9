// Inverse transforms: from spectra to planes and images.
#include <filt/fft/internal/attention.h>
#include <filt/fft/internal/buffer_access.h>
#include <filt/fft/internal/kernel.h>
#include <filt/fft/internal/output_image.h>
#include <filt/fft/internal/pel_conversion.h>
#include <filt/fft/internal/quadrant.h>
#include <filt/fft/transforms.h>
#include <cmath>
#include <limits>
#include <optional>
#include <type_traits>

namespace {

using Access = mf_BufferAccess;

void transformPlane(mvFrequencyBuffer& plane) {
    const mvPair<long> size(Access::width(plane), Access::height(plane));
    const bool masked = Access::masked(plane) != 0;
    const long rowLow = masked ? Access::maskedMiny(plane) : 0;
    const long rowHigh = masked ? Access::maskedMaxy(plane) : size.y;
    mf_FFT2D(Access::data(plane), size, -1, static_cast<int>(rowLow), static_cast<int>(rowHigh));
}

// The spatial plane of a buffer: the buffer's own, transformed in place, or a private copy's.
class SpatialPlane {
  public:
    SpatialPlane(mvFrequencyBuffer& buf, bool destroy)
        : buf_(buf), inPlace_(Access::inverseComputed(buf) || destroy) {
        if (!inPlace_) copy_ = buf;
        if (!Access::inverseComputed(buf)) transformPlane(inPlace_ ? buf_ : copy_);
    }

    const mvFrequencyBuffer& plane() const { return inPlace_ ? buf_ : copy_; }

    /// To be called when the results are written.
    void markInverseComputed() {
        if (inPlace_ && !Access::inverseComputed(buf_)) Access::setInverseComputed(buf_, true);
    }

  private:
    mvFrequencyBuffer& buf_;
    bool inPlace_;
    mvFrequencyBuffer copy_;
};

void requirePelOutput(const mvFrequencyBuffer& buf) {
    Access::requireTransformable(buf);
    Access::requireImageInPlane(buf);
}

float inverseScale(const mvFrequencyBuffer& buf) {
    return static_cast<float>(1.0 / static_cast<double>(Access::width(buf) * Access::height(buf)));
}

// The range of magnitudes in the image area, found in squares.
mf_PelScale rangeScale(const mvFrequencyBuffer& plane, float scale, float full) {
    float least = 1e20f, greatest = -1e20f;
    for (long y = 0; y < Access::imageHeight(plane); ++y) {
        const float* const row = Access::data(plane) + 2 * Access::width(plane) * y;
        for (long x = 0; x < Access::imageWidth(plane); ++x) {
            const float square = row[2 * x] * row[2 * x] + row[2 * x + 1] * row[2 * x + 1];
            if (square < least) least = square;
            if (square > greatest) greatest = square;
        }
    }
    const float low = std::sqrt(least) * scale, high = std::sqrt(greatest) * scale;
    return {low, high == low ? full : full / (high - low)};
}

template <class T>
void writeMagnitudes(mf_OutputImage<T>& output, const mvFrequencyBuffer& plane, bool rescale) {
    const float scale = inverseScale(plane);
    if constexpr (std::is_same_v<T, double>) {
        output.fill(plane,
                    [scale](float re, float im) { return mf_ScaledMagnitude(re, im, scale); });
    } else if (rescale) {
        const mf_PelScale map = rangeScale(plane, scale, std::numeric_limits<T>::max());
        output.fill(plane, [scale, map](float re, float im) {
            return mf_RoundToPel<T>((mf_ScaledMagnitude(re, im, scale) - map.low) * map.factor);
        });
    } else {
        output.fill(plane, [scale](float re, float im) {
            return mf_RoundToPel<T>(mf_ScaledMagnitude(re, im, scale));
        });
    }
}

// The angles that may accompany the magnitudes.
struct AngleOutput {
    mvPelBuffer<double>* angle;

    void write(const mvFrequencyBuffer& plane) {
        if (angle != nullptr) mf_ComputeAngleImage(plane, *angle);
    }
    void wrap() {}
    void deliver() {}
};

// The quadrants that accompany integer magnitudes: made as by a call of their own.
template <class T>
struct QuadrantOutput {
    mvPelBuffer<unsigned char>& quadrant;

    void write(const mvFrequencyBuffer& plane) { mf_ComputeQuadrantImage(plane, quadrant); }
    void wrap() {}
    void deliver() {}
};

// The quadrants that accompany double magnitudes: an output like the magnitudes themselves.
template <>
struct QuadrantOutput<double> {
    mvPelBuffer<unsigned char>& quadrant;
    std::optional<mf_OutputImage<unsigned char>> image = {};

    void write(const mvFrequencyBuffer& plane) {
        image.emplace(plane, quadrant);
        image->fill(plane, mf_Quadrant);
    }
    void wrap() { image->wrap(); }
    void deliver() { image->deliver(); }
};

template <class T, class SecondOutput>
void inverseToMagnitudes(mvFrequencyBuffer& buf, mvPelBuffer<T>& out, SecondOutput second,
                         bool rescale, bool destroy) {
    requirePelOutput(buf);
    SpatialPlane spatial(buf, destroy);
    mf_OutputImage<T> magnitudes(buf, out);
    mf_PollAttention();
    writeMagnitudes(magnitudes, spatial.plane(), rescale);
    second.write(spatial.plane());
    spatial.markInverseComputed();
    magnitudes.wrap();
    second.wrap();
    magnitudes.deliver();
    second.deliver();
}

// A call that is told to keep the buffer changes nothing in it.
mvFrequencyBuffer& kept(const mvFrequencyBuffer& buf) {
    return const_cast<mvFrequencyBuffer&>(buf);
}

}  // namespace

void mfInverseFFT(mvFrequencyBuffer& src, mvFrequencyBuffer& dst, bool destroy) {
    Access::requireTransformable(src);
    const bool computed = Access::inverseComputed(src);
    const bool inPlace = computed || destroy;
    if (!inPlace) dst = src;
    if (!computed) transformPlane(inPlace ? src : dst);
    if (inPlace) dst = src;
    Access::setInverseComputed(dst, false);
    Access::setMasked(dst, 0);
    if (inPlace && !Access::inverseComputed(src)) Access::setInverseComputed(src, true);
}

void mfInverseFFT(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst) {
    mfInverseFFT(kept(src), dst, false);
}

void mfInverseFFT(mvFrequencyBuffer& buf, mvPelBuffer<double>& real, mvPelBuffer<double>& imaginary,
                  bool destroy) {
    requirePelOutput(buf);
    SpatialPlane spatial(buf, destroy);
    mf_OutputImage<double> re(buf, real);
    mf_OutputImage<double> im(buf, imaginary);
    mf_PollAttention();
    const float scale = inverseScale(buf);
    re.fill(spatial.plane(), [scale](float value, float) { return scale * value; });
    im.fill(spatial.plane(), [scale](float, float value) { return scale * value; });
    re.copyXformToOutput();
    im.copyXformToOutput();
    re.wrap();
    im.wrap();
    spatial.markInverseComputed();
    re.deliver();
    im.deliver();
}

void mfInverseFFT(const mvFrequencyBuffer& buf, mvPelBuffer<double>& real,
                  mvPelBuffer<double>& imaginary) {
    mfInverseFFT(kept(buf), real, imaginary, false);
}

template <class T>
void mfInverseFFT(mvFrequencyBuffer& buf, mvPelBuffer<T>& out, bool rescale, bool destroy) {
    mf_InverseFFT(buf, out, static_cast<mvPelBuffer<double>*>(nullptr), rescale, destroy);
}

template <class T>
void mfInverseFFT(const mvFrequencyBuffer& buf, mvPelBuffer<T>& out, bool rescale) {
    mfInverseFFT(kept(buf), out, rescale, false);
}

template <class T>
void mfInverseFFTAngle(mvFrequencyBuffer& buf, mvPelBuffer<T>& out, mvPelBuffer<double>& angle,
                       bool rescale, bool destroy) {
    mf_InverseFFT(buf, out, &angle, rescale, destroy);
}

template <class T>
void mfInverseFFTAngle(const mvFrequencyBuffer& buf, mvPelBuffer<T>& out,
                       mvPelBuffer<double>& angle, bool rescale) {
    mfInverseFFTAngle(kept(buf), out, angle, rescale, false);
}

template <class T>
void mfInverseFFTQuadrant(mvFrequencyBuffer& buf, mvPelBuffer<T>& out,
                          mvPelBuffer<unsigned char>& quadrant, bool rescale, bool destroy) {
    mf_InverseFFT(buf, out, quadrant, rescale, destroy);
}

template <class T>
void mfInverseFFTQuadrant(const mvFrequencyBuffer& buf, mvPelBuffer<T>& out,
                          mvPelBuffer<unsigned char>& quadrant, bool rescale) {
    mfInverseFFTQuadrant(kept(buf), out, quadrant, rescale, false);
}

#define MVFREQ_INVERSE_OF(Pel)                                                                    \
    void mf_InverseFFT(mvFrequencyBuffer& buf, mvPelBuffer<Pel>& out, mvPelBuffer<double>* angle, \
                       bool rescale, bool destroy) {                                              \
        inverseToMagnitudes(buf, out, AngleOutput{angle}, rescale, destroy);                      \
    }                                                                                             \
    void mf_InverseFFT(mvFrequencyBuffer& buf, mvPelBuffer<Pel>& out,                             \
                       mvPelBuffer<unsigned char>& quadrant, bool rescale, bool destroy) {        \
        inverseToMagnitudes(buf, out, QuadrantOutput<Pel>{quadrant}, rescale, destroy);           \
    }                                                                                             \
    template void mfInverseFFT(mvFrequencyBuffer&, mvPelBuffer<Pel>&, bool, bool);                \
    template void mfInverseFFT(const mvFrequencyBuffer&, mvPelBuffer<Pel>&, bool);                \
    template void mfInverseFFTAngle(mvFrequencyBuffer&, mvPelBuffer<Pel>&, mvPelBuffer<double>&,  \
                                    bool, bool);                                                  \
    template void mfInverseFFTAngle(const mvFrequencyBuffer&, mvPelBuffer<Pel>&,                  \
                                    mvPelBuffer<double>&, bool);                                  \
    template void mfInverseFFTQuadrant(mvFrequencyBuffer&, mvPelBuffer<Pel>&,                     \
                                       mvPelBuffer<unsigned char>&, bool, bool);                  \
    template void mfInverseFFTQuadrant(const mvFrequencyBuffer&, mvPelBuffer<Pel>&,               \
                                       mvPelBuffer<unsigned char>&, bool);

MVFREQ_INVERSE_OF(unsigned char)
MVFREQ_INVERSE_OF(unsigned short)
MVFREQ_INVERSE_OF(double)
#undef MVFREQ_INVERSE_OF
