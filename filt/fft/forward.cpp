// Forward transforms: from images and planes to spectra.
#include <filt/fft/internal/buffer_access.h>
#include <filt/fft/internal/kernel.h>
#include <filt/fft/internal/wrap_copy.h>
#include <filt/fft/internal/zero_padding.h>
#include <filt/fft/transforms.h>
#include <algorithm>

namespace {

using Access = mf_BufferAccess;

mvPair<long> planeSize(const mvFrequencyBuffer& b) {
    return {Access::width(b), Access::height(b)};
}

void requireBound(const mv_PelBuffer& image) {
    if (!image.isBound()) throw mvFrequencyDefs::UnboundWindow(nullptr);
}

void requireSamePlacement(const mv_PelBuffer& real, const mv_PelBuffer& imaginary) {
    if (real.width() != imaginary.width() || real.height() != imaginary.height() ||
        !(real.offset() == imaginary.offset())) {
        throw mvFrequencyDefs::InvalidSize(
            "Real and Imaginary buffers must have the same size and offset.");
    }
}

// The pels to read: the image itself, or, with an offset, the image wrapped into a padded one.
template <class T>
mvPelBuffer_const<T> pelsToRead(const mvPelBuffer_const<T>& image, mvPair<long> padded) {
    if (image.offset() == mvPair<long>(0, 0)) return image;
    mvPelBuffer<T> wrapped(padded.x, padded.y, 32);
    wrapped.offset(image.offset());
    mf_WrapCopy(image, wrapped, false);
    return wrapped;
}

// Packs each row's pels into the first floats of its row of the plane, the rest of them zero.
template <class T>
void fillPackedReals(const mvPelBuffer_const<T>& pels, float* plane, mvPair<long> size) {
    const long floatsUsed = size.x == 1 ? 2 : size.x;
    for (long y = 0; y < size.y; ++y) {
        float* const row = plane + 2 * size.x * y;
        float* end = row;
        if (y < pels.height()) {
            const T* const first = pels.pointToRow(y);
            end = std::transform(first, first + pels.width(), row,
                                 [](T pel) { return static_cast<float>(pel); });
        }
        std::fill(end, row + floatsUsed, 0.0f);
    }
}

template <class T>
void fillComplex(const mvPelBuffer_const<T>& real, const mvPelBuffer_const<T>& imaginary,
                 float* plane, mvPair<long> size) {
    for (long y = 0; y < real.height(); ++y) {
        const T* const re = real.pointToRow(y);
        const T* const im = imaginary.pointToRow(y);
        float* out = plane + 2 * size.x * y;
        for (long x = 0; x < real.width(); ++x) {
            *out++ = static_cast<float>(re[x]);
            *out++ = static_cast<float>(im[x]);
        }
    }
    mf_ClearPadding(plane, real.width(), real.height(), size.x, size.y);
}

template <class T>
void forward(const mvPelBuffer_const<T>& image, mvFrequencyBuffer& dst) {
    requireBound(image);
    Access::setAndAllocate(dst, image.width(), image.height());
    Access::setPlacement(dst, image);
    const mvPair<long> size = planeSize(dst);
    fillPackedReals(pelsToRead(image, size), Access::data(dst), size);
    mf_RealFFT2D(Access::data(dst), size, +1, 0, static_cast<int>(size.y));
}

template <class T>
void forward(const mvPelBuffer_const<T>& real, const mvPelBuffer_const<T>& imaginary,
             mvFrequencyBuffer& dst) {
    requireBound(real);
    requireBound(imaginary);
    requireSamePlacement(real, imaginary);
    Access::setAndAllocate(dst, real.width(), real.height());
    Access::setPlacement(dst, real);
    const mvPair<long> size = planeSize(dst);
    fillComplex(pelsToRead(real, size), pelsToRead(imaginary, size), Access::data(dst), size);
    mf_FFT2D(Access::data(dst), size, +1, 0, static_cast<int>(size.y));
}

}  // namespace

void mfForwardFFT(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst) {
    Access::requireTransformable(src);
    dst = src;
    Access::setInverseComputed(dst, false);
    Access::setMasked(dst, 0);
    const mvPair<long> size = planeSize(dst);
    mf_FFT2D(Access::data(dst), size, +1, 0, static_cast<int>(size.y));
}

#define MVFREQ_FORWARD_OF(Pel)                                                               \
    void mf_ForwardFFT(const mvPelBuffer_const<Pel>& image, mvFrequencyBuffer& dst) {        \
        forward(image, dst);                                                                 \
    }                                                                                        \
    void mf_ForwardFFT(const mvPelBuffer_const<Pel>& real,                                   \
                       const mvPelBuffer_const<Pel>& imaginary, mvFrequencyBuffer& dst) {    \
        forward(real, imaginary, dst);                                                       \
    }                                                                                        \
    template void mfForwardFFT(const mvPelBuffer_const<Pel>&, mvFrequencyBuffer&);           \
    template void mfForwardFFT(const mvPelBuffer_const<Pel>&, const mvPelBuffer_const<Pel>&, \
                               mvFrequencyBuffer&);

template <class T>
void mfForwardFFT(const mvPelBuffer_const<T>& image, mvFrequencyBuffer& dst) {
    mf_ForwardFFT(image, dst);
}

template <class T>
void mfForwardFFT(const mvPelBuffer_const<T>& real, const mvPelBuffer_const<T>& imaginary,
                  mvFrequencyBuffer& dst) {
    mf_ForwardFFT(real, imaginary, dst);
}

MVFREQ_FORWARD_OF(unsigned char)
MVFREQ_FORWARD_OF(unsigned short)
MVFREQ_FORWARD_OF(double)
#undef MVFREQ_FORWARD_OF
