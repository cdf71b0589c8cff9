// Inverse transforms: from spectra to planes and images.
#include <filt/fft/internal/attention.h>
#include <filt/fft/internal/buffer_access.h>
#include <filt/fft/internal/image_columns.h>
#include <filt/fft/internal/kernel/transform.h>
#include <filt/fft/internal/output_image.h>
#include <filt/fft/internal/pel_map.h>
#include <filt/fft/internal/phase_images.h>
#include <filt/fft/internal/quadrant.h>
#include <filt/fft/internal/spatial_plane.h>
#include <filt/fft/transforms.h>
#include <internal/product.h>

#include <limits>
#include <optional>
#include <type_traits>
#include <utility>

namespace {

using Access = mvi::BufferAccess;

// The spatial plane of a buffer: the buffer's own, transformed in place, or a private one.
class SpatialPlane {
  public:
    SpatialPlane(mvFrequencyBuffer& buf, bool destroy)
        : buf_(buf), inPlace_(Access::inverseComputed(buf) || destroy) {}

    /// Calls visit(x, y, elements, count) for runs of all rows of the image, which may have gone
    /// when it returns unless they are to be kept.
    template <class Visit>
    void compute(bool keep, Visit visit) {
        mvi::RunSink<Visit> sink(Access::imageHeight(buf_), visit);
        if (Access::inverseComputed(buf_)) return sink.take(imageColumns());
        if (!inPlace_ && keep) Access::takeShape(copy_, buf_);
        mvi::transformToSpace(buf_, Access::data(inPlace_ ? buf_ : copy_), Access::imageWidth(buf_),
                              &sink);
    }

    /// Whether the call leaves no plane behind but what it is told to keep.
    bool isPrivate() const { return !inPlace_; }

    /// Visits a plane that was kept.
    template <class Visit>
    void visit(Visit visit) const {
        mvi::RunSink<Visit>(Access::imageHeight(buf_), visit).take(imageColumns());
    }

    const mvFrequencyBuffer& plane() const { return inPlace_ ? buf_ : copy_; }

    /// To be called when the results are written.
    void markInverseComputed() {
        if (inPlace_ && !Access::inverseComputed(buf_)) Access::setInverseComputed(buf_, true);
    }

  private:
    mvi::FinishedColumns imageColumns() const {
        return {0, Access::imageWidth(buf_), Access::data(plane()), 2 * Access::width(buf_)};
    }

    mvFrequencyBuffer& buf_;
    bool inPlace_;
    mvFrequencyBuffer copy_;
};

void requirePelOutput(const mvFrequencyBuffer& buf) {
    Access::requireTransformable(buf);
    Access::requireImageInPlane(buf);
}

// The angles that may accompany the magnitudes: made as by a call of their own.
struct AngleOutput {
    AngleOutput(const mvFrequencyBuffer& buf, mvPelBuffer<double>* out) {
        if (out != nullptr) image.emplace(buf, *out);
    }
    std::optional<mvi::OutputImage<double>> image;

    bool isWanted() const { return image.has_value(); }
    bool needsPlane() const { return isWanted(); }
    void visit(long, long, const float*, long) {}
    void write(const mvFrequencyBuffer& plane) {
        if (!image) return;
        mvi::pollAttention();
        mvi::makeAngleImage(plane, *image);
    }
    void wrap() {}
    void deliver() {}
};

// The quadrants that accompany integer magnitudes: likewise.
template <class T>
struct QuadrantOutput {
    QuadrantOutput(const mvFrequencyBuffer& buf, mvPelBuffer<unsigned char>& out)
        : image(buf, out) {}
    mvi::OutputImage<unsigned char> image;

    static bool isWanted() { return true; }
    static bool needsPlane() { return true; }
    void visit(long, long, const float*, long) {}
    void write(const mvFrequencyBuffer& plane) {
        mvi::pollAttention();
        mvi::makeQuadrantImage(plane, image);
    }
    void wrap() {}
    void deliver() {}
};

// The quadrants that accompany double magnitudes: an output like the magnitudes themselves.
template <>
struct QuadrantOutput<double> {
    QuadrantOutput(const mvFrequencyBuffer& buf, mvPelBuffer<unsigned char>& out)
        : image(buf, out) {}
    mvi::OutputImage<unsigned char> image;

