// Forward transforms: from images and planes to spectra.
#include <filt/fft/internal/attention.h>
#include <filt/fft/internal/buffer_access.h>
#include <filt/fft/internal/kernel/transform.h>
#include <filt/fft/internal/kernel/work.h>
#include <filt/fft/internal/wrap_copy.h>
#include <filt/fft/transforms.h>

#include <algorithm>
#include <utility>

namespace {

using Access = mvi::BufferAccess;

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

// Images as rows of packed reals.
template <class T>
class RealRows : public mvi::RowSource {
  public:
    RealRows(const mvPelBuffer_const<T>& pels, long width)
        : pels_(pels), floats_(width == 1 ? 2 : width) {}

    long rows() const override { return pels_.height(); }

    void write(long y, float* row) const override {
        mvi::bestKernelPath().pels<T>().toReals(pels_.pointToRow(y), pels_.width(), row);
        std::fill(row + pels_.width(), row + floats_, 0.0f);
    }

  private:
    mvPelBuffer_const<T> pels_;
    long floats_;
};

// Two images as rows of complex elements.
template <class T>
class ComplexRows : public mvi::RowSource {
  public:
    ComplexRows(const mvPelBuffer_const<T>& real, const mvPelBuffer_const<T>& imaginary, long width)
        : real_(real), imaginary_(imaginary), width_(width) {}

    long rows() const override { return real_.height(); }

    void write(long y, float* row) const override {
        mvi::bestKernelPath().pels<T>().toElements(real_.pointToRow(y), imaginary_.pointToRow(y),
                                                   real_.width(), row);
        std::fill(row + 2 * real_.width(), row + 2 * width_, 0.0f);
    }

  private:
    mvPelBuffer_const<T> real_, imaginary_;
    long width_;
};

template <class T>
void forward(const mvPelBuffer_const<T>& image, mvFrequencyBuffer& dst) {
    requireBound(image);
    Access::setAndAllocate(dst, image.width(), image.height());
    Access::setPlacement(dst, image);
    const mvPair<long> size = planeSize(dst);
    mvi::transformReal(RealRows<T>(pelsToRead(image, size), size.x), Access::data(dst), size);
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
    const ComplexRows<T> rows(pelsToRead(real, size), pelsToRead(imaginary, size), size.x);
    // The padding has a poll of its own.
    mvi::pollAttention();
    mvi::transformComplex(rows, Access::data(dst), size);
}

}  // namespace

void mfForwardFFT(const mvFrequencyBuffer& src, mvFrequencyBuffer& dst) {
    Access::requireTransformable(src);
    // Before anything changes, since `dst` may be `src`.
    mvi::Work work(mvi::bestKernelPath(), planeSize(src));
    Access::takeShape(dst, src);
    Access::setInverseComputed(dst, false);
    Access::setMasked(dst, 0);
    mvi::transformComplex(std::move(work), Access::data(src), Access::data(dst));
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
