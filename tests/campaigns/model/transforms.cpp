// The transforms in the model, check by check and poll by poll.
#include "campaigns/model/transforms.h"

#include "reference/fft/kernel.h"
#include "support/thrown.h"

namespace model {
namespace {

using reference::Spectrum;

template <class T>
void takePlacement(Buffer& b, const Image<T>& image) {
    b.xform = image.xform;
    b.x = image.x;
    b.y = image.y;
}

// Runs what makes the plane of `b`; when a poll fails there, its elements may be any.
template <class Make>
void fill(Buffer& b, Make make) {
    try {
        setPlane(b, make());
    } catch (const Stopped&) {
        b.anyElements = true;
        throw;
    }
}

reference::Plane spatialPlane(const Buffer& b, const Poll& poll) {
    return reference::spatial(spectrumOf(b), poll).plane;
}

// The buffer that an inverse works on: the caller's, or a copy.
struct Work {
    Work(Buffer& buf, bool destroy) : inPlace(buf.inverseComputed || destroy), copy(), caller(buf) {
        if (!inPlace) assign(copy, buf);
    }
    Buffer& buffer() { return inPlace ? caller : copy; }
    void mark() {
        if (inPlace) caller.inverseComputed = true;
    }

    bool inPlace;
    Buffer copy;
    Buffer& caller;
};

// What a poll that fails before the mark leaves of a buffer that is transformed in place.
template <class Call>
void untilMark(Work& work, bool transforms, Call call) {
    try {
        call();
    } catch (const Stopped&) {
        if (work.inPlace && transforms) work.caller.anyElements = true;
        throw;
    }
}

// Only an archive makes such a buffer, or one with an image larger than its plane.
void requireImage(const Buffer& b) {
    if (b.imageWidth < 1 || b.imageHeight < 1) throw Thrown{kBaseError};
}

void requireImageInPlane(const Buffer& b) {
    if (b.imageWidth > b.width || b.imageHeight > b.height) {
        throw Thrown{support::kNotPowerOfTwo};
    }
}

void requirePelOutput(const Buffer& b) {
    requireTransformable(b);
    requireImageInPlane(b);
    requireImage(b);
}

void pollWrap(const Buffer& b, const Poll& poll) {
    if (b.x != 0 || b.y != 0) poll();
}

// Brings a result, laid where the wrap copy places it, to the caller's image.
template <class T>
void deliver(const reference::Image<T>& result, const Buffer& buf, Image<T>& out) {
    if (out.isBound()) {
        copyInto(result, out);
    } else {
        out = imageOf(result);
        out.xform = buf.xform;
    }
}

// A call that a poll ends may leave any pels in its outputs.
template <class T>
void loosen(const Buffer& buf, Image<T>* output) {
    if (output == nullptr) return;
    output->anyPels = true;
    output->result = {buf.imageWidth, buf.imageHeight};
}

template <class Call, class... T>
void intoImages(const Buffer& buf, Call call, Image<T>*... outputs) {
    try {
        call();
    } catch (const Stopped&) {
        (loosen(buf, outputs), ...);
        throw;
    }
}

void deliverAngle(const Spectrum& space, const Buffer& buf, Image<double>& angle,
                  const Poll& poll) {
    reference::Output<double> result;
    reference::angleImage(space, result, poll);
    deliver(*result, buf, angle);
}

void deliverQuadrant(const Spectrum& space, const Buffer& buf, Image<Byte>& quadrant,
                     const Poll& poll) {
    reference::Output<Byte> result;
    reference::quadrantImage(space, result, poll);
    deliver(*result, buf, quadrant);
}

}  // namespace

template <class T>
void forward(const Image<T>& image, Buffer& dst, const Poll& poll) {
    if (!image.isBound()) throw Thrown{support::kUnbound};
    setAndAllocate(dst, image.width, image.height);
    takePlacement(dst, image);
    fill(dst, [&] { return reference::forward(contentOf(image), poll).plane; });
}

template <class T>
void forward(const Image<T>& real, const Image<T>& imaginary, Buffer& dst, const Poll& poll) {
    if (!real.isBound() || !imaginary.isBound()) throw Thrown{support::kUnbound};
    if (!hasSamePlace(real, imaginary)) {
        throw Thrown{"InvalidSize: Real and Imaginary buffers must have the same size and offset."};
    }
    setAndAllocate(dst, real.width, real.height);
    takePlacement(dst, real);
    fill(dst,
         [&] { return reference::forward(contentOf(real), contentOf(imaginary), poll).plane; });
}

void forward(const Buffer& src, Buffer& dst, const Poll& poll) {
    requireTransformable(src);
    assign(dst, src);
    dst.inverseComputed = false;
    dst.masked = false;
    fill(dst, [&] { return reference::forward(spectrumOf(dst), poll).plane; });
}

void inverse(Buffer& src, Buffer& dst, bool destroy, const Poll& poll) {
    requireTransformable(src);
    const bool inPlace = src.inverseComputed || destroy;
    if (!inPlace) assign(dst, src);
    Buffer& work = inPlace ? src : dst;
    if (!src.inverseComputed) {
        fill(work, [&] { return spatialPlane(work, poll); });
    }
    if (inPlace) {
        // Whose memory a plane of another size gets is not said.
        const bool fits = dst.hasData && dst.width == src.width && dst.height == src.height;
        dst.anyRest = dst.anyRest || !fits;
        assign(dst, src);
    }
    dst.inverseComputed = false;
    dst.masked = false;
    if (inPlace) src.inverseComputed = true;
}

void inverse(Buffer& buf, Image<double>& real, Image<double>& imaginary, bool destroy,
             const Poll& poll) {
    requirePelOutput(buf);
    const bool transforms = !buf.inverseComputed;
    Work work(buf, destroy);
    reference::Output<double> re;
    reference::Output<double> im;
    const auto call = [&] {
        untilMark(work, transforms, [&] {
            if (transforms) setPlane(work.buffer(), spatialPlane(work.buffer(), poll));
            reference::realAndImaginaryImages(spectrumOf(work.buffer()), re, im, poll);
        });
    };
    intoImages(buf, call, &real, &imaginary);
    work.mark();
    deliver(*re, buf, real);
    deliver(*im, buf, imaginary);
    real.xform = imaginary.xform = buf.xform;
}

template <class T>
void inverse(Buffer& buf, Image<T>& out, Image<double>* angle, Image<Byte>* quadrant, bool rescale,
             bool destroy, const Poll& poll) {
    constexpr bool kIsDouble = std::is_same_v<T, double>;
    requirePelOutput(buf);
    const bool transforms = !buf.inverseComputed;
    Work work(buf, destroy);
    Spectrum space;
    const auto untilTheMark = [&] {
        if (transforms) setPlane(work.buffer(), spatialPlane(work.buffer(), poll));
        space = spectrumOf(work.buffer());
        poll();
        if (angle != nullptr) deliverAngle(space, buf, *angle, poll);
        if (quadrant != nullptr && !kIsDouble) deliverQuadrant(space, buf, *quadrant, poll);
    };
    const auto call = [&] {
        untilMark(work, transforms, untilTheMark);
        work.mark();
        pollWrap(buf, poll);
        if (quadrant != nullptr && kIsDouble) pollWrap(buf, poll);
    };
    intoImages(buf, call, &out, angle, quadrant);
    if (quadrant != nullptr && kIsDouble) {
        deliverQuadrant(space, buf, *quadrant, reference::noPoll);
    }
    reference::Output<T> result;
    reference::magnitudeImage(space, result, rescale);
    deliver(*result, buf, out);
}

template <class T, class Deliver>
void phaseImage(const Buffer& buf, Image<T>& image, const Poll& poll, Deliver deliver) {
    requireData(buf);
    requireImageInPlane(buf);
    const auto call = [&] {
        poll();
        requireImage(buf);
        pollWrap(buf, poll);
    };
    intoImages(buf, call, &image);
    deliver(spectrumOf(buf), buf, image, reference::noPoll);
}

void angleImage(const Buffer& buf, Image<double>& angle, const Poll& poll) {
    phaseImage(buf, angle, poll, deliverAngle);
}

void quadrantImage(const Buffer& buf, Image<Byte>& quadrant, const Poll& poll) {
    phaseImage(buf, quadrant, poll, deliverQuadrant);
}

#define INSTANTIATE(T)                                                                  \
    template void forward(const Image<T>&, Buffer&, const Poll&);                       \
    template void forward(const Image<T>&, const Image<T>&, Buffer&, const Poll&);      \
    template void inverse(Buffer&, Image<T>&, Image<double>*, Image<Byte>*, bool, bool, \
                          const Poll&);
INSTANTIATE(Byte)
INSTANTIATE(Short)
INSTANTIATE(double)
#undef INSTANTIATE

}  // namespace model