    static bool isWanted() { return true; }
    static bool needsPlane() { return false; }
    void visit(long x, long y, const float* elements, long count) {
        mvi::writeQuadrants(elements, count, image.row(y) + x);
    }
    void write(const mvFrequencyBuffer&) { image.bind(); }
    void wrap() { image.wrap(); }
    void deliver() { image.deliver(); }
};

// Magnitudes and nothing else.
template <class T>
void writeMagnitudes(const mvFrequencyBuffer& buf, mvi::OutputImage<T>& to) {
    const mvPair<long> size(Access::imageWidth(buf), Access::imageHeight(buf));
    mvi::writeResults<T>(buf, {mvi::PlaneResult::magnitudes, {0, 0}, size, to.row(0), to.step()});
}

template <class T, class SecondOutput>
void inverseToMagnitudes(mvFrequencyBuffer& buf, mvPelBuffer<T>& out, SecondOutput second,
                         bool rescale, bool destroy) {
    const mvi::KernelPath& path = mvi::bestKernelPath();
    const mvi::PelRuns<T>& runs = path.pels<T>();
    const bool mapped = rescale && !std::is_same_v<T, double>;
    const float scale = mvi::inverseScale(buf);

    mvi::OutputImage<T> magnitudes(buf, out);
    SpatialPlane spatial(buf, destroy);
    mvi::SquareRange range;
    if (spatial.isPrivate() && !mapped && !second.isWanted()) {
        writeMagnitudes(buf, magnitudes);
    } else {
        spatial.compute(mapped || second.needsPlane(),
                        [&](long x, long y, const float* elements, long count) {
                            if (mapped) {
                                path.squareRange(elements, count, range);
                            } else {
                                runs.fromMagnitudes(elements, count, scale, magnitudes.row(y) + x);
                            }
                            second.visit(x, y, elements, count);
                        });
    }
    magnitudes.bind();
    mvi::pollAttention();
    if (mapped) {
        const mvi::PelMap map(range, scale, static_cast<float>(std::numeric_limits<T>::max()));
        spatial.visit([&](long x, long y, const float* elements, long count) {
            runs.fromMagnitudesMapped(elements, count, scale, map.low, map.factor,
                                      magnitudes.row(y) + x);
        });
    }
    second.write(spatial.plane());
    spatial.markInverseComputed();
    // The order is contract. The plane is marked before the wraps, whose polls may fail; both wraps
    // come before a pel of a bound output is written; of outputs that share pels, the second one
    // prevails.
    magnitudes.wrap();
    second.wrap();
    magnitudes.deliver();
    second.deliver();
}

// Whether assigning `src` to `dst` takes no memory.
bool samePlane(const mvFrequencyBuffer& src, const mvFrequencyBuffer& dst) {
    return Access::data(dst) != nullptr && Access::width(dst) == Access::width(src) &&
           Access::height(dst) == Access::height(src);
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
    // In place, the memory of a larger result is taken before the frequencies are overwritten, and
    // the destination stays as it is until they are transformed.
    mvFrequencyBuffer fresh;
    const bool isFresh = inPlace && !samePlane(src, dst);
    mvFrequencyBuffer& result = isFresh ? fresh : dst;
    if (isFresh || !inPlace) Access::takeShape(result, src);
    if (!computed) {
        float* const plane = Access::data(inPlace ? src : result);
        mvi::transformToSpace(src, plane, Access::width(src), nullptr);
    }
    if (inPlace) result = src;
    if (isFresh) dst = std::move(fresh);
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
    const float scale = mvi::inverseScale(buf);
    mvi::OutputImage<double> re(buf, real);
    mvi::OutputImage<double> im(buf, imaginary);
    SpatialPlane spatial(buf, destroy);
    spatial.compute(false, [&](long x, long y, const float* elements, long count) {
        double* const reals = re.row(y) + x;
        double* const imaginaries = im.row(y) + x;
        for (long i = 0; i < count; ++i) {
            reals[i] = scale * elements[2 * i];
            imaginaries[i] = scale * elements[2 * i + 1];
        }
    });
    re.bind();
    im.bind();
    mvi::pollAttention();
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
        requirePelOutput(buf);                                                                    \
        inverseToMagnitudes(buf, out, AngleOutput(buf, angle), rescale, destroy);                 \
    }                                                                                             \
    void mf_InverseFFT(mvFrequencyBuffer& buf, mvPelBuffer<Pel>& out,                             \
                       mvPelBuffer<unsigned char>& quadrant, bool rescale, bool destroy) {        \
        requirePelOutput(buf);                                                                    \
        inverseToMagnitudes(buf, out, QuadrantOutput<Pel>(buf, quadrant), rescale, destroy);      \
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
